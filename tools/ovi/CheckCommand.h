#pragma once

#include "Command.h"
#include "SchemaOptions.h"

#include <string>
#include <vector>

namespace OviTool {

/// `ovi check`: loads files and prints every diagnostic.
class CheckCommand : public Command {
public:
    const char* GetName() const override { return "check"; }
    const char* GetDescription() const override;
    void Declare(CLI::App& app) override;
    int Run() override;

private:
    SchemaOptions schema_;
    std::vector<std::string> files_;
    std::string format_;
};

} // namespace OviTool
