#pragma once

#include <csignal>

namespace Kor {

/// Where a file may not grow, the system sends a signal (SIGXFSZ) beside the error, which would end
/// the host. While this lives, that signal is held back.
class HeldSignal {
public:
    HeldSignal();
    ~HeldSignal();
    HeldSignal(const HeldSignal&) = delete;
    HeldSignal& operator=(const HeldSignal&) = delete;

    /// Takes back the signal that came with an error; one that waited for the host before stays.
    void TakeBackSignalOf(int error) const;

private:
    sigset_t signals_{};
    sigset_t waiting_{}; ///< for the host, before the write
    sigset_t previous_{};
};

} // namespace Kor
