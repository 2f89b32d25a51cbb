// The program `ovi`: checks and shows template and scene files, with the exported functions alone.

#include "Commands.h"
#include "Console.h"
#include "ExitCode.h"

#include <ovi/ovi.h>

#include <algorithm>
#include <exception>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

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

int ParseAndRun(std::vector<std::string> arguments) {
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
        std::reverse(arguments.begin(), arguments.end()); // as the parser takes them
        app.parse(std::move(arguments));
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
    const OviTool::Console console;
    try {
        return OviTool::ParseAndRun(OviTool::GetArguments(argc, argv));
    } catch (const std::exception& error) {
        std::cerr << "ovi: error: " << error.what() << '\n';
    }
    return OviTool::kCouldNotRun;
}
