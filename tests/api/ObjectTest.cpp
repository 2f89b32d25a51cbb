// Class numbers, copies and deletion.

#include <set>

#include "api/Host.h"
#include "api/Values.h"

namespace {

/// All class numbers, used or not, and some around them.
constexpr int kLowest = -2;
constexpr int kHighest = 45;

class ObjectTest : public HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        const std::string path = WriteFile(
            "schema.template",
            TemplateFile("<enum name=\"Colour\" type=\"INT32\">"
                         "<item name=\"Red\" value=\"1\"/></enum>"
                         "<template name=\"Mesh\"><attribute name=\"size\" type=\"INT32\"/>"
                         "</template>"));
        ASSERT_TRUE(OviTemplateManager_LoadTemplateFile(path.c_str()));
        ASSERT_TRUE(Errors().empty());
        mesh_ = OviTemplateManager_GetTemplate("Mesh");
        colour_ = OviTemplateManager_GetEnumeration("Colour");
        asset_ = OviAssetManager_NewAsset("Thing");
        OviInstance_AddTemplate(asset_, mesh_);
        size_ = OviTemplate_GetProperty(mesh_, "size");
    }

    OviPropertyInstance* SizeOfAsset() {
        return OviInstance_GetPropertyInstance(asset_, "Mesh.size", false);
    }

    OviView* NewView() {
        const int index = OviTemplate_CreateView(mesh_, "main");
        return OviTemplate_GetViewAt(mesh_, index);
    }

    static void ExpectClasses(OviObject* object, int own, const std::set<int>& implemented) {
        ASSERT_NE(object, nullptr) << own;
        EXPECT_EQ(OviObject_GetClass(object), own);
        for (int id = kLowest; id <= kHighest; ++id)
            EXPECT_EQ(OviObject_ImplementsClass(object, id), implemented.count(id) == 1)
                << "class " << own << " and " << id;
    }

    OviTemplate* mesh_ = nullptr;
    OviEnumeration* colour_ = nullptr;
    OviAsset* asset_ = nullptr;
    OviProperty* size_ = nullptr;
};

TEST_F(ObjectTest, TypesAnswerWithTheirClasses) {
    ExpectClasses(OviTemplateManager_GetRoot(), 1, {1, 20, 31, 0});
    ExpectClasses(mesh_, 1, {1, 20, 31, 0});
    for (const char* name : {"FLOAT", "DOUBLE"})
        ExpectClasses(TypeNamed(name), 4, {4, 20, 31, 0});
    ExpectClasses(colour_, 5, {5, 20, 31, 0});
    ExpectClasses(OviEnumeration_GetItemAt(colour_, 0), 6, {6, 20, 31, 0});
    for (const char* name :
         {"INT8", "UINT8", "INT16", "UINT16", "INT32", "UINT32", "INT64", "UINT64"})
        ExpectClasses(TypeNamed(name), 11, {11, 20, 31, 0});
    for (const char* name : {"VOID", "STRING", "REFERENCE"})
        ExpectClasses(TypeNamed(name), 17, {17, 20, 31, 0});
    ExpectClasses(TypeNamed("BOOL"), 35, {35, 20, 31, 0});
    OviCustomType* custom = OviCustomType_New("Custom", 1);
    ExpectClasses(custom, 41, {41, 20, 31, 0});
    OviObject_Delete(custom);
}

TEST_F(ObjectTest, SchemaAndInstanceObjectsAnswerWithTheirClasses) {
    ExpectClasses(size_, 3, {3, 15, 31, 0});
    ExpectClasses(NewView(), 39, {39, 36, 37, 31, 0});
    ExpectClasses(SizeOfAsset(), 2, {2, 16, 31, 0});
    ExpectClasses(asset_, 29, {29, 10, 31, 0});
    OviInstance* instance = OviInstance_New("Free");
    ExpectClasses(instance, 10, {10, 31, 0});
    OviObject_Delete(instance);
    OviErrorManager_AddErrorItem(1, "", 1, "");
    ExpectClasses(OviErrorManager_GetErrorItemAt(0), 32, {32, 0});
}

TEST_F(ObjectTest, TheClassesHaveTheNamesOfTheHeader) {
    EXPECT_EQ(OviObject_GetClass(colour_), OVI_CLASS_ENUMERATION);
    EXPECT_EQ(OviObject_GetClass(OviEnumeration_GetItemAt(colour_, 0)), OVI_CLASS_ENUMERATION_ITEM);
    EXPECT_EQ(OviObject_GetClass(TypeNamed("UINT8")), OVI_CLASS_INT_TYPE);
    EXPECT_EQ(OviObject_GetClass(TypeNamed("DOUBLE")), OVI_CLASS_FLOAT_TYPE);
    EXPECT_EQ(OviObject_GetClass(TypeNamed("STRING")), OVI_CLASS_STRING_TYPE);
    EXPECT_EQ(OviObject_GetClass(TypeNamed("BOOL")), OVI_CLASS_BOOL_TYPE);
    EXPECT_TRUE(OviObject_ImplementsClass(NewView(), OVI_CLASS_VIEW_ITEM));
    EXPECT_FALSE(OviObject_ImplementsClass(mesh_, OVI_CLASS_VIEW_ITEM));
    OviErrorManager_AddErrorItem(OVI_LEVEL_ERROR, "", 1, "");
    EXPECT_EQ(OviObject_GetClass(OviErrorManager_GetErrorItemAt(0)), OVI_CLASS_ERROR_ITEM);
}

TEST_F(ObjectTest, CommandsAnswerWithTheirClassAndAreCopiedAsTheyAre) {
    const std::string path =
        WriteFile("command.template",
                  TemplateFile("<template name=\"Door\"><attribute name=\"open\" type=\"BOOL\">"
                               "<command execute=\"go\" notification=\"BindingChanged\"/>"
                               "</attribute></template>"));
    ASSERT_TRUE(OviTemplateManager_LoadTemplateFile(path.c_str()));
    OviProperty* property = OviTemplate_GetProperty(OviTemplateManager_GetTemplate("Door"), "open");
    OviCommand* command = OviProperty_GetCommandAt(property, 0);
    ExpectClasses(command, 34, {34, 31, 0});
    OviObject* copy = OviObject_Clone(command);
    ExpectClasses(copy, 34, {34, 31, 0});
    EXPECT_STREQ(OviNamedObject_GetName(static_cast<OviNamedObject*>(copy)), "go");
    OviObject_Delete(copy);
    OviProperty_RemoveCommand(property, command); // properties never delete commands
    OviObject_Delete(command);
}

TEST_F(ObjectTest, NullImplementsNoClass) {
    for (int id = kLowest; id <= kHighest; ++id)
        EXPECT_FALSE(OviObject_ImplementsClass(nullptr, id));
    EXPECT_EQ(OviObject_GetClass(nullptr), -1);
}

TEST_F(ObjectTest, ClassesWithACopyOfTheirOwnAreCopiedAsTheyAre) {
    for (OviObject* source :
         {static_cast<OviObject*>(mesh_), static_cast<OviObject*>(colour_),
          static_cast<OviObject*>(OviEnumeration_GetItemAt(colour_, 0)),
          static_cast<OviObject*>(size_), static_cast<OviObject*>(NewView()),
          static_cast<OviObject*>(TypeNamed("BOOL")), static_cast<OviObject*>(TypeNamed("UINT16")),
          static_cast<OviObject*>(TypeNamed("FLOAT")),
          static_cast<OviObject*>(TypeNamed("VOID"))}) {
        OviObject* copy = OviObject_Clone(source);
        ASSERT_NE(copy, nullptr);
        EXPECT_NE(copy, source);
        EXPECT_EQ(OviObject_GetClass(copy), OviObject_GetClass(source));
        EXPECT_STREQ(OviNamedObject_GetName(static_cast<OviNamedObject*>(copy)),
                     OviNamedObject_GetName(static_cast<OviNamedObject*>(source)));
        OviObject_Delete(copy);
    }
}

TEST_F(ObjectTest, OtherClassesAreCopiedAsBareObjects) {
    OviErrorManager_AddErrorItem(1, "", 1, "");
    OviInstance* instance = OviInstance_New("Free");
    for (OviObject* source : {static_cast<OviObject*>(instance), static_cast<OviObject*>(asset_),
                              static_cast<OviObject*>(SizeOfAsset()),
                              static_cast<OviObject*>(OviErrorManager_GetErrorItemAt(0))}) {
        OviObject* copy = OviObject_Clone(source);
        ExpectClasses(copy, 0, {0});
        OviObject_Delete(copy);
    }
    OviObject_Delete(instance);
}

TEST_F(ObjectTest, ACopyTakesNameTextsAndComment) {
    OviNamedObject_SetComment(mesh_, "a mesh");
    OviNamedObject_SetLabel(mesh_, "de", "Netz");
    OviNamedObject_SetLabel(mesh_, nullptr, "mesh");
    OviNamedObject_SetDescription(mesh_, "en", "points");
    auto* copy = static_cast<OviTemplate*>(OviObject_Clone(mesh_));
    OviNamedObject_SetLabel(mesh_, "de", "later");
    EXPECT_STREQ(OviNamedObject_GetComment(copy), "a mesh");
    EXPECT_EQ(OviNamedObject_GetLabelCount(copy), 2);
    EXPECT_EQ(OviNamedObject_GetLabelLanguageAt(copy, 0), nullptr);
    EXPECT_STREQ(OviNamedObject_GetLabel(copy, "de"), "Netz");
    EXPECT_STREQ(OviNamedObject_GetDescription(copy, "en"), "points");
    OviObject_Delete(copy);
}

TEST_F(ObjectTest, ACopyOfAnEnumerationHasItemsOfItsOwn) {
    auto* copy = static_cast<OviEnumeration*>(OviObject_Clone(colour_));
    EXPECT_EQ(OviEnumeration_GetItemCount(copy), 1);
    EXPECT_NE(OviEnumeration_GetItemAt(copy, 0), OviEnumeration_GetItemAt(colour_, 0));
    OviNamedObject_SetName(OviEnumeration_GetItemAt(copy, 0), "Green");
    EXPECT_NE(OviEnumeration_GetItem(colour_, "Red"), nullptr);
    OviObject_Delete(copy);
    EXPECT_EQ(OviEnumeration_GetItemCount(colour_), 1);
}

TEST_F(ObjectTest, ACopyIsNotRecycled) {
    OviInstance_RemoveTemplate(asset_, mesh_);
    OviInstance* user = OviInstance_New("User");
    OviInstance_AddTemplate(user, mesh_);
    OviTemplateManager_UnloadTemplateFile(OviType_GetFileName(mesh_));
    ASSERT_TRUE(OviType_IsRecycled(mesh_));
    auto* copy = static_cast<OviTemplate*>(OviObject_Clone(mesh_));
    EXPECT_FALSE(OviType_IsRecycled(copy));
    OviObject_Delete(copy);
    OviObject_Delete(user);
}

TEST_F(ObjectTest, DeletingTakesAnObjectFromItsOwner) {
    OviObject_Delete(OviEnumeration_GetItemAt(colour_, 0));
    EXPECT_EQ(OviEnumeration_GetItemCount(colour_), 0);
    OviObject_Delete(colour_);
    EXPECT_EQ(OviTemplateManager_GetEnumeration("Colour"), nullptr);
    OviObject_Delete(NewView());
    EXPECT_EQ(OviTemplate_GetViewCount(mesh_), 0);
    OviObject_Delete(asset_);
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 0);
}

TEST_F(ObjectTest, DeletingACopyLeavesTheOriginalWithItsOwner) {
    for (OviObject* source : {static_cast<OviObject*>(mesh_), static_cast<OviObject*>(colour_),
                              static_cast<OviObject*>(OviEnumeration_GetItemAt(colour_, 0)),
                              static_cast<OviObject*>(size_), static_cast<OviObject*>(NewView())})
        OviObject_Delete(OviObject_Clone(source));
    EXPECT_EQ(OviTemplateManager_GetTemplate("Mesh"), mesh_);
    EXPECT_EQ(OviTemplateManager_GetEnumeration("Colour"), colour_);
    EXPECT_EQ(OviEnumeration_GetItemCount(colour_), 1);
    EXPECT_EQ(OviTemplate_GetProperty(mesh_, "size"), size_);
    EXPECT_EQ(OviTemplate_GetViewCount(mesh_), 1);
}

TEST_F(ObjectTest, DeletingNullOrTheRootDoesNothing) {
    OviObject_Delete(nullptr);
    OviObject_Delete(OviTemplateManager_GetRoot());
    EXPECT_STREQ(OviType_GetFullName(OviTemplateManager_GetRoot()), "Object");
}

TEST_F(ObjectTest, TextsHandedOutStayWhileOtherThingsHappen) {
    const char* name = OviNamedObject_GetName(mesh_);
    const char* fullName = OviType_GetFullName(mesh_);
    const char* property = OviProperty_GetFullName(size_);
    for (int i = 0; i < 100; ++i)
        OviTemplateManager_CreateTemplate(("Other" + std::to_string(i)).c_str());
    OviNamedObject_SetComment(mesh_, "changed");
    EXPECT_STREQ(name, "Mesh");
    EXPECT_STREQ(fullName, "Mesh");
    EXPECT_STREQ(property, "Mesh.size");
}

} // namespace
