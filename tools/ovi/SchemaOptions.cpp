#include "SchemaOptions.h"

#include "InputFiles.h"

namespace OviTool {

namespace {

void DeclareList(CLI::App& app, const char* name, std::vector<std::string>& values,
                 const char* description, const char* valueName) {
    app.add_option(name, values, std::string(description) + "; may be given several times")
        ->type_name(valueName)
        ->allow_extra_args(false);
}

} // namespace

void SchemaOptions::Declare(CLI::App& app) {
    DeclareDirectories(app);
    DeclareList(app, "--package", packages_,
                "Load this package (studio.props), found through the search paths, first", "NAME");
}

void SchemaOptions::DeclareDirectories(CLI::App& app) {
    DeclareList(app, "--path", paths_, "Look for packages below this directory, a search path",
                "DIR");
    DeclareList(app, "--schema", schema_,
                "Load this template file, or all template files below this directory, first; a "
                "directory is a search path too",
                "FILE_OR_DIR");
}

void SchemaOptions::AddTo(InputFiles& inputs) const {
    for (const std::string& path : paths_)
        inputs.AddSearchPath(path);
    for (const std::string& package : packages_)
        inputs.AddPackage(package);
    for (const std::string& path : schema_)
        inputs.AddSchema(path);
}

void DeclareFormat(CLI::App& app, std::string& format, const std::vector<std::string>& formats,
                   const std::string& what) {
    format = formats.front();
    std::string choices;
    for (const std::string& choice : formats)
        choices += (choices.empty() ? "" : choice == formats.back() ? " or " : ", ") + choice;
    app.add_option("--format", format, what + ": " + choices)
        ->check(CLI::IsMember(formats))
        ->type_name("FORMAT")
        ->capture_default_str();
}

} // namespace OviTool
