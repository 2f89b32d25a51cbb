#include "platform/LargePages.h"

#include <new>

#include <sys/mman.h>

namespace Kor {

void* TakeLargePages(size_t size) {
    void* pages = ::operator new (size, std::align_val_t{kLargePageSize});
#ifdef MADV_HUGEPAGE
    (void)madvise(pages, size, MADV_HUGEPAGE); // refused where there are none: then without
#endif
    return pages;
}

void GiveLargePages(void* pages) noexcept {
    ::operator delete (pages, std::align_val_t{kLargePageSize});
}

} // namespace Kor
