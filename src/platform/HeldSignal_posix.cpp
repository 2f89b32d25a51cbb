#include "platform/HeldSignal_posix.h"

#include <cerrno>
#include <ctime>

namespace Kor {

HeldSignal::HeldSignal() {
    sigemptyset(&signals_);
    sigaddset(&signals_, SIGXFSZ);
    sigpending(&waiting_);
    pthread_sigmask(SIG_BLOCK, &signals_, &previous_);
}

HeldSignal::~HeldSignal() {
    pthread_sigmask(SIG_SETMASK, &previous_, nullptr);
}

void HeldSignal::TakeBackSignalOf(int error) const {
    if (error != EFBIG || sigismember(&waiting_, SIGXFSZ) == 1)
        return;
    const timespec noTime{};
    while (sigtimedwait(&signals_, nullptr, &noTime) < 0 && errno == EINTR) {
    }
}

} // namespace Kor
