#pragma once

#include <cstdint>

#include "core/Object.h"
#include "ovi/types.h"

namespace Kor {

class Lockable;

/// Looks at handles before they are used, where the host asks for that.
///
/// The test for a null handle is also that for a handle to be looked at: a handle is compared with
/// a limit, which is null while there are no checks, and the highest address while there are. At
/// first it is the highest one, too: the first handle lets the environment decide.
class Checks {
public:
    Checks() = delete;

    static bool AreOn() noexcept;
    static void Set(bool on) noexcept;

    /// Asks the environment, once.
    static void Begin() noexcept {
        if (!isDecided_)
            Decide();
    }

    /// Whether a handle is null or to be looked at.
    static bool IsDoubtful(const void* handle) {
        return IsUnlikely(reinterpret_cast<std::uintptr_t>(handle) <= limit_);
    }

    /// The object behind a doubtful handle; null for one that is null, of another class or refused.
    static Object* Admit(Object* handle, int classId, const char* function) noexcept;

    /// Whether a handle is refused: it is neither null nor that of a living object. That adds an
    /// error item, which names the function the handle was given to.
    static bool Refuse(const void* handle, const char* function) noexcept {
        return handle && IsDoubtful(handle) && LookAt(handle, function);
    }

    /// The part behind a handle; null for one that is null or refused.
    static Lockable* AdmitLockable(OviLockable* handle, const char* function) noexcept;

private:
    static constexpr std::uintptr_t kNever = 0;
    static constexpr std::uintptr_t kAlways = UINTPTR_MAX;

    /// The way of a handle that is not looked at is to be the straight one.
    static bool IsUnlikely(bool condition) {
#if defined(__GNUC__)
        return __builtin_expect(condition, false) != 0;
#else
        return condition;
#endif
    }

    static void Decide() noexcept;
    static bool LookAt(const void* handle, const char* function) noexcept;

    static inline std::uintptr_t limit_ = kAlways;
    static inline bool isDecided_ = false;
};

} // namespace Kor
