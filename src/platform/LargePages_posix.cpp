#include "platform/LargePages.h"

#include <sys/mman.h>

namespace Kor {

void PreferLargePages(void* memory, size_t size) noexcept {
#ifdef MADV_HUGEPAGE
    (void)madvise(memory, size, MADV_HUGEPAGE);
#else
    (void)memory;
    (void)size;
#endif
}

} // namespace Kor
