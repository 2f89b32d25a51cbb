// The program `ovi`: checks and shows template and scene files, with the exported functions alone.

#include "Commands.h"
#include "ExitCode.h"

#include <ovi/ovi.h>

#include <exception>
#include <iostream>
#include <string>

namespace OviTool {

namespace {

void Describe(CLI::App& app) {
    app.name("ovi");
    app.set_version_flag("--version",
                         std::string("ovi " OVI_VERSION_STRING ", OviCore ") + Ovi_GetVersion());
    app.require_subcommand(1);
    // "/scenes/harbour.asset" is a file, on Windows too; every option begins with a hyphen.
    app.allow_windows_style_options(false);
    app.footer("Exit codes: 0 nothing found, 1 errors or warnings found, 2 could not run.\n"
               "`ovi COMMAND --help` tells about one command.");
}

int ParseAndRun(int argc, char** argv) {
    CLI::App app("Checks and shows OviCore template and scene files.");
    Describe(app);
    const auto commands = MakeCommands();
    int result = kCouldNotRun;
    for (const auto& command : commands) {
        CLI::App* const entry = app.add_subcommand(command->GetName(), command->GetDescription());
        command->Declare(*entry);
        entry->callback([&result, &command] { result = command->Run(); });
    }
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error, std::cout, std::cerr) == 0 ? kClean : kCouldNotRun;
    }
    if (!std::cout.flush()) {
        std::cerr << "ovi: error: cannot write to the standard output\n";
        return kCouldNotRun;
    }
    return result;
}

} // namespace

} // namespace OviTool

int main(int argc, char** argv) {
    try {
        return OviTool::ParseAndRun(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "ovi: error: " << error.what() << '\n';
    }
    return OviTool::kCouldNotRun;
}
