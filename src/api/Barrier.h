#pragma once

#include <utility>

#include "api/Checks.h"
#include "core/Ending.h"
#include "core/NamedObject.h"
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

// Every function below that takes handles is called by an exported function itself, never in a body
// that it hands over: the default of the last parameter is the name of the caller, which a finding
// of the checks tells the host.

/// Whether an object is of a class. Said to throw nothing, so that a function which only reads
/// needs no way out of its body.
inline bool IsOfClass(const Object& object, int classId) noexcept {
    return object.ImplementsClass(classId);
}

/// The object behind a handle; null for a null handle or one of another class.
template <class T, class Handle> T* From(Handle* handle, const char* function) noexcept {
    Object* object = reinterpret_cast<Object*>(handle);
    if (Checks::IsDoubtful(handle))
        return static_cast<T*>(Checks::Admit(object, T::kClassId, function));
    return IsOfClass(*object, T::kClassId) ? static_cast<T*>(object) : nullptr;
}

/// The same for a handle that was looked at.
template <class T, class Handle> T* Cast(Handle* handle) {
    return ObjectCast<T>(reinterpret_cast<Object*>(handle));
}

/// Runs the body with the object behind a handle; the fallback is the result when there is none.
template <class T, class Handle, class Result, class Body>
Result With(Handle* handle, Result fallback, Body&& body,
            const char* function = __builtin_FUNCTION()) noexcept {
    return Guard(fallback, [&]() -> Result {
        T* object = From<T>(handle, function);
        return object ? body(*object) : fallback;
    });
}

template <class T, class Handle, class Body>
void With(Handle* handle, Body&& body, const char* function = __builtin_FUNCTION()) noexcept {
    Guard([&] {
        if (T* object = From<T>(handle, function))
            body(*object);
    });
}

/// Whether an object has ended while callbacks run, so that nothing may be added to it or get it
/// any more: it would be listed beyond its end.
inline bool HasEnded(const Object& object) noexcept {
    const auto* named = Ending::IsAnyWaiting() ? ObjectCast<NamedObject>(&object) : nullptr;
    return named && named->HasEnded();
}

/// Runs the body with two objects; the fallback is the result when there is one missing.
template <class T, class Other, class Handle, class OtherHandle, class Result, class Body>
Result WithBoth(Handle* handle, OtherHandle* otherHandle, Result fallback, Body&& body,
                const char* function = __builtin_FUNCTION()) noexcept {
    return Guard(fallback, [&]() -> Result {
        T* object = From<T>(handle, function);
        Other* other = object ? From<Other>(otherHandle, function) : nullptr;
        return other && !HasEnded(*object) && !HasEnded(*other) ? body(*object, *other) : fallback;
    });
}

/// Runs the body with an object, and with another one or null. Where the other handle is refused
/// nothing is done: null would mean something else than the host did.
template <class T, class Other, class Handle, class OtherHandle, class Result, class Body>
Result WithOptional(Handle* handle, OtherHandle* otherHandle, Result fallback, Body&& body,
                    const char* function = __builtin_FUNCTION()) noexcept {
    return Guard(fallback, [&]() -> Result {
        T* object = From<T>(handle, function);
        if (!object || HasEnded(*object) || Checks::Refuse(otherHandle, function))
            return fallback;
        Other* other = Cast<Other>(otherHandle);
        return other && HasEnded(*other) ? fallback : body(*object, other);
    });
}

template <class T, class Other, class Handle, class OtherHandle, class Body>
void WithOptional(Handle* handle, OtherHandle* otherHandle, Body&& body,
                  const char* function = __builtin_FUNCTION()) noexcept {
    Guard([&] {
        T* object = From<T>(handle, function);
        if (!object || HasEnded(*object) || Checks::Refuse(otherHandle, function))
            return;
        Other* other = Cast<Other>(otherHandle);
        if (!other || !HasEnded(*other))
            body(*object, other);
    });
}

/// Runs the body with a manager.
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

/// Runs the body with a manager and the object behind a handle; -1 when one of them is missing.
template <class Manager, class T, class Handle, class Body>
int WithManagerAnd(Handle* handle, Body&& body,
                   const char* function = __builtin_FUNCTION()) noexcept {
    return WithManager<Manager>(-1, [&](Manager& manager) {
        T* object = From<T>(handle, function);
        return object && !HasEnded(*object) ? body(manager, *object) : -1;
    });
}

/// The handle of an object. An object's address is that of its Object part.
template <class Handle> Handle* To(const Object* object) {
    return reinterpret_cast<Handle*>(const_cast<Object*>(object));
}

/// The handle of a part of the schema, which the host knows from now on.
template <class Handle, class Part> Handle* HandOut(Part* part) {
    if (part)
        part->BecomeKnown();
    return To<Handle>(part);
}

inline const char* Text(const char* text) {
    return text ? text : "";
}

} // namespace Kor::Api
