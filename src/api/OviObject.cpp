#include "ovi/object.h"

#include "api/Barrier.h"
#include "core/ErrorItem.h"
#include "core/Lockable.h"
#include "instances/Instance.h"
#include "manager/RetiredSchema.h"
#include "manager/TemplateManager.h"
#include "schema/AnchorTypeList.h"
#include "schema/AttributeProperty.h"
#include "schema/Property.h"
#include "schema/ViewItem.h"

using namespace Kor;
using namespace Kor::Api;

namespace {

/// Takes an object out of the registries that would otherwise keep pointing to it. Properties,
/// property instances and assets do so themselves.
void TakeFromOwner(Object* object) {
    if (auto* type = ObjectCast<Type>(object);
        type && (type->IsRegistered() || type->IsDisplaced()))
        TemplateManager::Get()->GiveAway(*type);
    if (auto* item = ObjectCast<EnumerationItem>(object); item && item->GetEnumeration())
        item->GetEnumeration()->RemoveItem(item);
    if (auto* named = ObjectCast<NamedObject>(object))
        AnchorTypeList::Forget(named); // also where it then stays because it is still needed
}

/// The children of a template fall back to the root. First of all, since it may need memory.
void LeaveChildren(Object* object) {
    auto* definition = ObjectCast<Template>(object);
    if (definition && TemplateManager::Exists())
        definition->ShareChildren(TemplateManager::Get()->GetRoot());
}

void DropValues(Property* property) {
    if (auto* attribute = ObjectCast<AttributeProperty>(property))
        attribute->DropValues();
}

/// Values of template types leave their instances behind, which no host need know of: these let go
/// of a template or a property that is to be deleted, which may need memory, too.
void TakeFromAbandonedInstances(Object* object) {
    auto* member = ObjectCast<Property>(object);
    DropValues(member);
    auto* definition = ObjectCast<Template>(object);
    if (definition) {
        definition->TakeFromUsers(); // or the last of them would delete it before
        for (Property* property : definition->GetDeclaredProperties()) {
            if (property->GetOwner() == definition || property->GetKeeper() == definition)
                DropValues(property);
        }
    }
    if ((definition && definition->IsUsedByInstances()) || (member && member->IsInUse()))
        Instance::StripAbandoned();
}

/// Whether a type has users, with the last of which it then goes. Templates let go of theirs.
bool IsStillNeeded(Object* object) {
    auto* type = ObjectCast<Type>(object);
    return type && !ObjectCast<Template>(object) && type->SurviveDeletion();
}

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
    With<Object>(object, [](Object& target) {
        if (TemplateManager::Exists() && &target == TemplateManager::Get()->GetRoot())
            return; // what everything falls back to goes with the manager alone
        if (ObjectCast<ErrorItem>(&target))
            return; // every one that a host can reach is the error manager's
        LeaveChildren(&target);
        TakeFromAbandonedInstances(&target);
        TakeFromOwner(&target);
        if (!IsStillNeeded(&target))
            delete &target;
        RetiredSchema::Release();
    });
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
