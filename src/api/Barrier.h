#pragma once

#include <utility>

#include "core/Ending.h"
#include "core/Object.h"
#include "ovi/types.h"

namespace Kor::Api {

/// Runs the body of an exported function. No exception may cross the boundary into hosts, which
/// are often not written in C++: the fallback is then the result.
template <class Result, class Body> Result Guard(Result fallback, Body&& body) noexcept {
    const Ending::Call call;
    try {
        return std::forward<Body>(body)();
    } catch (...) {
        return fallback;
    }
}

template <class Body> void Guard(Body&& body) noexcept {
    const Ending::Call call;
    try {
        std::forward<Body>(body)();
    } catch (...) {
        // The call did not take place; there is nowhere to report to when memory has run out.
        return;
    }
}

/// The object behind a handle; null for a null handle or one of another class.
template <class T, class Handle> T* From(Handle* handle) {
    return ObjectCast<T>(reinterpret_cast<Object*>(handle));
}

/// Runs the body with the object behind a handle; the fallback is the result when there is none.
template <class T, class Handle, class Result, class Body>
Result With(Handle* handle, Result fallback, Body&& body) noexcept {
    return Guard(fallback, [&]() -> Result {
        T* object = From<T>(handle);
        return object ? body(*object) : fallback;
    });
}

template <class T, class Handle, class Body> void With(Handle* handle, Body&& body) noexcept {
    Guard([&] {
        if (T* object = From<T>(handle))
            body(*object);
    });
}

/// The same for a manager.
template <class Manager, class Result, class Body>
Result WithManager(Result fallback, Body&& body) noexcept {
    return Guard(fallback, [&]() -> Result {
        Manager* manager = Manager::Get();
        return manager ? body(*manager) : fallback;
    });
}

template <class Manager, class Body> void WithManager(Body&& body) noexcept {
    Guard([&] {
        if (Manager* manager = Manager::Get())
            body(*manager);
    });
}

/// The handle of an object. An object's address is that of its Object part.
template <class Handle> Handle* To(const Object* object) {
    return reinterpret_cast<Handle*>(const_cast<Object*>(object));
}

inline const char* Text(const char* text) {
    return text ? text : "";
}

} // namespace Kor::Api
