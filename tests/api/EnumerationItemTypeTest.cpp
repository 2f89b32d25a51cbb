// Items of enumerations that are themselves used as types: who owns them, and how long they live.

#include "api/EnumerationHost.h"

namespace {

class EnumerationItemTypeTest : public EnumerationHost {};

TEST_F(EnumerationItemTypeTest, AnItemThatIsTheTypeOfAPropertyOutlivesItsEnumeration) {
    OviEnumerationItem* red = OviEnumeration_GetItem(colour_, "Red");
    OviAttributeProperty* property = OviAttributeProperty_New("member", 1);
    OviAttributeProperty_SetType(property, red);
    OviAttributeProperty_SetDefaultValue(property, OviType_NewValue(red, nullptr, 1));
    OviObject_Delete(colour_);
    EXPECT_EQ(OviAttributeProperty_GetType(property), red);
    EXPECT_STREQ(OviType_GetFullName(red), "Red");
    const int number = 1;
    EXPECT_TRUE(OviAttributeProperty_IsValueValid(property, &number));
    OviObject_Delete(property); // and the item with it
}

TEST_F(EnumerationItemTypeTest, AnItemThatIsUsedAsATypeOutlivesItsEnumeration) {
    OviEnumerationItem* red = OviEnumeration_GetItem(colour_, "Red");
    const std::string file = OviType_GetFileName(colour_);
    OviType* custom = OviCustomType_New("Custom", 1);
    OviType_SetBaseType(custom, red);
    EXPECT_TRUE(OviTemplateManager_UnloadTemplateFile(file.c_str()));
    EXPECT_EQ(OviTemplateManager_GetEnumeration("Colour"), nullptr);
    EXPECT_EQ(OviType_GetBaseType(custom), red);
    EXPECT_EQ(OviType_GetValueSize(custom, nullptr, 1), 4);
    OviObject_Delete(custom);
}

TEST_F(EnumerationItemTypeTest, AnItemThatIsAPlainTypeGoesWithTheTypeOfItsValue) {
    for (const char* name : {"Red", "Green"}) // one key in front of the value type's, one behind
        OviTemplateManager_AddType(OviEnumeration_GetItem(colour_, name));
    OviNamedObject_SetName(OviTemplateManager_GetType("Green"), "Zebra");
    Ovi_Terminate();
    Ovi_Initialize();
    EXPECT_EQ(OviTemplateManager_GetType("Red"), nullptr);
    EXPECT_EQ(OviTemplateManager_GetType("Zebra"), nullptr);
    EXPECT_EQ(OviTemplateManager_GetTypeCount(), 14);
}

TEST_F(EnumerationItemTypeTest, AnItemUsedInsideItsFileDoesNotKeepTheEnumeration) {
    OviEnumeration* shape =
        Load("Shape", "INT32", {{"Round", "1"}}, "<type name='Outline' type='INT32'/>");
    const std::string file = OviType_GetFileName(shape);
    OviType_SetBaseType(TypeNamed("Outline"), OviEnumeration_GetItem(shape, "Round"));
    EXPECT_TRUE(OviTemplateManager_UnloadTemplateFile(file.c_str()));
    EXPECT_EQ(OviTemplateManager_GetEnumeration("Shape"), nullptr);
    EXPECT_EQ(TypeNamed("Outline"), nullptr);
}

TEST_F(EnumerationItemTypeTest, ATypeOverAnItemLivesWhileAPropertyUsesIt) {
    OviEnumeration* shape =
        Load("Shape", "Base", {{"Round", "1"}},
             "<type name='Base' type='INT32'/><type name='Outline' type='INT32'/>");
    const std::string file = OviType_GetFileName(shape);
    OviType* outline = TypeNamed("Outline");
    OviType_SetBaseType(outline, OviEnumeration_GetItem(shape, "Round"));
    OviAttributeProperty* property = OviAttributeProperty_New("member", 1);
    OviAttributeProperty_SetType(property, outline);
    EXPECT_TRUE(OviTemplateManager_UnloadTemplateFile(file.c_str()));
    for (const char* gone : {"Outline", "Shape", "Base"})
        EXPECT_EQ(TypeNamed(gone), nullptr) << gone;
    const int value = 1;
    EXPECT_TRUE(OviAttributeProperty_IsValueValid(property, &value));
    EXPECT_EQ(OviAttributeProperty_GetType(property), outline);
    OviObject_Delete(property);
}

TEST_F(EnumerationItemTypeTest, AnItemInUseOutlivesTheLibrary) {
    OviEnumerationItem* red = OviEnumeration_GetItem(colour_, "Red");
    OviAttributeProperty* property = OviAttributeProperty_New("member", 1);
    OviAttributeProperty_SetType(property, red);
    OviAttributeProperty_SetDefaultValue(property, OviType_NewValue(red, nullptr, 1));
    Ovi_Terminate();
    EXPECT_STREQ(OviType_GetFullName(OviAttributeProperty_GetType(property)), "Red");
    OviObject_Delete(property);
    Ovi_Initialize();
}

TEST_F(EnumerationItemTypeTest, ARegisteredItemLeavesItsEnumeration) {
    OviEnumerationItem* red = OviEnumeration_GetItem(colour_, "Red");
    EXPECT_GE(OviTemplateManager_AddType(red), 0);
    EXPECT_EQ(NamesIn(colour_), (Names{"Blue", "Green"}));
    OviObject_Delete(colour_);
    EXPECT_EQ(TypeNamed("Red"), red);
    EXPECT_STREQ(OviType_GetFullName(red), "Red");
}

TEST_F(EnumerationItemTypeTest, AnAddedItemLeavesTheRegistry) {
    for (const bool displaced : {false, true}) {
        OviEnumerationItem* item = NewItem("Lime");
        OviTemplateManager_AddType(item);
        OviType* other = displaced ? OviCustomType_New("Lime", 1) : nullptr;
        OviTemplateManager_AddType(other);
        OviEnumeration_AddItem(colour_, item);
        EXPECT_EQ(OviEnumeration_GetItem(colour_, "Lime"), item);
        EXPECT_EQ(TypeNamed("Lime"), other);
        OviObject_Delete(item);
        EXPECT_EQ(NamesIn(colour_), (Names{"Blue", "Green", "Red"}));
        EXPECT_EQ(TypeNamed("Lime"), other);
    }
}

TEST_F(EnumerationItemTypeTest, AnItemLeftToItsUsersMayBeAddedAgain) {
    OviEnumerationItem* item = NewItem("Lime");
    OviAttributeProperty* property = OviAttributeProperty_New("member", 1);
    OviAttributeProperty_SetType(property, item);
    OviObject_Delete(item);
    OviEnumeration_AddItem(colour_, item);
    OviObject_Delete(property);
    EXPECT_EQ(OviEnumeration_GetItem(colour_, "Lime"), item);
    EXPECT_STREQ(OviType_GetFullName(item), "Lime");
}

TEST_F(EnumerationItemTypeTest, ARegisteredItemGoesBeforeTheTypeOfItsValue) {
    OviTemplateManager_AddType(NewItem("Amber")); // in front of INT32, which goes first
    Ovi_Terminate();
    Ovi_Initialize();
    EXPECT_EQ(TypeNamed("Amber"), nullptr);
}

} // namespace
