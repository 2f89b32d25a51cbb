#include "platform/LargePages.h"

#include <cstdint>
#include <new>

#include <sys/mman.h>

namespace Kor {

namespace {

char* Map(size_t size) {
    void* pages = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pages == MAP_FAILED)
        throw std::bad_alloc();
    return static_cast<char*>(pages);
}

void Unmap(char* pages, size_t size) noexcept {
    if (size > 0)
        (void)munmap(pages, size);
}

/// How far an address stands behind a border of large pages.
size_t Excess(const char* address) {
    return reinterpret_cast<std::uintptr_t>(address) % kLargePageSize;
}

/// The system counts in pages of its own size, of which there are several sizes.
size_t RoundUp(size_t size) {
    constexpr size_t kStep = 64 * 1024;
    return (size + kStep - 1) / kStep * kStep;
}

/// Where the first attempt is not aligned, a large page more holds what is.
char* MapAligned(size_t wanted) {
    const size_t size = RoundUp(wanted);
    char* pages = Map(size);
    if (Excess(pages) == 0)
        return pages;
    Unmap(pages, size);
    char* wide = Map(size + kLargePageSize);
    const size_t before = (kLargePageSize - Excess(wide)) % kLargePageSize;
    Unmap(wide, before);
    Unmap(wide + before + size, kLargePageSize - before);
    return wide + before;
}

void AskForLargePages(void* pages, size_t size) {
#ifdef MADV_HUGEPAGE
    (void)madvise(pages, size, MADV_HUGEPAGE); // refused where there are none: then without
#else
    (void)pages, (void)size;
#endif
}

} // namespace

void* MapPages(size_t size, bool inLargePages) {
    char* pages = MapAligned(size);
    if (inLargePages)
        AskForLargePages(pages, size);
    return pages;
}

void UnmapPages(void* pages, size_t size) noexcept {
    Unmap(static_cast<char*>(pages), RoundUp(size));
}

} // namespace Kor
