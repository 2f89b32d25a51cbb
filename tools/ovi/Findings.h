#pragma once

#include <ovi/ovi.h>

#include <cstddef>
#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

namespace OviTool {

/// One diagnostic of the library.
struct Finding {
    int level; ///< Level bits as in OVI_LEVEL_...
    std::string file;
    int line; ///< From 1; below that, the whole file is meant.
    std::string message;
};

/// A file that could not be read, and why.
struct UnreadableFile {
    std::string file;
    std::string reason;
};

/// What was found in the files so far, in the order in which the library reported it.
class Findings {
public:
    /// Takes over what the library has collected and clears its list; gives how many there were.
    std::size_t Collect();

    /// Adds a diagnostic of the program's own.
    void Add(Finding finding) { findings_.push_back(std::move(finding)); }

    /// Notes a file that could not be read.
    void AddUnreadable(const std::string& file, const std::string& reason);

    /// Counts a file that was loaded.
    void CountFile() { ++fileCount_; }

    /// All diagnostics as lines "path:line: error: message".
    void PrintText(std::ostream& out) const;

    /// All diagnostics and a summary as a JSON object.
    void PrintJson(std::ostream& out) const;

    /// Each unreadable file on a line of its own.
    void PrintUnreadable(std::ostream& out) const;

    /// One line with the numbers of files, errors and warnings.
    void PrintSummary(std::ostream& out) const;

    /// All of it on the standard error stream, for commands whose output is something else.
    void Report() const;

    /// Whether a file, as the library names it, could not be read, or there is a diagnostic of
    /// level error about it.
    bool HasErrorsIn(const std::string& libraryPath) const;

    /// The exit code that follows from all this.
    int GetExitCode() const;

private:
    std::size_t Count(int levelBit) const;

    std::vector<Finding> findings_;
    std::vector<UnreadableFile> unreadable_;
    std::size_t fileCount_ = 0;
};

/// "1 file", "2 files"
std::string Counted(std::size_t count, const char* noun);

} // namespace OviTool
