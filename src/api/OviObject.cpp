#include "ovi/object.h"

#include "api/Barrier.h"
#include "core/Lockable.h"
#include "instances/HostDeletion.h"
#include "schema/Property.h"
#include "schema/ViewItem.h"

using namespace Kor;
using namespace Kor::Api;

namespace {

Lockable* LockableOf(Object* object) {
    if (auto* property = ObjectCast<Property>(object))
        return property;
    return ObjectCast<ViewItem>(object);
}

// What a doubtful handle takes stands apart, so that others have nothing to keep meanwhile.

[[gnu::noinline]] int GetDoubtfulLockState(OviLockable* handle, const char* function) {
    const Lockable* part = Checks::AdmitLockable(handle, function);
    return part ? part->GetLockState() : 0;
}

[[gnu::noinline]] void SetDoubtfulLockState(OviLockable* handle, int state, const char* function) {
    if (Lockable* part = Checks::AdmitLockable(handle, function))
        part->SetLockState(state);
}

} // namespace

void OviObject_Delete(OviObject* object) {
    With<Object>(object, [](Object& target) { HostDeletion::Delete(&target); });
}

OviObject* OviObject_Clone(OviObject* object) {
    return With<Object>(object, static_cast<OviObject*>(nullptr),
                        [](Object& source) { return To<OviObject>(source.Clone().release()); });
}

int OviObject_GetClass(OviObject* object) {
    return With<Object>(object, -1, [](Object& target) { return target.GetClass(); });
}

bool OviObject_ImplementsClass(OviObject* object, int classId) {
    return With<Object>(object, false,
                        [classId](Object& target) { return target.ImplementsClass(classId); });
}

OviLockable* OviObject_GetLockable(OviObject* object) {
    return With<Object>(object, static_cast<OviLockable*>(nullptr), [](Object& target) {
        return reinterpret_cast<OviLockable*>(LockableOf(&target));
    });
}

int OviLockable_GetLockState(OviLockable* lockable) {
    if (Checks::IsDoubtful(lockable))
        return GetDoubtfulLockState(lockable, __func__);
    return reinterpret_cast<Lockable*>(lockable)->GetLockState();
}

void OviLockable_SetLockState(OviLockable* lockable, int state) {
    if (Checks::IsDoubtful(lockable))
        SetDoubtfulLockState(lockable, state, __func__);
    else
        reinterpret_cast<Lockable*>(lockable)->SetLockState(state);
}
