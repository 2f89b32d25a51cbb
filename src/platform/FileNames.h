#pragma once

#include <array>
#include <string>
#include <vector>

namespace Kor {

/// Brings names into the order in which Windows lists a directory: ascending, ASCII letters
/// compared as capitals (so that "_" follows them), and byte-wise where that leaves no difference.
void SortFileNames(std::vector<std::string>& names);

/// What makes the name of a temporary file its own: bytes from the system's source of chance.
using TemporaryNameBytes = std::array<unsigned char, 12>;

/// A name for a temporary file that nobody can foresee: otherwise whoever may write to the
/// directory could take the names beforehand, so that nothing could be saved there. It begins with
/// "." so that no listing shows a file that is still being written.
std::string MakeTemporaryName(const TemporaryNameBytes& random);

} // namespace Kor
