// In C++, a handle does not convert to those of derived classes, nor to unrelated ones.
#include "ovi/ovi.h"

void MisuseHandles(OviNamedObject* named, OviType* type, OviPropertyInstance* found,
                   OviInstance* instance, OviProperty* property);

void MisuseHandles(OviNamedObject* named, OviType* type, OviPropertyInstance* found,
                   OviInstance* instance, OviProperty* property) {
    (void)OviType_GetFullName(named);           // error
    (void)OviTemplate_GetVersion(type);         // error
    (void)OviAttributeInstance_GetValue(found); // error
    (void)OviAsset_GetReference(instance);      // error
    (void)OviInstance_IsValid(property);        // error
    (void)OviLockable_GetLockState(property);   // error
}
