// Calls of the functions for all objects, diagnostics and notifications.

#include "calls/CallTable.h"
#include "calls/Callbacks.h"

namespace {

constexpr unsigned kChanges = 0;
constexpr unsigned kDrastic = Call::kDrastic;
constexpr unsigned kOutside = Call::kOutside;

/// In a callback often what it is told of.
void Delete(World& world) {
    const bool isHeard = world.GetCallDepth() > 0 && world.GetInput().TakeByte() % 2 != 0;
    Kor::Object* object = isHeard ? world.GetHeard() : world.PickObject(OVI_CLASS_OBJECT);
    world.Disown(object);
    OviObject_Delete(reinterpret_cast<OviObject*>(object));
}

void Terminate(World& world) {
    if (world.GetInput().TakeByte() % 4 == 0) // or else few inputs would keep their scene
        Ovi_Terminate();
}

void ClearErrors(World&) {
    OviErrorManager_Clear();
}

/// Callbacks are registered under two addresses of the host's.
void* PickUserData(World& world) {
    static char data[2];
    return &data[world.GetInput().TakeByte() % 2];
}

OviCallback PickCallback(World& world, OviCallback callback) {
    return world.GetInput().TakeByte() % 8 == 0 ? nullptr : callback;
}

void RegisterInstanceCallback(World& world) {
    const OviCallback callback = PickCallback(world, &Callbacks::HearInstance);
    OviNotificationManager_RegisterInstanceCallback(callback, PickUserData(world));
}

void UnregisterInstanceCallback(World& world) {
    OviNotificationManager_UnregisterInstanceCallback(PickUserData(world));
}

void RegisterPropertyInstanceCallback(World& world) {
    const OviCallback callback = PickCallback(world, &Callbacks::HearPropertyInstance);
    OviNotificationManager_RegisterPropertyInstanceCallback(callback, PickUserData(world));
}

void UnregisterPropertyInstanceCallback(World& world) {
    OviNotificationManager_UnregisterPropertyInstanceCallback(PickUserData(world));
}

} // namespace

std::vector<Call> CallsOfObjects() {
    return {
        OVI_SPECIAL(OviObject_Delete, Delete, kDrastic),
        OVI_MAKES(OviObject_Clone),
        OVI_READS(OviObject_GetClass),
        OVI_READS(OviObject_ImplementsClass),
        OVI_READS(OviObject_GetLockable),
        OVI_READS(OviLockable_GetLockState),
        OVI_CHANGES(OviLockable_SetLockState),

        OVI_READS(OviNamedObject_GetName),
        OVI_CHANGES(OviNamedObject_SetName),
        OVI_READS(OviNamedObject_IsValidName),
        OVI_READS(OviNamedObject_GetComment),
        OVI_CHANGES(OviNamedObject_SetComment),
        OVI_READS(OviNamedObject_GetLabel),
        OVI_CHANGES(OviNamedObject_SetLabel),
        OVI_READS(OviNamedObject_GetLabelCount),
        OVI_READS(OviNamedObject_GetLabelLanguageAt),
        OVI_READS(OviNamedObject_GetLabelTextAt),
        OVI_READS(OviNamedObject_GetDescription),
        OVI_CHANGES(OviNamedObject_SetDescription),
        OVI_READS(OviNamedObject_GetDescriptionCount),
        OVI_READS(OviNamedObject_GetDescriptionLanguageAt),
        OVI_READS(OviNamedObject_GetDescriptionTextAt),

        OVI_CHANGES(OviErrorManager_AddErrorItem),
        OVI_READS(OviErrorManager_GetErrorItemCount),
        OVI_READS(OviErrorManager_GetErrorItemAt),
        OVI_SPECIAL(OviErrorManager_Clear, ClearErrors, kChanges),
        OVI_READS(OviErrorItem_GetErrorLevel),
        OVI_READS(OviErrorItem_GetSourceName),
        OVI_READS(OviErrorItem_GetLineNumber),
        OVI_READS(OviErrorItem_GetMessage),

        OVI_ROW(Ovi_Initialize, kDrastic),
        OVI_SPECIAL(Ovi_Terminate, Terminate, kDrastic),
        OVI_READS(Ovi_GetVersion),

        OVI_READS(OviNotificationManager_GetDCC),
        OVI_CHANGES(OviNotificationManager_SetDCC),
        OVI_SPECIAL(OviNotificationManager_RegisterInstanceCallback, RegisterInstanceCallback,
                    kOutside),
        OVI_SPECIAL(OviNotificationManager_UnregisterInstanceCallback, UnregisterInstanceCallback,
                    kOutside),
        OVI_SPECIAL(OviNotificationManager_RegisterPropertyInstanceCallback,
                    RegisterPropertyInstanceCallback, kOutside),
        OVI_SPECIAL(OviNotificationManager_UnregisterPropertyInstanceCallback,
                    UnregisterPropertyInstanceCallback, kOutside),
    };
}
