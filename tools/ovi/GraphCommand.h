#pragma once

#include "Command.h"
#include "SchemaOptions.h"

#include <string>

namespace OviTool {

/// `ovi graph`: draws the inheritance of the templates.
class GraphCommand : public Command {
public:
    const char* GetName() const override { return "graph"; }
    const char* GetDescription() const override;
    void Declare(CLI::App& app) override;
    int Run() override;

private:
    SchemaOptions schema_;
    std::string format_;
    std::string template_;
    std::string output_;
};

} // namespace OviTool
