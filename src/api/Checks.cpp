#include "api/Checks.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "api/ClassNames.h"
#include "core/ErrorManager.h"
#include "schema/Property.h"
#include "schema/ViewItem.h"

namespace Kor {

namespace {

/// Adds an error item; neither throws nor needs memory before the item itself.
void Report(const char* function, const char* fault) noexcept {
    char message[256];
    std::snprintf(message, sizeof message, "%s: %s", function, fault);
    if (ErrorManager* errors = ErrorManager::Get())
        errors->AddErrorItem(kError, "", -1, message);
}

void ReportDead(const char* function, int classId) noexcept {
    char fault[128];
    std::snprintf(fault, sizeof fault, "the handle is dead (it was %s)", NameWithArticle(classId));
    Report(function, fault);
}

void ReportNothing(const char* function) noexcept {
    Report(function, "not a handle (no object begins there)");
}

/// Whether hosts may still use an object that is in memory. An object whose deletion only waits for
/// its memory to be given back is dead for them: this is the place that knows of it.
bool IsThereForHosts(const Object& /*object*/) {
    return true;
}

/// What a host may think of an address.
ObjectAt Find(const void* address) noexcept {
    ObjectAt found = BlockPool::FindObject(address);
    if (found.state != ObjectAt::kAlive)
        return found;
    const auto& object = *static_cast<const Object*>(address);
    if (!IsThereForHosts(object))
        found = {ObjectAt::kDead, object.GetClass()};
    return found;
}

/// The address of an object whose part of that kind is at an address.
template <class Whole> const void* WholeOf(const void* part) {
    constexpr std::uintptr_t kAnywhere = 4096;
    static const std::uintptr_t offset = reinterpret_cast<std::uintptr_t>(static_cast<Lockable*>(
                                             reinterpret_cast<Whole*>(kAnywhere))) -
                                         kAnywhere;
    return reinterpret_cast<const void*>(reinterpret_cast<std::uintptr_t>(part) - offset);
}

/// The part of a living object at an address, or null; `found` says what is there then.
template <class Whole> Lockable* FindPart(const void* address, ObjectAt& found) noexcept {
    const void* start = WholeOf<Whole>(address);
    const ObjectAt there = Find(start);
    if (there.state == ObjectAt::kDead)
        found = there;
    if (there.state != ObjectAt::kAlive)
        return nullptr;
    return ObjectCast<Whole>(static_cast<Object*>(const_cast<void*>(start)));
}

} // namespace

bool Checks::AreOn() noexcept {
    Begin();
    return limit_ == kAlways;
}

void Checks::Set(bool on) noexcept {
    isDecided_ = true;
    limit_ = on ? kAlways : kNever;
    BlockPool::KeepDead(on);
}

void Checks::Decide() noexcept {
    const char* wish = std::getenv("OVI_CHECKS");
    Set(wish && std::strcmp(wish, "1") == 0);
}

/// Whether a doubtful handle is refused.
bool Checks::LookAt(const void* handle, const char* function) noexcept {
    Begin();
    if (!handle || limit_ == kNever)
        return false;
    const ObjectAt found = Find(handle);
    if (found.state == ObjectAt::kDead)
        ReportDead(function, found.classId);
    else if (found.state == ObjectAt::kNothing)
        ReportNothing(function);
    return found.state != ObjectAt::kAlive;
}

Object* Checks::Admit(Object* handle, int classId, const char* function) noexcept {
    const bool isRefused = LookAt(handle, function);
    return handle && !isRefused && handle->ImplementsClass(classId) ? handle : nullptr;
}

Lockable* Checks::AdmitLockable(OviLockable* handle, const char* function) noexcept {
    Begin();
    if (!handle || limit_ == kNever)
        return reinterpret_cast<Lockable*>(handle);
    ObjectAt found;
    Lockable* part = FindPart<Property>(handle, found);
    if (!part)
        part = FindPart<ViewItem>(handle, found);
    if (!part && found.state == ObjectAt::kDead)
        ReportDead(function, found.classId);
    else if (!part)
        ReportNothing(function);
    return part;
}

} // namespace Kor
