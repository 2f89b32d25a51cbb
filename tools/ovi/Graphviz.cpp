#include "Graphviz.h"

#include "OutputFile.h"
#include "TemporaryDirectory.h"
#include "XmlScanner.h"

#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <system_error>

namespace fs = std::filesystem;

namespace OviTool {

namespace {

#if defined(_WIN32)
constexpr char kPathSeparator = ';';
constexpr const char* kProgram = "dot.exe";
#else
constexpr char kPathSeparator = ':';
constexpr const char* kProgram = "dot";
#endif

std::string FindProgram() {
    const char* const path = std::getenv("PATH");
    std::istringstream directories(path ? path : "");
    for (std::string directory; std::getline(directories, directory, kPathSeparator);) {
        std::error_code error;
        const fs::path program = fs::u8path(directory) / kProgram;
        if (!directory.empty() && fs::is_regular_file(program, error))
            return program.u8string();
    }
    return {};
}

/// An argument as the system's shell takes it.
std::string ForShell(const std::string& argument) {
#if defined(_WIN32)
    return '"' + argument + '"'; // file names hold no quotes there
#else
    std::string quoted = "'";
    for (const char c : argument)
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
#endif
}

int RunShell(const std::string& command) {
#if defined(_WIN32)
    // Quoted as a whole, or the shell drops the first quote and the last.
    return std::system(('"' + command + '"').c_str());
#else
    return std::system(command.c_str());
#endif
}

} // namespace

std::string DrawAsSvg(const std::string& dot) {
    const std::string program = FindProgram();
    if (program.empty())
        throw std::runtime_error("SVG is drawn by Graphviz' program dot, which is not on the PATH; "
                                 "install Graphviz, or take --format dot");
    const TemporaryDirectory directory;
    const std::string input = directory.GetFile("graph.dot");
    const std::string output = directory.GetFile("graph.svg");
    WriteFile(input, dot);
    const int code =
        RunShell(ForShell(program) + " -q -Tsvg -o " + ForShell(output) + " " + ForShell(input));
    std::string svg;
    if (code != 0 || !ReadFile(output, svg) || svg.empty())
        throw std::runtime_error("Graphviz' program dot could not draw the graph");
    return svg;
}

} // namespace OviTool
