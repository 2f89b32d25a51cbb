#include "faults/FileSystemCalls.h"

#include <cerrno>
#include <cstdarg>
#include <cstring>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>

namespace {

long count = 0;
bool refusesUnnamed = false;
long refused = 0;
int nextRandomByte = -1;

} // namespace

void FileSystemCalls::Begin() {
    count = 0;
}

long FileSystemCalls::GetCount() {
    return count;
}

void FileSystemCalls::RefuseUnnamedFiles(bool refuses) {
    refusesUnnamed = refuses;
}

long FileSystemCalls::GetRefusedCount() {
    return refused;
}

void FileSystemCalls::ForeseeRandomBytes(int first) {
    nextRandomByte = first;
}

// The names are the linker's, as in Allocations.cpp.
// NOLINTBEGIN(bugprone-reserved-identifier,readability-identifier-naming)
extern "C" {
int __real_lstat(const char* path, struct stat* status);
int __real_stat(const char* path, struct stat* status);
dirent* __real_readdir(DIR* directory);
int __real_open(const char* path, int flags, ...);
ssize_t __real_getrandom(void* buffer, size_t size, unsigned flags);

int __wrap_lstat(const char* path, struct stat* status) {
    ++count;
    return __real_lstat(path, status);
}
int __wrap_stat(const char* path, struct stat* status) {
    ++count;
    return __real_stat(path, status);
}
dirent* __wrap_readdir(DIR* directory) {
    ++count;
    return __real_readdir(directory);
}
int __wrap_open(const char* path, int flags, ...) {
    std::va_list rest;
    va_start(rest, flags);
    const bool isUnnamed = (flags & O_TMPFILE) == O_TMPFILE;
    const bool makes = isUnnamed || (flags & O_CREAT) != 0;
    const mode_t mode = makes ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    if (refusesUnnamed && isUnnamed) {
        ++refused;
        errno = EOPNOTSUPP;
        return -1;
    }
    return __real_open(path, flags, mode);
}
ssize_t __wrap_getrandom(void* buffer, size_t size, unsigned flags) {
    if (nextRandomByte < 0)
        return __real_getrandom(buffer, size, flags);
    std::memset(buffer, nextRandomByte++, size);
    return static_cast<ssize_t>(size);
}
}
// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming)
