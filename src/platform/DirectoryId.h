#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace Kor {

/// What tells a directory from every other one, whatever path leads to it.
using DirectoryId = std::array<std::uint64_t, 2>;

/// Nothing where no directory is at the path exactly as it is written.
std::optional<DirectoryId> GetDirectoryId(const std::string& path);

/// Whether a directory is at the path exactly as it is written.
bool IsDirectory(const std::string& path);

} // namespace Kor
