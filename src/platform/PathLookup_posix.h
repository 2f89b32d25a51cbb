#pragma once

#include <dirent.h>

#include <functional>
#include <memory>
#include <string>

namespace Kor {

struct DirectoryCloser {
    void operator()(DIR* directory) const { closedir(directory); }
};

using DirectoryHandle = std::unique_ptr<DIR, DirectoryCloser>;

/// A directory open for reading; "" is the current one. Null when it cannot be opened.
DirectoryHandle OpenDirectory(const std::string& path);

/// The path with every backslash a "/".
std::string WithSlashes(std::string path);

/// The first name of a directory in byte order that equals the wanted one but for its case; empty
/// when none does.
std::string FindInDirectory(const std::string& directory, const std::string& wanted);

/// The path in the form of the file system: every backslash a "/", and when nothing is there as
/// written, each component that is missing replaced by one that differs only in the case of ASCII
/// letters (the first in byte order). What is not found either way stays as it was written.
std::string FindPath(const std::string& path);

/// The same with another way to find a name in a directory.
struct FoundPath {
    std::string path;
    bool isThere;
};
using NameFinder =
    std::function<std::string(const std::string& directory, const std::string& wanted)>;
FoundPath FindPath(const std::string& path, const NameFinder& findName);

/// The same for a file about to be made: only its directory is looked for, so that no other file
/// than the one named is replaced.
std::string FindPathToCreate(const std::string& path);

/// The part up to and including the last "/"; empty when there is none.
std::string GetDirectoryPart(const std::string& path);

} // namespace Kor
