#pragma once

#include <cstdint>

namespace Kor {

/// A number that nobody outside of the process can foresee. Where the system has none to give,
/// which never keeps the library from loading, it is made of the time and of where things are in
/// memory.
std::uint64_t GetRandomNumber() noexcept;

} // namespace Kor
