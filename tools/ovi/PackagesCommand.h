#pragma once

#include "Command.h"
#include "SchemaOptions.h"

#include <string>

namespace OviTool {

/// `ovi packages`: lists the packages below the search paths.
class PackagesCommand : public Command {
public:
    const char* GetName() const override { return "packages"; }
    const char* GetDescription() const override;
    void Declare(CLI::App& app) override;
    int Run() override;

private:
    SchemaOptions schema_;
    std::string format_;
};

} // namespace OviTool
