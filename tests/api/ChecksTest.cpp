// Checks of handles: what is none of a living object is refused and reported.

#include "api/ChecksHost.h"

namespace {

// -- what is found --------------------------------------------------------------------------------

TEST_F(ChecksTest, AnObjectThatIsDeletedTwiceIsReported) {
    OviAsset* asset = DeadAsset();
    OviObject_Delete(asset);
    EXPECT_EQ(TakeErrors(), Finding("OviObject_Delete: the handle is dead (it was an Asset)"));
}

TEST_F(ChecksTest, WhatWentWithItsOwnerIsDeadAndItsClassIsKnown) {
    Schema("<template name='Mesh'><attribute name='size' type='INT32'/><node name='n'/>"
           "</template>");
    OviAsset* asset = AssetOf("Mesh", "Thing");
    OviPropertyInstance* size = PropertyOf(asset, "Mesh.size");
    OviPropertyInstance* node = PropertyOf(asset, "Mesh.n");
    OviAssetManager_NewScene();
    EXPECT_EQ(OviPropertyInstance_GetProperty(size), nullptr);
    EXPECT_EQ(TakeErrors(), Finding("OviPropertyInstance_GetProperty: the handle is dead (it was "
                                    "an AttributeInstance)"));
    EXPECT_FALSE(OviPropertyInstance_IsValid(node));
    EXPECT_EQ(TakeErrors(), Finding("OviPropertyInstance_IsValid: the handle is dead (it was a "
                                    "NodeInstance)"));
    EXPECT_STREQ(OviNamedObject_GetName(asset), "");
    EXPECT_EQ(TakeErrors(),
              Finding("OviNamedObject_GetName: the handle is dead (it was an Asset)"));
}

TEST_F(ChecksTest, InstancesInAValueAreHandlesToo) {
    Schema("<template name='Part'/><template name='Mesh'><attribute name='parts' type='Part'/>"
           "<attribute name='size' type='INT32'/></template>");
    auto* parts =
        static_cast<OviAttributeInstance*>(PropertyOf(AssetOf("Mesh", "a"), "Mesh.parts"));
    OviType* type = OviTemplateManager_GetTemplate("Part");
    auto* property =
        static_cast<OviAttributeProperty*>(OviTemplateManager_GetProperty("Mesh.parts"));
    OviAsset* dead[] = {DeadAsset()};
    const auto finding = [](const std::string& function) {
        return Finding(function + ": the handle is dead (it was an Asset)");
    };
    OviAttributeInstance_SetValue(parts, dead);
    EXPECT_EQ(TakeErrors(), finding("OviAttributeInstance_SetValue"));
    EXPECT_EQ(OviType_NewValue(type, dead, 1), nullptr);
    EXPECT_EQ(TakeErrors(), finding("OviType_NewValue"));
    EXPECT_EQ(OviType_GetValueSize(type, dead, 1), 0);
    EXPECT_EQ(TakeErrors(), finding("OviType_GetValueSize"));
    EXPECT_EQ(OviType_GetValueAsString(type, dead, 0, nullptr), 0);
    EXPECT_EQ(TakeErrors(), finding("OviType_GetValueAsString"));
    EXPECT_EQ(OviType_WriteValueToBinary(type, dead, 1, nullptr, 0), 0);
    EXPECT_EQ(TakeErrors(), finding("OviType_WriteValueToBinary"));
    void* living = OviType_NewValue(type, nullptr, 1);
    EXPECT_EQ(OviType_CompareValues(type, living, dead, 1), 0);
    EXPECT_EQ(TakeErrors(), finding("OviType_CompareValues"));
    OviType_DeleteValue(type, dead, 1);
    EXPECT_EQ(TakeErrors(), finding("OviType_DeleteValue"));
    EXPECT_FALSE(OviAttributeProperty_IsValueValid(property, dead));
    EXPECT_EQ(TakeErrors(), finding("OviAttributeProperty_IsValueValid"));
    for (auto [set, name] :
         {std::pair(&OviAttributeProperty_SetDefaultValue, "OviAttributeProperty_SetDefaultValue"),
          std::pair(&OviAttributeProperty_SetMinValue, "OviAttributeProperty_SetMinValue"),
          std::pair(&OviAttributeProperty_SetMaxValue, "OviAttributeProperty_SetMaxValue")}) {
        set(property, dead);
        EXPECT_EQ(TakeErrors(), finding(name));
    }
    OviAttributeInstance_SetValue(parts, living);
    EXPECT_EQ(TakeErrors(), std::vector<std::string>{});
    OviObject_Delete(*static_cast<OviInstance**>(living)); // or it keeps its schema for ever
}

TEST_F(ChecksTest, TheHandlesOfTheDeadDifferFromThoseOfNewObjects) {
    OviAsset* dead = DeadAsset();
    for (int i = 0; i < 1000; ++i)
        EXPECT_NE(OviAssetManager_NewAsset(nullptr), dead);
    EXPECT_STREQ(OviAsset_GetReference(dead), "");
    EXPECT_EQ(TakeErrors(), Finding("OviAsset_GetReference: the handle is dead (it was an Asset)"));
}

TEST_F(ChecksTest, TheLockStateOfADeadObjectIsReportedWithItsClass) {
    OviAttributeProperty* property = OviAttributeProperty_New("size", 1);
    OviGroup* group = OviGroup_New("group");
    OviLockable* ofProperty = OviObject_GetLockable(property);
    OviLockable* ofGroup = OviObject_GetLockable(group);
    OviObject_Delete(property);
    OviObject_Delete(group);
    EXPECT_EQ(OviLockable_GetLockState(ofProperty), 0);
    EXPECT_EQ(TakeErrors(), Finding("OviLockable_GetLockState: the handle is dead (it was an "
                                    "AttributeProperty)"));
    OviLockable_SetLockState(ofGroup, 1);
    EXPECT_EQ(TakeErrors(),
              Finding("OviLockable_SetLockState: the handle is dead (it was a Group)"));
}

TEST_F(ChecksTest, AnObjectIsNoLockable) {
    OviAttributeProperty* property = OviAttributeProperty_New("size", 1);
    EXPECT_EQ(OviLockable_GetLockState(reinterpret_cast<OviLockable*>(property)), 0);
    EXPECT_EQ(TakeErrors(),
              Finding("OviLockable_GetLockState: not a handle (no object begins there)"));
    OviObject_Delete(property);
}

TEST_F(ChecksTest, OneCallReportsOnlyTheFirstOfItsBadHandles) {
    OviAsset* dead = DeadAsset();
    auto* notATemplate = reinterpret_cast<OviTemplate*>(&dead);
    EXPECT_EQ(OviInstance_AddTemplate(dead, notATemplate), -1);
    EXPECT_EQ(TakeErrors(),
              Finding("OviInstance_AddTemplate: the handle is dead (it was an Asset)"));
}

TEST_F(ChecksTest, ARefusedArgumentChangesNothingWhereNullWould) {
    auto* dead = reinterpret_cast<OviObject*>(DeadAsset());
    OviCustomType* type = OviCustomType_New("mine", 1);
    OviType* base = OviTemplateManager_GetType("INT32");
    OviType_SetBaseType(type, base);
    OviType_SetBaseType(type, static_cast<OviType*>(dead));
    EXPECT_EQ(OviType_GetBaseType(type), base);
    OviAttributeProperty* size = OviAttributeProperty_New("size", 1);
    OviViewProperty* shown = OviViewProperty_New("shown", size);
    OviViewProperty_SetProperty(shown, static_cast<OviProperty*>(dead));
    EXPECT_EQ(OviViewProperty_GetProperty(shown), size);
    EXPECT_EQ(OviViewProperty_New("other", static_cast<OviProperty*>(dead)), nullptr);
    EXPECT_EQ(TakeErrors().size(), 3u);
    for (OviObject* object : {static_cast<OviObject*>(shown), static_cast<OviObject*>(size),
                              static_cast<OviObject*>(type)})
        OviObject_Delete(object);
    EXPECT_TRUE(TakeErrors().empty());
}

// -- what is not ----------------------------------------------------------------------------------

TEST_F(ChecksTest, NullAndObjectsOfAnotherClassAreNoFindings) {
    OviObject_Delete(nullptr);
    EXPECT_FALSE(OviObject_ImplementsClass(nullptr, OVI_CLASS_OBJECT));
    EXPECT_EQ(OviLockable_GetLockState(nullptr), 0);
    auto* asset = reinterpret_cast<OviTemplate*>(OviAssetManager_NewAsset("Thing"));
    EXPECT_EQ(OviTemplate_GetVersion(asset), 0);
    EXPECT_TRUE(TakeErrors().empty());
}

TEST_F(ChecksTest, ObjectsThatWereThereBeforeTheChecksAreKnown) {
    Ovi_SetChecks(false);
    EXPECT_FALSE(Ovi_GetChecks());
    OviAsset* asset = OviAssetManager_NewAsset("Early");
    Ovi_SetChecks(true);
    EXPECT_TRUE(Ovi_GetChecks());
    EXPECT_STREQ(OviNamedObject_GetName(asset), "Early");
    EXPECT_TRUE(TakeErrors().empty());
    OviObject_Delete(asset);
    EXPECT_STREQ(OviNamedObject_GetName(asset), "");
    EXPECT_EQ(TakeErrors().size(), 1u);
}

TEST_F(ChecksTest, ManyDeletionsKeepOnlyTheLastDead) {
    OviAsset* first = DeadAsset();
    for (int i = 0; i < 70000; ++i)
        OviObject_Delete(OviInstance_New("x"));
    OviInstance* last = OviInstance_New("last");
    OviObject_Delete(last);
    EXPECT_FALSE(OviInstance_IsValid(last));
    EXPECT_EQ(TakeErrors(),
              Finding("OviInstance_IsValid: the handle is dead (it was an Instance)"));
    EXPECT_FALSE(OviInstance_IsValid(first)); // dead or no longer known
    EXPECT_EQ(TakeErrors().size(), 1u);
}

TEST_F(ChecksTest, HandlesOfAnEarlierUseOfTheLibraryAreDead) {
    OviAsset* asset = OviAssetManager_NewAsset("Thing");
    OviTemplate* root = OviTemplateManager_GetRoot();
    Ovi_Terminate();
    Ovi_Initialize();
    EXPECT_TRUE(Ovi_GetChecks());
    EXPECT_EQ(OviTemplate_GetVersion(root), 0);
    EXPECT_EQ(TakeErrors(),
              Finding("OviTemplate_GetVersion: the handle is dead (it was a Template)"));
    EXPECT_STREQ(OviNamedObject_GetName(asset), "");
    EXPECT_EQ(TakeErrors().size(), 1u);
}

void CallWithDeadHandle(void* dead, void*, int event, void*) {
    if (event == OVI_EVENT_INSTANCE_RENAMED)
        OviInstance_IsValid(static_cast<OviInstance*>(dead));
}

TEST_F(ChecksTest, ACallInsideOfACallbackNamesItself) {
    OviAsset* asset = OviAssetManager_NewAsset("Thing");
    OviAsset* dead = DeadAsset();
    OviNotificationManager_RegisterInstanceCallback(&CallWithDeadHandle, dead);
    EXPECT_TRUE(OviNamedObject_SetName(asset, "Other"));
    OviNotificationManager_UnregisterInstanceCallback(dead);
    EXPECT_EQ(TakeErrors(), Finding("OviInstance_IsValid: the handle is dead (it was an Asset)"));
}

} // namespace
