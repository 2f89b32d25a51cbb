#pragma once

#include <cstddef>

namespace Kor {

/// The size and alignment from which memory can be mapped in large pages.
constexpr size_t kLargePageSize = size_t{2} * 1024 * 1024;

/// Asks the system to map that memory in large pages when it is first touched: one fault in place
/// of 512, and fewer misses when a big scene is walked. Nothing depends on whether it does.
void PreferLargePages(void* memory, size_t size) noexcept;

} // namespace Kor
