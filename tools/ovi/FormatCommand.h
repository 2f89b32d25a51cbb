#pragma once

#include "Command.h"
#include "SchemaOptions.h"

#include <cstddef>
#include <string>
#include <vector>

namespace OviTool {

class Findings;
struct InputFile;

/// `ovi fmt`: writes files anew in the library's own layout.
class FormatCommand : public Command {
public:
    const char* GetName() const override { return "fmt"; }
    const char* GetDescription() const override;
    void Declare(CLI::App& app) override;
    int Run() override;

private:
    /// A file as it was named, and as the library knows it.
    void Format(const std::string& path, const InputFile& file, Findings& findings);

    SchemaOptions schema_;
    std::vector<std::string> files_;
    bool check_ = false;
    bool force_ = false;
    std::size_t changed_ = 0;
};

} // namespace OviTool
