#include "platform/LargePages.h"

#include <new>

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

namespace Kor {

// Windows gives large pages only to programs whose user was granted that, and never on demand. What
// it maps stands at multiples of 64 KiB.

void* MapPages(size_t size, bool /*inLargePages*/) {
    void* pages = VirtualAlloc(nullptr, size, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
    if (!pages)
        throw std::bad_alloc();
    return pages;
}

void UnmapPages(void* pages, size_t /*size*/) noexcept {
    VirtualFree(pages, 0, MEM_RELEASE);
}

} // namespace Kor
