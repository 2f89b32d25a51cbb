#include "platform/DirectoryId.h"

#include "platform/PathLookup_posix.h"

#include <sys/stat.h>

namespace Kor {

namespace {

bool Look(const std::string& path, struct stat& status) {
    const std::string written = WithSlashes(path);
    return stat(written.empty() ? "." : written.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

std::optional<DirectoryId> GetDirectoryId(const std::string& path) {
    struct stat status;
    if (!Look(path, status))
        return std::nullopt;
    return DirectoryId{status.st_dev, status.st_ino};
}

bool IsDirectory(const std::string& path) {
    struct stat status;
    return Look(path, status);
}

} // namespace Kor
