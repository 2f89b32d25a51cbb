#include "platform/LargePages.h"

#include <new>

namespace Kor {

// Windows gives large pages only to programs whose user was granted that, and never on demand. So
// the memory is not aligned for them either, which would commit twice as much.

void* TakeLargePages(size_t size) {
    return ::operator new(size);
}

void GiveLargePages(void* pages) noexcept {
    ::operator delete(pages);
}

} // namespace Kor
