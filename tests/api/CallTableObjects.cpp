// Bad handles for objects of all kinds and types.

#include "api/CallTable.h"

namespace {

OviType* Number() {
    return OviTemplateManager_GetType("INT32");
}

int zero = 0;

} // namespace

Calls ObjectCalls() {
    return {
        OVI_RETURNS(OviObject_Delete(nullptr)),
        OVI_GIVES(nullptr, OviObject_Clone(nullptr)),
        OVI_GIVES(-1, OviObject_GetClass(nullptr)),
        OVI_GIVES(false, OviObject_ImplementsClass(nullptr, OVI_CLASS_OBJECT)),
        OVI_GIVES(nullptr, OviObject_GetLockable(bad)),
        OVI_GIVES(0, OviLockable_GetLockState(nullptr)),
        OVI_RETURNS(OviLockable_SetLockState(nullptr, 1)),

        OVI_GIVES("", OviNamedObject_GetName(bad)),
        OVI_GIVES(false, OviNamedObject_SetName(bad, "Name")),
        OVI_GIVES(false, OviNamedObject_SetName(Number(), nullptr)),
        OVI_GIVES(false, OviNamedObject_IsValidName(nullptr)),
        OVI_GIVES("", OviNamedObject_GetComment(bad)),
        OVI_RETURNS(OviNamedObject_SetComment(bad, "text")),
        OVI_RETURNS(OviNamedObject_SetComment(Number(), nullptr)),
        OVI_GIVES(nullptr, OviNamedObject_GetLabel(bad, "en")),
        OVI_RETURNS(OviNamedObject_SetLabel(bad, "en", "text")),
        OVI_RETURNS(OviNamedObject_SetLabel(Number(), nullptr, nullptr)),
        OVI_GIVES(0, OviNamedObject_GetLabelCount(bad)),
        OVI_GIVES(nullptr, OviNamedObject_GetLabelLanguageAt(bad, 0)),
        OVI_GIVES(nullptr, OviNamedObject_GetLabelLanguageAt(Number(), 0)),
        OVI_GIVES("", OviNamedObject_GetLabelTextAt(bad, 0)),
        OVI_GIVES("", OviNamedObject_GetLabelTextAt(Number(), -1)),
        OVI_GIVES(nullptr, OviNamedObject_GetDescription(bad, "en")),
        OVI_RETURNS(OviNamedObject_SetDescription(bad, "en", "text")),
        OVI_RETURNS(OviNamedObject_SetDescription(Number(), nullptr, nullptr)),
        OVI_GIVES(0, OviNamedObject_GetDescriptionCount(bad)),
        OVI_GIVES(nullptr, OviNamedObject_GetDescriptionLanguageAt(bad, 0)),
        OVI_GIVES(nullptr, OviNamedObject_GetDescriptionLanguageAt(Number(), 7)),
        OVI_GIVES("", OviNamedObject_GetDescriptionTextAt(bad, 0)),
        OVI_GIVES("", OviNamedObject_GetDescriptionTextAt(Number(), 7)),

        OVI_GIVES(0, OviErrorItem_GetErrorLevel(nullptr)),
        OVI_GIVES("", OviErrorItem_GetSourceName(nullptr)),
        OVI_GIVES(0, OviErrorItem_GetLineNumber(nullptr)),
        OVI_GIVES("", OviErrorItem_GetMessage(nullptr)),

        OVI_GIVES(nullptr, OviType_GetBaseType(bad)),
        OVI_RETURNS(OviType_SetBaseType(bad, Number())),
        OVI_RETURNS(OviType_SetBaseType(Number(), bad)),
        OVI_GIVES(0, OviType_GetAlignment(bad)),
        OVI_RETURNS(OviType_SetAlignment(bad, 4)),
        OVI_GIVES(0, OviType_GetValueSize(bad, &zero, 1)),
        OVI_GIVES(4, OviType_GetValueSize(Number(), nullptr, -1)),
        OVI_GIVES(nullptr, OviType_NewValue(bad, &zero, 1)),
        OVI_GIVES(nullptr, OviType_NewValue(Number(), &zero, -1)),
        OVI_RETURNS(OviType_DeleteValue(bad, nullptr, 1)),
        OVI_RETURNS(OviType_DeleteValue(Number(), nullptr, 1)),
        OVI_GIVES(0, OviType_CompareValues(bad, &zero, &zero, 1)),
        OVI_GIVES(-1, OviType_CompareValues(Number(), nullptr, &zero, 1)),
        OVI_GIVES(1, OviType_CompareValues(Number(), &zero, nullptr, 1)),
        OVI_GIVES(0, OviType_CompareValues(Number(), nullptr, nullptr, 1)),
        OVI_GIVES(0, OviType_GetValueAsString(bad, &zero, 0, nullptr)),
        OVI_GIVES(0, OviType_GetValueAsString(Number(), nullptr, 0, nullptr)),
        OVI_GIVES(0, OviType_GetValueAsString(Number(), &zero, -1, nullptr)),
        OVI_GIVES(1, OviType_GetValueAsString(Number(), &zero, 0, nullptr)),
        OVI_GIVES(0, OviType_GetValueFromString(bad, "1", &zero, 0)),
        OVI_GIVES(4, OviType_GetValueFromString(Number(), nullptr, &zero, 0)),
        OVI_GIVES(4, OviType_GetValueFromString(Number(), "1", nullptr, 0)),
        OVI_GIVES(4, OviType_GetValueFromString(Number(), "1", &zero, -1)),
        OVI_GIVES(0, OviType_WriteValueToBinary(bad, &zero, 1, &zero, 4)),
        OVI_GIVES(0, OviType_WriteValueToBinary(Number(), &zero, 1, nullptr, 4)),
        OVI_GIVES(0, OviType_WriteValueToBinary(Number(), &zero, 1, &zero, -4)),
        OVI_RETURNS(OviType_WriteToXML(bad, 0, &zero, nullptr)),
        OVI_RETURNS(OviType_WriteToXML(Number(), 0, nullptr, nullptr)),
        OVI_GIVES("", OviType_GetFullName(bad)),
        OVI_GIVES("", OviType_GetFileName(bad)),
        OVI_RETURNS(OviType_SetFileName(bad, "file")),
        OVI_RETURNS(OviType_SetFileName(Number(), nullptr)),
        OVI_GIVES("", OviType_GetPackageName(bad)),
        OVI_RETURNS(OviType_SetPackageName(bad, "package")),
        OVI_RETURNS(OviType_SetPackageName(Number(), nullptr)),
        OVI_RETURNS(OviType_SetSearchPath(bad, "path")),
        OVI_GIVES(false, OviType_IsRecycled(bad)),
    };
}
