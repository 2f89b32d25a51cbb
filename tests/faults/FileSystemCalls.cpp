#include "faults/FileSystemCalls.h"

#include <dirent.h>
#include <sys/stat.h>

namespace {

long count = 0;

} // namespace

void FileSystemCalls::Begin() {
    count = 0;
}

long FileSystemCalls::GetCount() {
    return count;
}

// The names are the linker's, as in Allocations.cpp.
// NOLINTBEGIN(bugprone-reserved-identifier,readability-identifier-naming)
extern "C" {
int __real_lstat(const char* path, struct stat* status);
int __real_stat(const char* path, struct stat* status);
dirent* __real_readdir(DIR* directory);

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
}
// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming)
