// Bad handles and indices for enumerations, templates and properties.

#include "api/CallTable.h"

namespace {

OviTemplate* Mesh() {
    return OviTemplateManager_CreateTemplate("Mesh");
}
OviEnumeration* Colour() {
    return OviTemplateManager_GetEnumeration("Colour");
}
OviAttributeProperty* Size() {
    return static_cast<OviAttributeProperty*>(OviTemplate_GetProperty(Mesh(), "size"));
}

int zero = 0;

} // namespace

Calls SchemaCalls() {
    return {
        OVI_RETURNS(OviObject_Delete(OviCustomType_New(nullptr, -1))),
        OVI_GIVES(-1, OviEnumeration_AddItem(bad, OviEnumeration_GetItemAt(Colour(), 0))),
        OVI_GIVES(-1, OviEnumeration_AddItem(Colour(), bad)),
        OVI_GIVES(nullptr, OviEnumeration_GetItem(bad, "Red")),
        OVI_GIVES(nullptr, OviEnumeration_GetItem(Colour(), nullptr)),
        OVI_GIVES(0, OviEnumeration_GetItemCount(bad)),
        OVI_GIVES(nullptr, OviEnumeration_GetItemAt(bad, 0)),
        OVI_GIVES(nullptr, OviEnumeration_GetItemAt(Colour(), -1)),
        OVI_GIVES(nullptr, OviEnumeration_GetItemAt(Colour(), 1)),
        OVI_GIVES(-1, OviEnumeration_RemoveItem(bad, OviEnumeration_GetItemAt(Colour(), 0))),
        OVI_GIVES(-1, OviEnumeration_RemoveItem(Colour(), bad)),
        OVI_RETURNS(OviEnumerationItem_SetValue(bad, &zero)),

        OVI_GIVES(0, OviTemplate_GetVersion(bad)),
        OVI_GIVES(0, OviTemplate_GetLatestVersion(bad)),
        OVI_GIVES(-1, OviTemplate_AddParent(bad, Mesh())),
        OVI_GIVES(-1, OviTemplate_AddParent(Mesh(), bad)),
        OVI_GIVES(-1, OviTemplate_RemoveParent(bad, Mesh())),
        OVI_GIVES(-1, OviTemplate_RemoveParent(Mesh(), bad)),
        OVI_GIVES(0, OviTemplate_GetParentCount(bad)),
        OVI_GIVES(nullptr, OviTemplate_GetParentAt(bad, 0)),
        OVI_GIVES(nullptr, OviTemplate_GetParentAt(Mesh(), -1)),
        OVI_GIVES(nullptr, OviTemplate_GetParentAt(Mesh(), 1)),
        OVI_GIVES(nullptr, OviTemplate_GetParent(bad, "Object#1")),
        OVI_GIVES(nullptr, OviTemplate_GetParent(Mesh(), nullptr)),
        OVI_GIVES(0, OviTemplate_GetChildCount(bad)),
        OVI_GIVES(nullptr, OviTemplate_GetChildAt(bad, 0)),
        OVI_GIVES(nullptr, OviTemplate_GetChildAt(Mesh(), 0)),
        OVI_GIVES(nullptr, OviTemplate_GetChildAt(Mesh(), -1)),
        OVI_GIVES(nullptr, OviTemplate_GetChild(bad, "Mesh#1")),
        OVI_GIVES(nullptr, OviTemplate_GetChild(Mesh(), nullptr)),
        OVI_GIVES(false, OviTemplate_IsChildOf(bad, Mesh())),
        OVI_GIVES(false, OviTemplate_IsChildOf(Mesh(), bad)),
        OVI_GIVES(false, OviTemplate_IsDescendantOf(bad, Mesh())),
        OVI_GIVES(false, OviTemplate_IsDescendantOf(Mesh(), bad)),
        OVI_GIVES(-1, OviTemplate_AddProperty(bad, Size(), 0)),
        OVI_GIVES(-1, OviTemplate_AddProperty(Mesh(), bad, 0)),
        OVI_GIVES(-1, OviTemplate_RemoveProperty(bad, Size())),
        OVI_GIVES(-1, OviTemplate_RemoveProperty(Mesh(), bad)),
        OVI_GIVES(0, OviTemplate_GetPropertyCount(bad)),
        OVI_GIVES(nullptr, OviTemplate_GetPropertyAt(bad, 0, true)),
        OVI_GIVES(nullptr, OviTemplate_GetPropertyAt(Mesh(), -1, true)),
        OVI_GIVES(nullptr, OviTemplate_GetPropertyAt(Mesh(), 1, true)),
        OVI_GIVES(nullptr, OviTemplate_GetPropertyAt(Mesh(), -1, false)),
        OVI_GIVES(nullptr, OviTemplate_GetPropertyAt(Mesh(), 1, false)),
        OVI_GIVES(nullptr, OviTemplate_GetProperty(bad, "size")),
        OVI_GIVES(nullptr, OviTemplate_GetProperty(Mesh(), nullptr)),
        OVI_GIVES(-1, OviTemplate_CreateView(bad, "main")),
        OVI_GIVES(-1, OviTemplate_CreateView(Mesh(), nullptr)),
        OVI_GIVES(-1, OviTemplate_AddView(bad, bad)),
        OVI_GIVES(-1, OviTemplate_AddView(Mesh(), bad)),
        OVI_GIVES(-1, OviTemplate_RemoveView(bad, bad)),
        OVI_GIVES(-1, OviTemplate_RemoveView(Mesh(), bad)),
        OVI_GIVES(0, OviTemplate_GetViewCount(bad)),
        OVI_GIVES(nullptr, OviTemplate_GetViewAt(bad, 0)),
        OVI_GIVES(nullptr, OviTemplate_GetViewAt(Mesh(), 0)),
        OVI_GIVES(nullptr, OviTemplate_GetViewAt(Mesh(), -1)),
        OVI_GIVES(nullptr, OviTemplate_GetView(bad, "main", true)),
        OVI_GIVES(nullptr, OviTemplate_GetView(Mesh(), nullptr, true)),

        OVI_GIVES("", OviProperty_GetFullName(bad)),
        OVI_GIVES(nullptr, OviProperty_GetTemplate(bad)),
        OVI_GIVES(-1, OviProperty_AddCommand(bad, bad)),
        OVI_GIVES(-1, OviProperty_AddCommand(Size(), bad)),
        OVI_GIVES(-1, OviProperty_RemoveCommand(bad, bad)),
        OVI_GIVES(-1, OviProperty_RemoveCommand(Size(), bad)),
        OVI_GIVES(0, OviProperty_GetCommandCount(bad)),
        OVI_GIVES(nullptr, OviProperty_GetCommandAt(bad, 0)),
        OVI_GIVES(nullptr, OviProperty_GetCommandAt(Size(), 0)),
        OVI_GIVES(nullptr, OviProperty_GetCommandAt(Size(), -1)),

        OVI_RETURNS(OviObject_Delete(OviAttributeProperty_New(nullptr, 0))),
        OVI_RETURNS(OviObject_Delete(OviAttributeProperty_New("x", 4294967295u))),
        OVI_GIVES(nullptr, OviAttributeProperty_GetType(bad)),
        OVI_GIVES(false, OviAttributeProperty_SetType(bad, OviTemplateManager_GetType("BOOL"))),
        OVI_GIVES(nullptr, OviAttributeProperty_GetDefaultValue(bad)),
        OVI_RETURNS(OviAttributeProperty_SetDefaultValue(bad, &zero)),
        OVI_RETURNS(OviAttributeProperty_SetDefaultValue(Size(), nullptr)),
        OVI_GIVES(nullptr, OviAttributeProperty_GetMinValue(bad)),
        OVI_RETURNS(OviAttributeProperty_SetMinValue(bad, &zero)),
        OVI_RETURNS(OviAttributeProperty_SetMinValue(Size(), nullptr)),
        OVI_GIVES(nullptr, OviAttributeProperty_GetMaxValue(bad)),
        OVI_RETURNS(OviAttributeProperty_SetMaxValue(bad, &zero)),
        OVI_RETURNS(OviAttributeProperty_SetMaxValue(Size(), nullptr)),
        OVI_GIVES(false, OviAttributeProperty_IsValueValid(bad, &zero)),
        OVI_GIVES(false, OviAttributeProperty_IsValueValid(Size(), nullptr)),
        OVI_GIVES(false, OviAttributeProperty_IsReference(bad)),
        OVI_RETURNS(OviAttributeProperty_SetReference(bad, true)),
        OVI_GIVES("", OviAttributeProperty_GetAutoBind(bad)),
        OVI_RETURNS(OviAttributeProperty_SetAutoBind(bad, "text")),
        OVI_RETURNS(OviAttributeProperty_SetAutoBind(Size(), nullptr)),
    };
}
