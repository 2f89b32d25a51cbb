#include "platform/DirectoryId.h"

#include "platform/WideText_windows.h"

#ifndef NOMINMAX
#define NOMINMAX
#endif
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace Kor {

std::optional<DirectoryId> GetDirectoryId(const std::string& path) {
    constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE directory =
        CreateFileW(ToWidePath(path.empty() ? "." : path).c_str(), 0, kShareAll, nullptr,
                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (directory == INVALID_HANDLE_VALUE)
        return std::nullopt;
    BY_HANDLE_FILE_INFORMATION about;
    const bool known = GetFileInformationByHandle(directory, &about) &&
                       (about.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    CloseHandle(directory);
    if (!known)
        return std::nullopt;
    const std::uint64_t high = about.nFileIndexHigh;
    return DirectoryId{about.dwVolumeSerialNumber, high << 32 | about.nFileIndexLow};
}

bool IsDirectory(const std::string& path) {
    const DWORD attributes = GetFileAttributesW(ToWidePath(path.empty() ? "." : path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

} // namespace Kor
