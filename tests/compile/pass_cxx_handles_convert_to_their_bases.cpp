// In C++, a handle converts to those of its base classes without a cast.
#include "ovi/ovi.h"

void UseHandles(OviTemplate* mesh, OviAttributeProperty* radius, OviAsset* asset, OviView* view);

void UseHandles(OviTemplate* mesh, OviAttributeProperty* radius, OviAsset* asset, OviView* view) {
    OviType* type = mesh;
    OviNamedObject* named = type;
    OviObject* object = named;
    OviProperty* property = radius;
    OviInstance* instance = asset;
    OviViewItem* item = view;
    OviObject* const objects[] = {mesh, radius, asset, view, property, instance, item};
    (void)OviObject_GetClass(object);
    (void)OviObject_GetClass(objects[0]);
    (void)OviNamedObject_GetName(asset);
    OviPropertyInstance* found = OviInstance_GetPropertyInstance(asset, "Mesh.radius", false);
    if (OviObject_ImplementsClass(found, OVI_CLASS_ATTRIBUTE_INSTANCE))
        (void)OviAttributeInstance_GetValue(static_cast<OviAttributeInstance*>(found));
}
