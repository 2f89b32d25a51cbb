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

/// Where the first attempt is not aligned, twice the size holds what is.
char* MapAligned() {
    char* pages = Map(kLargePageSize);
    if (Excess(pages) == 0)
        return pages;
    Unmap(pages, kLargePageSize);
    char* wide = Map(2 * kLargePageSize);
    const size_t before = (kLargePageSize - Excess(wide)) % kLargePageSize;
    Unmap(wide, before);
    Unmap(wide + before + kLargePageSize, kLargePageSize - before);
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

void* TakeLargePages(size_t size) {
    void* pages = ::operator new (size, std::align_val_t{kLargePageSize});
    AskForLargePages(pages, size);
    return pages;
}

void GiveLargePages(void* pages) noexcept {
    ::operator delete (pages, std::align_val_t{kLargePageSize});
}

void* MapRegion(bool inLargePage) {
    char* region = MapAligned();
    if (inLargePage)
        AskForLargePages(region, kLargePageSize);
    return region;
}

void UnmapRegion(void* region) noexcept {
    Unmap(static_cast<char*>(region), kLargePageSize);
}

} // namespace Kor
