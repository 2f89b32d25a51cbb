#include "AllocationCounter.h"

#include <cstddef>
#include <cstdlib>

#if defined(__GLIBC__)

// The functions of the C library under the names by which it can be reached beside its own malloc.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
}

namespace {
long allocationCount = 0;
}

// Defined by the program, these stand in for the C library's everywhere in the process.
extern "C" __attribute__((visibility("default"))) void* malloc(std::size_t size) {
    ++allocationCount;
    return __libc_malloc(size);
}

extern "C" __attribute__((visibility("default"))) void* calloc(std::size_t count,
                                                               std::size_t size) {
    ++allocationCount;
    return __libc_calloc(count, size);
}

extern "C" __attribute__((visibility("default"))) void* realloc(void* block, std::size_t size) {
    ++allocationCount;
    return __libc_realloc(block, size);
}

long CountAllocations() {
    return allocationCount;
}

#else

long CountAllocations() {
    return -1;
}

#endif
