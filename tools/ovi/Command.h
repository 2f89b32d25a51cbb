#pragma once

#include <CLI/CLI.hpp>

namespace OviTool {

/// One command of the program. CONTRIBUTING.md says how to add one.
class Command {
public:
    Command() = default;
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;
    virtual ~Command() = default;

    /// The word by which the command is called.
    virtual const char* GetName() const = 0;

    /// One sentence for the help.
    virtual const char* GetDescription() const = 0;

    /// Declares the command's options and arguments, which are stored in its members.
    virtual void Declare(CLI::App& app) = 0;

    /// Does the work with what was declared and gives the exit code.
    virtual int Run() = 0;
};

} // namespace OviTool
