#pragma once

namespace Kor {

/// Has the processor fetch an object of up to 128 bytes that is needed in a moment: walks through
/// millions of objects otherwise wait for the memory at each. Null is none.
inline void Prefetch(const void* object) {
    if (!object)
        return;
#if defined(__GNUC__)
    __builtin_prefetch(object);
    __builtin_prefetch(static_cast<const char*>(object) + 64);
#else
    static_cast<void>(object);
#endif
}

} // namespace Kor
