#pragma once

#include "Command.h"

#include <string>
#include <vector>

namespace OviTool {

/// `ovi show`: prints a scene, or what a template file defines, as a tree.
class ShowCommand : public Command {
public:
    const char* GetName() const override { return "show"; }
    const char* GetDescription() const override;
    void Declare(CLI::App& app) override;
    int Run() override;

private:
    std::vector<std::string> schema_;
    std::string file_;
    bool all_ = false;
};

} // namespace OviTool
