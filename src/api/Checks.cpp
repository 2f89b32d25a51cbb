#include "api/Checks.h"

#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

#include "api/ClassNames.h"
#include "core/ErrorManager.h"
#include "schema/Property.h"
#include "schema/ViewItem.h"

namespace Kor {

namespace {

void AddFinding(const char* function, const std::string& fault) {
    const std::string message = std::string(function) + ": " + fault;
    if (ErrorManager* errors = ErrorManager::Get())
        errors->AddErrorItem(kError, "", -1, message.c_str());
}

void AddDeadFinding(const char* function, int classId) {
    const char* name = NameOfClass(classId);
    AddFinding(function,
               std::string("the handle is dead (it was ") + ArticleOf(name) + " " + name + ")");
}

/// Says what was refused. Without memory for the whole message the item has a shorter one.
void TellOfRefusal(const char* function, const ObjectAt& found) noexcept {
    try {
        if (found.state == ObjectAt::kDead)
            AddDeadFinding(function, found.classId);
        else
            AddFinding(function, "not a handle (no object begins there)");
    } catch (const std::bad_alloc&) {
        if (ErrorManager* errors = ErrorManager::Get())
            errors->AddErrorItem(kError, "", -1, "a bad handle was refused");
    }
}

/// Whether hosts may still use an object that is in memory: one that has ended only waits for the
/// outermost call to return.
bool IsThereForHosts(const Object& object) {
    const auto* named = ObjectCast<NamedObject>(&object);
    return !named || !named->HasEnded();
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
    if (found.state == ObjectAt::kAlive)
        return false;
    TellOfRefusal(function, found);
    return true;
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
    if (!part)
        TellOfRefusal(function, found);
    return part;
}

} // namespace Kor
