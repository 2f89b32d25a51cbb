#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace OviTool {

/// Declares --schema, which commands share. Each use takes exactly one value, so that the files
/// behind it stay arguments of the command.
inline void DeclareSchemaOption(CLI::App& app, std::vector<std::string>& schema) {
    app.add_option("--schema", schema,
                   "Load this template file, or all template files below this directory, first; "
                   "may be given several times")
        ->type_name("FILE_OR_DIR")
        ->allow_extra_args(false);
}

} // namespace OviTool
