// Calls on the library, objects of all kinds, diagnostics, callbacks and types.

#include <gtest/gtest.h>

#include "faults/CallRows.h"

namespace {

constexpr const char* kLong = "a text that is too long to stand inside of a string object";

void Hear(void*, void*, int, void*) {}

/// Reads a text into a block of its own.
void ReadIntoBlock(OviType* type, const char* text) {
    if (void* block = OviType_NewValue(type, nullptr, 1)) {
        OviType_GetValueFromString(type, text, block, 0);
        OviType_DeleteValue(type, block, 1);
    }
}

template <class Handle> void DeleteFree(Handle*& handle) {
    OviObject_Delete(handle);
    handle = nullptr;
}

/// With checks, what is no handle is refused also where there is no memory to report it.
void RefuseBadHandles(Model& m) {
    Ovi_SetChecks(true);
    OviObject_Delete(reinterpret_cast<OviObject*>(&m));
    OviObject_Delete(m.freeAsset);
    OviObject_Delete(m.freeAsset);
    EXPECT_EQ(OviErrorManager_GetErrorItemCount(OVI_LEVEL_ERROR), 2);
    OviErrorManager_Clear();
    m.freeAsset = nullptr;
    Ovi_SetChecks(false);
}

} // namespace

CallRows ObjectRows() {
    return {
        OVI_DO((Ovi_Initialize(), Ovi_Terminate())),
        OVI_CALL(Ovi_GetVersion()),
        OVI_DO((Ovi_SetChecks(true), Ovi_SetChecks(false))),
        OVI_DO(RefuseBadHandles(m)),
        OVI_CALL(Ovi_GetChecks()),

        OVI_DO(DeleteFree(m.freeTemplate)),
        OVI_DO(DeleteFree(m.freeAttribute)),
        OVI_DO(DeleteFree(m.freeGeometry)),
        OVI_DO(DeleteFree(m.freeCommand)),
        OVI_DO(DeleteFree(m.freeAlternate)),
        OVI_DO(DeleteFree(m.freeLOD)),
        OVI_DO(DeleteFree(m.freeView)),
        OVI_DO(DeleteFree(m.freeEnumeration)),
        OVI_DO(DeleteFree(m.freeAsset)),
        OVI_DO(DeleteFree(m.freeInstance)),
        OVI_DO(OviObject_Delete(m.redraw)),
        OVI_DO(OviObject_Delete(m.lod)),
        OVI_DO(OviObject_Delete(m.view)),
        OVI_DO(OviObject_Delete(m.group)),
        OVI_DO(OviObject_Delete(m.red)),
        OVI_DO(OviObject_Delete(m.colour)),
        OVI_DO(OviObject_Delete(m.vector)),
        OVI_DO(OviObject_Delete(m.chair)),
        OVI_DO(OviObject_Delete(m.leg)),

        OVI_CALL(m.Keep(OviObject_Clone(m.part))),
        OVI_CALL(m.Keep(OviObject_Clone(m.whole))),
        OVI_CALL(m.Keep(OviObject_Clone(m.size))),
        OVI_CALL(m.Keep(OviObject_Clone(m.nested))),
        OVI_CALL(m.Keep(OviObject_Clone(m.node))),
        OVI_CALL(m.Keep(OviObject_Clone(m.plug))),
        OVI_CALL(m.Keep(OviObject_Clone(m.shape))),
        OVI_CALL(m.Keep(OviObject_Clone(m.high))),
        OVI_CALL(m.Keep(OviObject_Clone(m.redraw))),
        OVI_CALL(m.Keep(OviObject_Clone(m.view))),
        OVI_CALL(m.Keep(OviObject_Clone(m.group))),
        OVI_CALL(m.Keep(OviObject_Clone(m.lod))),
        OVI_CALL(m.Keep(OviObject_Clone(m.vector))),
        OVI_CALL(m.Keep(OviObject_Clone(m.colour))),
        OVI_CALL(m.Keep(OviObject_Clone(m.red))),
        OVI_CALL(m.Keep(OviObject_Clone(m.chair))),
        OVI_CALL(OviObject_GetClass(m.part)),
        OVI_CALL(OviObject_ImplementsClass(m.part, OVI_CLASS_TYPE)),
        OVI_CALL(OviObject_GetLockable(m.size)),
        OVI_CALL(OviLockable_GetLockState(OviObject_GetLockable(m.size))),
        OVI_DO(OviLockable_SetLockState(OviObject_GetLockable(m.size), 1)),

        OVI_CALL(OviNamedObject_GetName(m.part)),
        OVI_CALL(OviNamedObject_SetName(m.base, "zz_last_of_all_in_the_order_of_names")),
        OVI_CALL(OviNamedObject_SetName(m.part, "zz_last_of_all_in_the_order_of_names")),
        OVI_CALL(OviNamedObject_SetName(m.whole, "a.first.One_that_moves_to_another_package")),
        OVI_CALL(OviNamedObject_SetName(m.vector, "a.first.One_that_moves_to_another_package")),
        OVI_CALL(OviNamedObject_SetName(m.colour, "zz_last_of_all_in_the_order_of_names")),
        OVI_CALL(OviNamedObject_SetName(m.red, "zz_last_of_all_in_the_order_of_names")),
        OVI_CALL(OviNamedObject_SetName(m.size, "zz_last_of_all_in_the_order_of_names")),
        OVI_CALL(OviNamedObject_SetName(m.redraw, "zz_last_of_all_in_the_order_of_names")),
        OVI_CALL(OviNamedObject_SetName(m.view, "zz_last_of_all_in_the_order_of_names")),
        OVI_CALL(OviNamedObject_SetName(m.group, "zz_last_of_all_in_the_order_of_names")),
        OVI_CALL(OviNamedObject_SetName(m.lod, "zz_last_of_all_in_the_order_of_names")),
        OVI_CALL(OviNamedObject_SetName(m.high, "zz_last_of_all_in_the_order_of_names")),
        OVI_CALL(OviNamedObject_SetName(m.chair, "zz_last_of_all_in_the_order_of_names")),
        OVI_CALL(OviNamedObject_SetName(m.leg, "zz_last_of_all_in_the_order_of_names")),
        OVI_CALL(OviNamedObject_SetName(m.freeTemplate, "host.Own_template_with_a_long_name")),
        OVI_CALL(OviNamedObject_IsValidName("Name")),
        OVI_CALL(OviNamedObject_GetComment(m.part)),
        OVI_DO(OviNamedObject_SetComment(m.part, kLong)),
        OVI_DO(OviNamedObject_SetComment(m.chair, kLong)),
        OVI_CALL(OviNamedObject_GetLabel(m.size, "en_GB_and_what_else_there_may_be_of_it")),
        OVI_DO(OviNamedObject_SetLabel(m.size, "de", kLong)),
        OVI_DO(OviNamedObject_SetLabel(m.size, "en", kLong)),
        OVI_DO(OviNamedObject_SetLabel(m.chair, nullptr, kLong)),
        OVI_CALL(OviNamedObject_GetLabelCount(m.size)),
        OVI_CALL(OviNamedObject_GetLabelLanguageAt(m.size, 0)),
        OVI_CALL(OviNamedObject_GetLabelTextAt(m.size, 0)),
        OVI_CALL(OviNamedObject_GetDescription(m.base, "en")),
        OVI_DO(OviNamedObject_SetDescription(m.base, kLong, kLong)),
        OVI_CALL(OviNamedObject_GetDescriptionCount(m.base)),
        OVI_CALL(OviNamedObject_GetDescriptionLanguageAt(m.base, 0)),
        OVI_CALL(OviNamedObject_GetDescriptionTextAt(m.base, 0)),

        OVI_DO(OviErrorManager_AddErrorItem(3, kLong, 7, kLong)),
        OVI_CALL(OviErrorManager_GetErrorItemCount(3)),
        OVI_CALL(OviErrorManager_GetErrorItemAt(0)),
        OVI_DO(OviErrorManager_Clear()),
        OVI_DO((OviErrorManager_AddErrorItem(1, "", 1, ""),
                OviErrorItem_GetErrorLevel(OviErrorManager_GetErrorItemAt(0)),
                OviErrorItem_GetSourceName(OviErrorManager_GetErrorItemAt(0)),
                OviErrorItem_GetLineNumber(OviErrorManager_GetErrorItemAt(0)),
                OviErrorItem_GetMessage(OviErrorManager_GetErrorItemAt(0)))),

        OVI_CALL(OviNotificationManager_GetDCC()),
        OVI_DO(OviNotificationManager_SetDCC(0)),
        OVI_DO((OviNotificationManager_RegisterInstanceCallback(&Hear, m.buffer),
                OviNotificationManager_UnregisterInstanceCallback(m.buffer))),
        OVI_DO((OviNotificationManager_RegisterPropertyInstanceCallback(&Hear, m.buffer),
                OviNotificationManager_UnregisterPropertyInstanceCallback(m.buffer))),
    };
}

CallRows TypeRows() {
    return {
        OVI_CALL(m.Keep(OviCustomType_New("host.Another_type_with_a_long_name", 1))),
        OVI_CALL(OviEnumeration_AddItem(m.colour, m.freeItem)),
        OVI_CALL(OviEnumeration_AddItem(m.freeEnumeration, m.freeItem)),
        OVI_CALL(OviEnumeration_GetItem(m.colour, "Red")),
        OVI_CALL(OviEnumeration_GetItemCount(m.colour)),
        OVI_CALL(OviEnumeration_GetItemAt(m.colour, 0)),
        OVI_CALL(m.Keep(OviEnumeration_RemoveItem(m.colour, m.red) >= 0 ? m.red : nullptr)),
        OVI_DO(OviEnumerationItem_SetValue(m.red, m.buffer)),
        OVI_DO(OviEnumerationItem_SetValue(m.freeItem, m.buffer)),

        OVI_CALL(OviType_GetBaseType(m.vector)),
        OVI_DO(OviType_SetBaseType(m.vector, m.number)),
        OVI_DO(OviType_SetBaseType(m.vector, m.freeType)),
        OVI_CALL(OviType_GetAlignment(m.vector)),
        OVI_DO(OviType_SetAlignment(m.vector, 8)),
        OVI_CALL(OviType_GetValueSize(m.vector, m.value, 3)),
        OVI_CALL(OviType_GetValueSize(m.whole, nullptr, 2)),
        OVI_DO(OviType_DeleteValue(m.vector, OviType_NewValue(m.vector, m.value, 3), 3)),
        OVI_DO(OviType_DeleteValue(m.text, OviType_NewValue(m.text, nullptr, 2), 2)),
        OVI_DO(OviType_DeleteValue(m.whole, OviType_NewValue(m.whole, nullptr, 2), 2)),
        OVI_PARTS(OviType_DeleteValue(
            m.whole, OviType_NewValue(m.whole, OviAttributeInstance_GetValue(m.partOfChair), 1),
            1)),
        OVI_CALL(OviType_CompareValues(m.vector, m.value, m.value, 3)),
        OVI_CALL(OviType_CompareValues(m.colour, m.buffer, m.buffer, 1)),
        OVI_CALL(OviType_GetValueAsString(m.vector, m.value, 0, m.buffer)),
        OVI_CALL(OviType_GetValueFromString(m.vector, "1.5", m.value, 0)),
        OVI_PARTS(ReadIntoBlock(m.part, "main.Part")),
        OVI_CALL(OviType_WriteValueToBinary(m.vector, m.value, 3, m.buffer, 100)),
        OVI_DO(OviType_WriteValueToBinary(m.part, OviAttributeInstance_GetValue(m.partOfChair), 1,
                                          m.buffer, sizeof m.buffer)),
        OVI_CALL((OviType_WriteToXML(m.vector, 1, &m.count, m.buffer), m.buffer[0])),
        OVI_CALL((OviType_WriteToXML(m.part, 1, &m.count, m.buffer), m.buffer[0])),
        OVI_CALL((OviType_WriteToXML(m.colour, 1, &m.count, m.buffer), m.buffer[0])),
        OVI_CALL(OviType_GetFullName(m.vector)),
        OVI_CALL(OviType_GetFileName(m.vector)),
        OVI_DO(OviType_SetFileName(m.vector, "another_file_with_a_long_name.template")),
        OVI_DO(OviType_SetFileName(m.part2, "another_file_with_a_long_name.template")),
        OVI_DO(OviType_SetFileName(m.freeType, "another_file_with_a_long_name.template")),
        OVI_CALL(OviType_GetPackageName(m.vector)),
        OVI_DO(OviType_SetPackageName(m.vector, "another.package.with.a.long.name")),
        OVI_DO(OviType_SetPackageName(m.whole, "another.package.with.a.long.name")),
        OVI_DO(OviType_SetSearchPath(m.vector, "another_directory_with_a_long_name")),
        OVI_DO(OviType_SetSearchPath(m.part, "another_directory_with_a_long_name")),
        OVI_CALL(OviType_IsRecycled(m.vector)),
    };
}
