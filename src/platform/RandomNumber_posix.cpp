#include "platform/RandomNumber.h"

#include <sys/random.h>

#include <ctime>

namespace Kor {

std::uint64_t GetRandomNumber() noexcept {
    std::uint64_t number = 0;
    // Shortly after a start of the system there may be none yet: nothing waits for it.
    if (getrandom(&number, sizeof number, GRND_NONBLOCK) == static_cast<ssize_t>(sizeof number))
        return number;
    timespec now{};
    static_cast<void>(clock_gettime(CLOCK_REALTIME, &now));
    const auto place = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(&number));
    const auto time = static_cast<std::uint64_t>(now.tv_sec) * 1000000000U +
                      static_cast<std::uint64_t>(now.tv_nsec);
    return (time ^ place << 20) * 0x9E3779B97F4A7C15U;
}

} // namespace Kor
