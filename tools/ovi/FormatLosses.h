#pragma once

#include <cstddef>
#include <string>

namespace OviTool {

class Findings;

/// Two texts of a file: as it is, and as the library would write it.
struct FormattedFile {
    std::string path;
    bool isScene;
    std::string before;
    std::string after;
};

/// Reports what the file would lose by being written anew: known elements and attributes that
/// would be missing or would say something else as errors, or as warnings with `force`; comments
/// and unknown elements as warnings. Gives the number of the former.
std::size_t ReportLosses(const FormattedFile& file, bool force, Findings& findings);

} // namespace OviTool
