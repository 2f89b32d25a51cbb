// The library's start and end, and what outlives the end.

#include <regex>

#include "api/Host.h"
#include "api/Values.h"

namespace {

using LibraryTest = HostTest;

TEST_F(LibraryTest, TellsItsVersionAsThreeNumbers) {
    EXPECT_TRUE(std::regex_match(Ovi_GetVersion(), std::regex("\\d+\\.\\d+\\.\\d+")));
}

TEST_F(LibraryTest, KeepsEverythingUntilTheLastOfNestedEnds) {
    Ovi_Initialize();
    OviErrorManager_AddErrorItem(OVI_LEVEL_ERROR, "file", 1, "kept");
    OviNotificationManager_SetDCC(OVI_HOST_MAYA);
    OviTemplateManager_CreateTemplate("Kept");
    OviAssetManager_NewAsset("Kept");
    Ovi_Terminate();
    EXPECT_EQ(OviErrorManager_GetErrorItemCount(OVI_LEVEL_ERROR), 1);
    EXPECT_EQ(OviNotificationManager_GetDCC(), OVI_HOST_MAYA);
    EXPECT_NE(OviTemplateManager_GetTemplate("Kept"), nullptr);
    EXPECT_NE(OviAssetManager_GetAsset("Kept"), nullptr);
}

TEST_F(LibraryTest, StartsAfreshAfterTheLastEnd) {
    OviErrorManager_AddErrorItem(OVI_LEVEL_ERROR, "file", 1, "gone");
    OviNotificationManager_SetDCC(OVI_HOST_MAYA);
    OviTemplateManager_CreateTemplate("Gone");
    OviTemplateManager_AddSearchPath("C:\\gone", false);
    OviAssetManager_NewAsset("Gone");
    Ovi_Terminate();
    Ovi_Initialize();
    EXPECT_EQ(OviErrorManager_GetErrorItemCount(15), 0);
    EXPECT_EQ(OviErrorManager_GetErrorItemAt(0), nullptr);
    EXPECT_EQ(OviNotificationManager_GetDCC(), OVI_HOST_NONE);
    EXPECT_EQ(OviTemplateManager_GetTemplateCount(), 1);
    EXPECT_EQ(OviTemplateManager_GetTypeCount(), 14);
    EXPECT_EQ(OviTemplateManager_GetSearchPathCount(), 0);
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 0);
    EXPECT_FALSE(OviAssetManager_IsDirty());
}

TEST_F(LibraryTest, EndsWithoutMatchingStart) {
    OviTemplateManager_CreateTemplate("Gone");
    Ovi_Terminate();
    Ovi_Terminate(); // nothing was started
    EXPECT_EQ(OviTemplateManager_GetTemplate("Gone"), nullptr);
    EXPECT_EQ(OviTemplateManager_GetTemplateCount(), 1);
    Ovi_Terminate(); // ends what the lines above brought into being
    Ovi_Initialize();
}

TEST_F(LibraryTest, WorksBeforeItsStart) {
    Ovi_Terminate();
    EXPECT_EQ(OviTemplateManager_GetTypeCount(), 14);
    EXPECT_NE(OviAssetManager_NewAsset("Early"), nullptr);
    Ovi_Initialize(); // takes a use of what is there
    EXPECT_NE(OviAssetManager_GetAsset("Early"), nullptr);
}

TEST_F(LibraryTest, ForgetsCallbacksAtItsEnd) {
    StartRecording();
    Ovi_Terminate();
    Ovi_Initialize();
    OviAssetManager_NewAsset("Silent");
    EXPECT_TRUE(Events().empty());
}

// -- what the host keeps across the end -----------------------------------------------------------

class HostObjectsTest : public HostTest {
protected:
    /// A template with an attribute of the type, in the manager.
    static OviTemplate* Declare(const char* name, const char* attribute, OviType* type) {
        OviTemplate* owner = OviTemplateManager_CreateTemplate(name);
        OviAttributeProperty* property = OviAttributeProperty_New(attribute, 1);
        EXPECT_TRUE(OviAttributeProperty_SetType(property, type));
        EXPECT_GE(OviTemplate_AddProperty(owner, property, -1), 0);
        return owner;
    }

    /// Ends the library, starts it again, and lets the test end it once more.
    static void EndAndStart() {
        Ovi_Terminate();
        Ovi_Initialize();
    }
};

TEST_F(HostObjectsTest, FreeInstancesWithValuesCanBeDeletedAfterTheEnd) {
    OviTemplate* mesh = Declare("Mesh", "label", TypeNamed("STRING"));
    OviInstance* instance = OviInstance_New("Kept");
    OviInstance_AddTemplate(instance, mesh);
    auto* label = static_cast<OviAttributeInstance*>(
        OviInstance_GetPropertyInstance(instance, "Mesh.label", false));
    const char* text = "still here";
    OviAttributeInstance_SetValue(label, &text);
    Ovi_Terminate();
    EXPECT_STREQ(OviNamedObject_GetName(instance), "Kept");
    EXPECT_EQ(OviInstance_GetTemplateCount(instance), 1);
    const auto* value = static_cast<const char* const*>(OviAttributeInstance_GetValue(label));
    EXPECT_STREQ(value[0], "still here");
    OviObject_Delete(instance);
    Ovi_Initialize();
}

TEST_F(HostObjectsTest, FreeInstancesOutliveSeveralEnds) {
    OviInstance* first = OviInstance_New("First");
    OviInstance_AddTemplate(first, Declare("Mesh", "size", TypeNamed("INT32")));
    EndAndStart();
    OviInstance* second = OviInstance_New("Second");
    OviInstance_AddTemplate(second, Declare("Mesh", "size", TypeNamed("DOUBLE")));
    EndAndStart();
    OviObject_Delete(first);
    OviObject_Delete(second);
}

TEST_F(HostObjectsTest, RemovedAssetsCanBeDeletedAfterTheEnd) {
    OviAsset* asset = OviAssetManager_NewAsset("Kept");
    OviInstance_AddTemplate(asset, Declare("Mesh", "size", TypeNamed("INT32")));
    OviAssetManager_RemoveAsset(asset);
    EndAndStart();
    EXPECT_STREQ(OviNamedObject_GetName(asset), "Kept");
    OviObject_Delete(asset);
}

TEST_F(HostObjectsTest, PropertiesWithValuesCanBeDeletedAfterTheEnd) {
    OviAttributeProperty* property = OviAttributeProperty_New("colour", 1);
    OviType* text = TypeNamed("STRING");
    OviAttributeProperty_SetType(property, text);
    const char* initial = "red";
    OviAttributeProperty_SetDefaultValue(property, OviType_NewValue(text, &initial, 1));
    OviAttributeProperty_SetMinValue(property, OviType_NewValue(text, &initial, 1));
    EndAndStart();
    EXPECT_STREQ(*static_cast<char**>(OviAttributeProperty_GetDefaultValue(property)), "red");
    OviObject_Delete(property);
}

TEST_F(HostObjectsTest, PropertiesWithCustomTypesCanBeDeletedAfterTheEnd) {
    OviCustomType* custom = OviCustomType_New("Length", 1);
    OviType_SetBaseType(custom, TypeNamed("DOUBLE"));
    OviAttributeProperty* property = OviAttributeProperty_New("length", 1);
    OviAttributeProperty_SetType(property, custom);
    const double one = 1;
    OviAttributeProperty_SetDefaultValue(property, OviType_NewValue(custom, &one, 1));
    EndAndStart();
    OviObject_Delete(property); // and the custom type with it
}

TEST_F(HostObjectsTest, EnumerationClonesCanBeUsedAndDeletedAfterTheEnd) {
    const std::string path =
        WriteFile("colours.template", TemplateFile("<enum name=\"Colour\" type=\"INT32\">"
                                                   "<item name=\"Red\" value=\"1\"/>"
                                                   "<item name=\"Blue\" value=\"2\"/></enum>"));
    ASSERT_TRUE(OviTemplateManager_LoadTemplateFile(path.c_str()));
    auto* clone =
        static_cast<OviEnumeration*>(OviObject_Clone(OviTemplateManager_GetEnumeration("Colour")));
    EndAndStart();
    EXPECT_EQ(OviEnumeration_GetItemCount(clone), 2);
    const int three = 3;
    OviEnumerationItem_SetValue(OviEnumeration_GetItem(clone, "Red"), &three);
    OviObject_Delete(clone);
}

TEST_F(HostObjectsTest, TemplateClonesCanBeDeletedAfterTheEnd) {
    OviTemplate* mesh = Declare("Mesh", "size", TypeNamed("INT32"));
    auto* clone = static_cast<OviTemplate*>(OviObject_Clone(mesh));
    EndAndStart();
    EXPECT_EQ(OviTemplate_GetPropertyCount(clone), 1);
    OviObject_Delete(clone);
}

TEST_F(HostObjectsTest, ViewClonesCanBeDeletedAfterTheEnd) {
    OviTemplate* mesh = OviTemplateManager_CreateTemplate("Mesh");
    OviTemplate_CreateView(mesh, "main");
    auto* clone = static_cast<OviView*>(OviObject_Clone(OviTemplate_GetViewAt(mesh, 0)));
    EndAndStart();
    EXPECT_TRUE(OviNamedObject_SetName(clone, "other"));
    OviObject_Delete(clone);
}

TEST_F(HostObjectsTest, CustomTypesAndClonesOfBuiltInTypesCanBeUsedAfterTheEnd) {
    OviCustomType* custom = OviCustomType_New("Count", 1);
    OviType_SetBaseType(custom, TypeNamed("INT32"));
    auto* clone = static_cast<OviType*>(OviObject_Clone(TypeNamed("STRING")));
    EndAndStart();
    {
        Block number(custom, nullptr, 1);
        number.Read("7");
        EXPECT_EQ(number.Text(), "7");
        Block text(clone, nullptr, 1);
        text.Read("word");
        EXPECT_EQ(text.Text(), "word");
    }
    OviObject_Delete(custom);
    OviObject_Delete(clone);
}

TEST_F(HostObjectsTest, RemovedTypesCanBeDeletedAfterTheEnd) {
    OviTemplate* mesh = Declare("Mesh", "size", TypeNamed("INT32"));
    EXPECT_GE(OviTemplateManager_RemoveTemplate(mesh), 0);
    OviType* number = TypeNamed("FLOAT");
    EXPECT_GE(OviTemplateManager_RemoveType(number), 0);
    EndAndStart();
    EXPECT_STREQ(OviType_GetFullName(mesh), "Mesh");
    OviObject_Delete(mesh);
    OviObject_Delete(number);
}

TEST_F(HostObjectsTest, ManyKindsAtOnceCanBeDeletedInAnyOrder) {
    for (const bool backwards : {false, true}) {
        OviTemplate* mesh = Declare("Mesh", "size", TypeNamed("INT32"));
        OviInstance* instance = OviInstance_New("Kept");
        OviInstance_AddTemplate(instance, mesh);
        OviAttributeProperty* property = OviAttributeProperty_New("ref", 1);
        OviAttributeProperty_SetType(property, mesh);
        std::vector<OviObject*> kept{instance, OviObject_Clone(mesh), property,
                                     OviObject_Clone(TypeNamed("INT8"))};
        EndAndStart();
        if (backwards)
            kept = {kept.rbegin(), kept.rend()};
        for (OviObject* object : kept)
            OviObject_Delete(object);
    }
}

} // namespace
