/* In C, handles of all classes convert freely. */
#include "ovi/ovi.h"

static void OnEvent(void* userData, void* object, int event, void* argument) {
    OviInstance* instance = object;
    const char* name = argument;
    (void)userData;
    (void)event;
    (void)OviNamedObject_SetName(instance, name);
}

int UseHandles(void);
int UseHandles(void) {
    OviTemplate* mesh = OviTemplateManager_CreateTemplate("Mesh");
    OviAttributeProperty* radius = OviAttributeProperty_New("radius", 1);
    OviAsset* asset = OviAssetManager_NewAsset("Ball");
    OviAttributeInstance* value = OviInstance_GetPropertyInstance(asset, "Mesh.radius", true);
    OviType* types[4];
    float number = 1.5f;
    (void)OviNotificationManager_RegisterInstanceCallback(OnEvent, NULL);
    (void)OviAttributeProperty_SetType(radius, OviTemplateManager_GetType("FLOAT"));
    (void)OviTemplate_AddProperty(mesh, radius, -1);
    (void)OviInstance_AddTemplate(asset, mesh);
    OviAttributeInstance_SetValue(value, &number);
    OviObject_Delete(OviObject_Clone(mesh));
    return OviTemplateManager_GetTypesByFileName(OviType_GetFileName(mesh), types, 4);
}
