#pragma once

#include "Command.h"
#include "SchemaOptions.h"

#include <string>

namespace OviTool {

class ChangeRecorder;
struct InputFile;

/// `ovi show`: prints a scene, or what a template file defines, as a tree.
class ShowCommand : public Command {
public:
    const char* GetName() const override { return "show"; }
    const char* GetDescription() const override;
    void Declare(CLI::App& app) override;
    int Run() override;

private:
    void Print(const InputFile& file, const ChangeRecorder& recorder) const;

    SchemaOptions schema_;
    std::string file_;
    bool all_ = false;
};

} // namespace OviTool
