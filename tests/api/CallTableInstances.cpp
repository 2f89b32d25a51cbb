// Bad handles and indices for instances, property instances and assets.

#include "api/CallTable.h"

namespace {

OviTemplate* Mesh() {
    return OviTemplateManager_CreateTemplate("Mesh");
}
OviAsset* Thing() {
    return OviAssetManager_GetAsset("Thing");
}
OviAttributeInstance* SizeOfThing() {
    return static_cast<OviAttributeInstance*>(
        OviInstance_GetPropertyInstance(Thing(), "Mesh.size", false));
}

uint32_t none = 0;

} // namespace

Calls InstanceCalls() {
    return {
        OVI_RETURNS(OviObject_Delete(OviInstance_New(nullptr))),
        OVI_GIVES(-1, OviInstance_AddTemplate(bad, Mesh())),
        OVI_GIVES(-1, OviInstance_AddTemplate(Thing(), bad)),
        OVI_GIVES(nullptr, OviInstance_GetTemplate(bad, "Mesh")),
        OVI_GIVES(nullptr, OviInstance_GetTemplate(Thing(), nullptr)),
        OVI_GIVES(nullptr, OviInstance_GetTemplateAt(bad, 0)),
        OVI_GIVES(nullptr, OviInstance_GetTemplateAt(Thing(), -1)),
        OVI_GIVES(nullptr, OviInstance_GetTemplateAt(Thing(), 1)),
        OVI_GIVES(0, OviInstance_GetTemplateCount(bad)),
        OVI_GIVES(-1, OviInstance_RemoveTemplate(bad, Mesh())),
        OVI_GIVES(-1, OviInstance_RemoveTemplate(Thing(), bad)),
        OVI_GIVES(-1, OviInstance_UpdateTemplate(bad, Mesh())),
        OVI_GIVES(-1, OviInstance_UpdateTemplate(Thing(), bad)),
        OVI_GIVES(nullptr, OviInstance_GetPropertyInstance(bad, "Mesh.size", true)),
        OVI_GIVES(nullptr, OviInstance_GetPropertyInstance(Thing(), nullptr, true)),
        OVI_GIVES(false, OviInstance_IsPropertyInstanceValid(bad, "Mesh.size")),
        OVI_GIVES(false, OviInstance_IsPropertyInstanceValid(Thing(), nullptr)),
        OVI_GIVES(false, OviInstance_IsValid(bad)),
        OVI_GIVES(0, OviInstance_GetSize(bad)),
        OVI_GIVES(0, OviInstance_WriteToBinary(bad, &none, 4)),
        OVI_GIVES(0, OviInstance_WriteToBinary(Thing(), nullptr, 4)),
        OVI_GIVES(nullptr, OviInstance_GetParentAsset(bad)),
        OVI_GIVES(nullptr, OviInstance_GetParentPropertyInstance(bad)),
        OVI_RETURNS(OviInstance_WriteToXML(bad, 0, &none, nullptr)),
        OVI_RETURNS(OviInstance_WriteToXML(Thing(), 0, nullptr, nullptr)),

        OVI_GIVES(nullptr, OviPropertyInstance_GetProperty(bad)),
        OVI_GIVES(nullptr, OviPropertyInstance_GetTemplate(bad)),
        OVI_GIVES(false, OviPropertyInstance_IsValid(bad)),
        OVI_GIVES(false, OviPropertyInstance_IsBindingLocked(bad)),
        OVI_GIVES(false, OviPropertyInstance_IsValueLocked(bad)),
        OVI_GIVES(false, OviPropertyInstance_SetBindingLocked(bad, true)),
        OVI_GIVES(false, OviPropertyInstance_SetValueLocked(bad, true)),

        OVI_GIVES(nullptr, OviAttributeInstance_GetValue(bad)),
        OVI_RETURNS(OviAttributeInstance_SetValue(bad, &none)),
        OVI_RETURNS(OviAttributeInstance_SetValue(SizeOfThing(), nullptr)),
        OVI_GIVES("", OviAttributeInstance_GetBinding(bad)),
        OVI_RETURNS(OviAttributeInstance_SetBinding(bad, "text")),
        OVI_RETURNS(OviAttributeInstance_SetBinding(SizeOfThing(), nullptr)),
        OVI_GIVES(0, OviAttributeInstance_GetDimension(bad)),
        OVI_GIVES(false, OviAttributeInstance_SetDimension(bad, 1)),
        OVI_GIVES(false, OviAttributeInstance_SetDimension(SizeOfThing(), -1)),

        OVI_GIVES(nullptr, OviAsset_GetAssetNode(bad)),
        OVI_GIVES("", OviAsset_GetReference(bad)),
        OVI_GIVES(false, OviAsset_SetReference(bad, "file")),
        OVI_GIVES(true, OviAsset_SetReference(Thing(), nullptr)),
    };
}
