#include "platform/PathLookup_posix.h"

#include "core/Names.h"

#include <sys/stat.h>

#include <algorithm>

namespace Kor {

namespace {

bool Exists(const std::string& path) {
    struct stat status;
    return lstat(path.c_str(), &status) == 0;
}

/// Adds the component as it is there; false when nothing of that name is.
bool AddComponent(std::string& path, const std::string& component, const NameFinder& findName) {
    if (component.empty() || Exists(path + component)) {
        path += component;
        return true;
    }
    const std::string found = findName(path, component);
    path += found;
    return !found.empty();
}

} // namespace

std::string WithSlashes(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

std::string FindInDirectory(const std::string& directory, const std::string& wanted) {
    std::string found;
    const DirectoryHandle open = OpenDirectory(directory);
    while (const dirent* entry = open ? readdir(open.get()) : nullptr) {
        const std::string_view name = entry->d_name;
        if (EqualsIgnoreCase(name, wanted) && (found.empty() || name < found))
            found = name;
    }
    return found;
}

DirectoryHandle OpenDirectory(const std::string& path) {
    return DirectoryHandle(opendir(path.empty() ? "." : path.c_str()));
}

std::string FindPath(const std::string& path) {
    return FindPath(path, &FindInDirectory).path;
}

FoundPath FindPath(const std::string& path, const NameFinder& findName) {
    std::string written = WithSlashes(path);
    if (Exists(written))
        return {std::move(written), true};
    std::string found;
    size_t at = 0;
    for (;;) {
        const size_t end = std::min(written.find('/', at), written.size());
        if (!AddComponent(found, written.substr(at, end - at), findName))
            return {found + written.substr(at), false};
        if (end == written.size())
            return {std::move(found), true};
        found += '/';
        at = end + 1;
    }
}

std::string FindPathToCreate(const std::string& path) {
    std::string written = WithSlashes(path);
    if (Exists(written))
        return written;
    const std::string directory = GetDirectoryPart(written);
    return FindPath(directory) + written.substr(directory.size());
}

std::string GetDirectoryPart(const std::string& path) {
    return path.substr(0, path.rfind('/') + 1);
}

} // namespace Kor
