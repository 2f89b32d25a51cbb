#include "platform/RandomNumber.h"

#include <windows.h>

// Behind it. The system's generator, as the C library hands it out; it needs no DLL of its own.
#include <ntsecapi.h>

namespace Kor {

std::uint64_t GetRandomNumber() noexcept {
    std::uint64_t number = 0;
    if (RtlGenRandom(&number, sizeof number))
        return number;
    LARGE_INTEGER now{};
    QueryPerformanceCounter(&now);
    const auto place = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(&number));
    return (static_cast<std::uint64_t>(now.QuadPart) ^ place << 20) * 0x9E3779B97F4A7C15U;
}

} // namespace Kor
