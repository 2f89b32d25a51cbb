#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace OviTool {

class Findings;
class InputFiles;

/// The options that name the schema, the same for all commands.
class SchemaOptions {
public:
    /// Declares --schema, --path and --package. Each use takes exactly one value, so that the files
    /// behind it stay arguments of the command.
    void Declare(CLI::App& app);

    /// Declares --path and --schema alone.
    void DeclareDirectories(CLI::App& app);

    /// Adds what they name to the files to load: search paths, then packages, then the files and
    /// directories, each in the order of the command line.
    void AddTo(InputFiles& inputs) const;

private:
    std::vector<std::string> paths_;
    std::vector<std::string> packages_;
    std::vector<std::string> schema_;
};

/// Declares --format with the texts that it takes, of which the first is the default.
void DeclareFormat(CLI::App& app, std::string& format, const std::vector<std::string>& formats,
                   const std::string& what);

} // namespace OviTool
