#include "platform/Descriptor_posix.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace Kor {

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
}

Descriptor Descriptor::Open(const std::string& path, int flags) {
    constexpr mode_t kPrivate = S_IRUSR | S_IWUSR;
    int number = -1;
    do
        number = open(path.c_str(), flags | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, kPrivate);
    while (number < 0 && errno == EINTR);
    return Descriptor(number);
}

bool Descriptor::Close() {
    const bool closed = !IsOpen() || close(number_) == 0;
    number_ = -1;
    return closed;
}

bool Descriptor::IsRegular(struct stat& status) const {
    return IsOpen() && fstat(number_, &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace Kor
