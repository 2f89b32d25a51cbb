#pragma once

#include <new>

#include "core/Ending.h"

namespace Kor {

/// The process-wide object of a manager class: made on first use, null when memory ran out.
/// The library is used from one thread, so nothing here is synchronised.
template <class Manager> class Singleton : public Ending::Remains {
public:
    static Manager* Get() {
        if (!instance_)
            instance_ = Make();
        return instance_;
    }

    static bool Exists() { return instance_ != nullptr; }

    /// Counts one more user.
    void Initialize() { ++useCount_; }

    /// The last user ends the manager, which goes on being found until it is gone. While callbacks
    /// run it only loses what it has at once: the call that it is in goes on using it.
    void Terminate() {
        if (!DropUser())
            return;
        if (!Ending::IsDeferred()) {
            delete static_cast<Manager*>(this);
            Forget();
            return;
        }
        static_cast<Manager*>(this)->Empty();
        Forget();
        Ending::Free(this);
    }

    /// Whether this is the one that is found.
    bool IsCurrent() const { return instance_ == this; }

protected:
    Singleton() = default;
    ~Singleton() override = default;

    /// True when nobody uses the manager any more.
    bool DropUser() { return --useCount_ <= 0; }
    static void Forget() { instance_ = nullptr; }

private:
    static Manager* Make() {
        try {
            return new Manager();
        } catch (const std::bad_alloc&) {
            return nullptr;
        }
    }

    static inline Manager* instance_ = nullptr;
    int useCount_ = 0;
};

} // namespace Kor
