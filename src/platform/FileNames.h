#pragma once

#include <string>
#include <vector>

namespace Kor {

/// Brings names into the order in which Windows lists a directory: ascending, ASCII letters
/// compared as capitals (so that "_" follows them), and byte-wise where that leaves no difference.
void SortFileNames(std::vector<std::string>& names);

/// A name for a temporary file, another one at every call. It begins with "." so that no listing
/// shows a file that is still being written.
std::string MakeTemporaryName(unsigned long processId);

} // namespace Kor
