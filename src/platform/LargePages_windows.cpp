#include "platform/LargePages.h"

namespace Kor {

// Windows gives large pages only to programs whose user was granted that, and never on demand.
void PreferLargePages(void*, size_t) noexcept {}

} // namespace Kor
