#pragma once

namespace OviTool {

/// What the program tells its caller; the same for every command.
enum ExitCode {
    kClean = 0,       ///< Done, and nothing was found.
    kHasFindings = 1, ///< Done, with errors or warnings in the files.
    kCouldNotRun = 2  ///< Wrong usage, or files that cannot be read or written.
};

} // namespace OviTool
