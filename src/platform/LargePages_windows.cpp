#include "platform/LargePages.h"

#include <new>

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

namespace Kor {

// Windows gives large pages only to programs whose user was granted that, and never on demand. So
// the memory is not aligned for them either, which would commit twice as much.

void* TakeLargePages(size_t size) {
    return ::operator new(size);
}

void GiveLargePages(void* pages) noexcept {
    ::operator delete(pages);
}

// The system places whatever it maps at multiples of 64 KiB.
void* MapRegion(bool /*inLargePage*/) {
    void* region = VirtualAlloc(nullptr, kLargePageSize, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
    if (!region)
        throw std::bad_alloc();
    return region;
}

void UnmapRegion(void* region) noexcept {
    VirtualFree(region, 0, MEM_RELEASE);
}

} // namespace Kor
