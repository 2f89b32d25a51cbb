// Enumerations and their items.

#include "api/Host.h"
#include "api/Values.h"

namespace {

class EnumerationTest : public HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        colour_ = Load("Colour", "INT32", {{"Red", "1"}, {"Green", "2"}, {"Blue", "3"}});
        ASSERT_NE(colour_, nullptr);
    }

    using Items = std::vector<std::pair<std::string, std::string>>;

    /// The enumeration as a template file defines it, with what `before` defines ahead of it.
    OviEnumeration* Load(const std::string& name, const std::string& type, const Items& items,
                         const std::string& before = "") {
        std::string text = before + "<enum name='" + name + "' type='" + type + "'>";
        for (const auto& [item, value] : items)
            text += "<item name='" + item + "' value='" + value + "'/>";
        const std::string path = WriteFile(name + ".template", TemplateFile(text + "</enum>"));
        OviTemplateManager_LoadTemplateFile(path.c_str());
        EXPECT_EQ(Errors(), std::vector<std::string>());
        return OviTemplateManager_GetEnumeration(name.c_str());
    }

    /// A free item: a renamed copy of another one.
    OviEnumerationItem* NewItem(const char* name) {
        auto* item = static_cast<OviEnumerationItem*>(
            OviObject_Clone(OviEnumeration_GetItem(colour_, "Red")));
        OviNamedObject_SetName(item, name);
        return item;
    }

    static std::vector<std::string> NamesIn(OviEnumeration* enumeration) {
        std::vector<std::string> names;
        for (int i = 0; i < OviEnumeration_GetItemCount(enumeration); ++i)
            names.emplace_back(OviType_GetFullName(OviEnumeration_GetItemAt(enumeration, i)));
        return names;
    }

    /// Whether a property of the type takes the value.
    static bool IsValid(OviType* type, const void* value) {
        OviAttributeProperty* property = OviAttributeProperty_New("member", 1);
        OviAttributeProperty_SetType(property, type);
        const bool valid = OviAttributeProperty_IsValueValid(property, value);
        OviObject_Delete(property);
        return valid;
    }

    static bool IsNumberValid(OviType* type, int number) { return IsValid(type, &number); }

    OviEnumeration* colour_ = nullptr;
};

using Names = std::vector<std::string>;

// -- items ----------------------------------------------------------------------------------------

TEST_F(EnumerationTest, ItemsStandInByteOrderOfTheirNames) {
    EXPECT_EQ(NamesIn(colour_), (Names{"Blue", "Green", "Red"}));
    EXPECT_EQ(OviEnumeration_AddItem(colour_, NewItem("aqua")), 3);
    EXPECT_EQ(OviEnumeration_AddItem(colour_, NewItem("Azure")), 0);
    EXPECT_EQ(OviEnumeration_AddItem(colour_, NewItem("Lime")), 3);
    EXPECT_EQ(NamesIn(colour_), (Names{"Azure", "Blue", "Green", "Lime", "Red", "aqua"}));
}

TEST_F(EnumerationTest, AnItemOfTheSameNameIsOverwrittenAndGoesBack) {
    OviEnumerationItem* old = OviEnumeration_GetItem(colour_, "Green");
    OviEnumerationItem* added = NewItem("Green");
    EXPECT_EQ(OviEnumeration_AddItem(colour_, added), -2);
    EXPECT_EQ(OviEnumeration_GetItem(colour_, "Green"), added);
    EXPECT_EQ(OviEnumeration_GetItemCount(colour_), 3);
    OviObject_Delete(old);
    EXPECT_EQ(OviEnumeration_GetItem(colour_, "Green"), added);
}

TEST_F(EnumerationTest, AnItemMayBeAddedTwice) {
    OviEnumerationItem* item = NewItem("Lime");
    EXPECT_EQ(OviEnumeration_AddItem(colour_, item), 2);
    EXPECT_EQ(OviEnumeration_AddItem(colour_, item), -3);
    EXPECT_EQ(OviEnumeration_GetItemCount(colour_), 4);
}

TEST_F(EnumerationTest, AnItemOfAnotherEnumerationMoves) {
    OviEnumeration* shape = Load("Shape", "INT32", {{"Round", "1"}});
    OviEnumerationItem* round = OviEnumeration_GetItem(shape, "Round");
    EXPECT_EQ(OviEnumeration_AddItem(colour_, round), 3);
    EXPECT_EQ(NamesIn(shape), Names());
    EXPECT_EQ(OviEnumeration_GetItem(colour_, "Round"), round);
}

TEST_F(EnumerationTest, ItemsAreFoundByTheExactFullName) {
    EXPECT_EQ(OviEnumeration_GetItem(colour_, "green"), nullptr);
    EXPECT_EQ(OviEnumeration_GetItem(colour_, ""), nullptr);
    OviEnumerationItem* item = NewItem("pkg.Lime");
    OviEnumeration_AddItem(colour_, item);
    EXPECT_EQ(OviEnumeration_GetItem(colour_, "pkg.Lime"), item);
    EXPECT_EQ(OviEnumeration_GetItem(colour_, "Lime"), nullptr);
}

TEST_F(EnumerationTest, ARemovedItemGoesBackToTheCaller) {
    OviEnumerationItem* green = OviEnumeration_GetItem(colour_, "Green");
    EXPECT_EQ(OviEnumeration_RemoveItem(colour_, green), 1);
    EXPECT_EQ(NamesIn(colour_), (Names{"Blue", "Red"}));
    EXPECT_LT(OviEnumeration_RemoveItem(colour_, green), 0);
    EXPECT_EQ(NamesIn(colour_), (Names{"Blue", "Red"}));
    OviObject_Delete(green);
}

TEST_F(EnumerationTest, RemovalGoesByTheName) {
    OviEnumerationItem* listed = OviEnumeration_GetItem(colour_, "Green");
    OviEnumerationItem* same = NewItem("Green");
    EXPECT_EQ(OviEnumeration_RemoveItem(colour_, same), 1);
    EXPECT_EQ(NamesIn(colour_), (Names{"Blue", "Red"}));
    OviObject_Delete(same);
    OviObject_Delete(listed);
}

TEST_F(EnumerationTest, ARenamedItemMovesToItsPlace) {
    OviEnumerationItem* blue = OviEnumeration_GetItem(colour_, "Blue");
    OviNamedObject_SetName(blue, "Violet");
    EXPECT_EQ(NamesIn(colour_), (Names{"Green", "Red", "Violet"}));
    EXPECT_EQ(OviEnumeration_GetItem(colour_, "Violet"), blue);
    EXPECT_EQ(OviEnumeration_GetItem(colour_, "Blue"), nullptr);
}

TEST_F(EnumerationTest, OfTwoItemsWithOneNameTheOneThatIsDeletedGoes) {
    OviEnumerationItem* blue = OviEnumeration_GetItem(colour_, "Blue");
    OviEnumerationItem* red = OviEnumeration_GetItem(colour_, "Red");
    OviNamedObject_SetName(blue, "Red"); // both stay
    EXPECT_EQ(NamesIn(colour_), (Names{"Green", "Red", "Red"}));
    OviObject_Delete(blue);
    EXPECT_EQ(NamesIn(colour_), (Names{"Green", "Red"}));
    EXPECT_EQ(OviEnumeration_GetItem(colour_, "Red"), red);
}

TEST_F(EnumerationTest, OutsideTheListThereIsNoItem) {
    for (const int index : {-1, 3, 1000})
        EXPECT_EQ(OviEnumeration_GetItemAt(colour_, index), nullptr);
}

TEST_F(EnumerationTest, AnItemsValueIsACopy) {
    OviEnumerationItem* red = OviEnumeration_GetItem(colour_, "Red");
    int number = 77;
    OviEnumerationItem_SetValue(red, &number);
    number = 78;
    EXPECT_TRUE(IsNumberValid(colour_, 77));
    EXPECT_FALSE(IsNumberValid(colour_, 78));
    EXPECT_FALSE(IsNumberValid(colour_, 1));
    OviEnumerationItem_SetValue(red, nullptr);
    EXPECT_TRUE(IsNumberValid(colour_, 0));
}

TEST_F(EnumerationTest, AnItemIsATypeThatBehavesAsItsValueType) {
    OviEnumerationItem* red = OviEnumeration_GetItem(colour_, "Red");
    Block block(red, nullptr, 2);
    EXPECT_EQ(block.Read("5", 1), 4);
    EXPECT_EQ(block.Text(1), "5");
    const int other[] = {0, 6};
    EXPECT_EQ(OviType_CompareValues(red, block.Get(), other, 2), -1);
    EXPECT_EQ(OviType_GetValueSize(red, nullptr, 2), 4);
    char packed[8];
    EXPECT_EQ(OviType_WriteValueToBinary(red, block.Get(), 1, packed, 8), 4);
    EXPECT_TRUE(IsNumberValid(red, 1234));
}

// -- items as types -------------------------------------------------------------------------------

TEST_F(EnumerationTest, AnItemThatIsTheTypeOfAPropertyOutlivesItsEnumeration) {
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

TEST_F(EnumerationTest, AnEnumerationStaysWhileAnItemIsUsedAsAType) {
    OviEnumerationItem* red = OviEnumeration_GetItem(colour_, "Red");
    const std::string file = OviType_GetFileName(colour_);
    OviType* custom = OviCustomType_New("Custom", 1);
    OviType_SetBaseType(custom, red);
    EXPECT_FALSE(OviTemplateManager_UnloadTemplateFile(file.c_str()));
    EXPECT_EQ(OviTemplateManager_GetEnumeration("Colour"), colour_);
    EXPECT_TRUE(OviType_IsRecycled(colour_));
    EXPECT_EQ(OviEnumeration_GetItem(colour_, "Red"), red);
    EXPECT_EQ(OviType_GetBaseType(custom), red);
    OviObject_Delete(custom);
    EXPECT_TRUE(OviTemplateManager_UnloadTemplateFile(file.c_str()));
    EXPECT_EQ(OviTemplateManager_GetEnumeration("Colour"), nullptr);
}

TEST_F(EnumerationTest, AnItemUsedInsideItsFileDoesNotKeepTheEnumeration) {
    OviEnumeration* shape =
        Load("Shape", "INT32", {{"Round", "1"}}, "<type name='Outline' type='INT32'/>");
    const std::string file = OviType_GetFileName(shape);
    OviType_SetBaseType(TypeNamed("Outline"), OviEnumeration_GetItem(shape, "Round"));
    EXPECT_TRUE(OviTemplateManager_UnloadTemplateFile(file.c_str()));
    EXPECT_EQ(OviTemplateManager_GetEnumeration("Shape"), nullptr);
    EXPECT_EQ(TypeNamed("Outline"), nullptr);
}

TEST_F(EnumerationTest, WhatATypeThatStaysNeedsAnItemForStaysToo) {
    OviEnumeration* shape =
        Load("Shape", "Base", {{"Round", "1"}},
             "<type name='Base' type='INT32'/><type name='Outline' type='INT32'/>");
    const std::string file = OviType_GetFileName(shape);
    OviType* outline = TypeNamed("Outline");
    OviType_SetBaseType(outline, OviEnumeration_GetItem(shape, "Round"));
    OviAttributeProperty* property = OviAttributeProperty_New("member", 1);
    OviAttributeProperty_SetType(property, outline);
    EXPECT_FALSE(OviTemplateManager_UnloadTemplateFile(file.c_str()));
    for (OviType* kept : {outline, static_cast<OviType*>(shape), TypeNamed("Base")})
        EXPECT_TRUE(OviType_IsRecycled(kept));
    EXPECT_NE(OviEnumeration_GetItem(shape, "Round"), nullptr);
    OviObject_Delete(property);
    EXPECT_TRUE(OviTemplateManager_UnloadTemplateFile(file.c_str()));
}

TEST_F(EnumerationTest, AnItemInUseOutlivesTheLibrary) {
    OviEnumerationItem* red = OviEnumeration_GetItem(colour_, "Red");
    OviAttributeProperty* property = OviAttributeProperty_New("member", 1);
    OviAttributeProperty_SetType(property, red);
    OviAttributeProperty_SetDefaultValue(property, OviType_NewValue(red, nullptr, 1));
    Ovi_Terminate();
    EXPECT_STREQ(OviType_GetFullName(OviAttributeProperty_GetType(property)), "Red");
    OviObject_Delete(property);
    Ovi_Initialize();
}

TEST_F(EnumerationTest, ARegisteredItemLeavesItsEnumeration) {
    OviEnumerationItem* red = OviEnumeration_GetItem(colour_, "Red");
    EXPECT_GE(OviTemplateManager_AddType(red), 0);
    EXPECT_EQ(NamesIn(colour_), (Names{"Blue", "Green"}));
    OviObject_Delete(colour_);
    EXPECT_EQ(TypeNamed("Red"), red);
    EXPECT_STREQ(OviType_GetFullName(red), "Red");
}

TEST_F(EnumerationTest, AnAddedItemLeavesTheRegistry) {
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

TEST_F(EnumerationTest, AnItemLeftToItsUsersMayBeAddedAgain) {
    OviEnumerationItem* item = NewItem("Lime");
    OviAttributeProperty* property = OviAttributeProperty_New("member", 1);
    OviAttributeProperty_SetType(property, item);
    OviObject_Delete(item);
    OviEnumeration_AddItem(colour_, item);
    OviObject_Delete(property);
    EXPECT_EQ(OviEnumeration_GetItem(colour_, "Lime"), item);
    EXPECT_STREQ(OviType_GetFullName(item), "Lime");
}

// -- values ---------------------------------------------------------------------------------------

TEST_F(EnumerationTest, ValuesAreThoseOfTheBaseType) {
    EXPECT_EQ(OviType_GetBaseType(colour_), TypeNamed("INT32"));
    EXPECT_EQ(OviType_GetAlignment(colour_), 4);
    Block block(colour_, nullptr, 2);
    EXPECT_EQ(block.Read("3", 1), 4);
    EXPECT_EQ(block.Text(1), "3");
    EXPECT_EQ(OviType_GetValueSize(colour_, nullptr, 2), 4);
    alignas(4) char packed[8];
    EXPECT_EQ(OviType_WriteValueToBinary(colour_, block.Get(), 2, packed, 8), 8);
}

TEST_F(EnumerationTest, AnyTwoValuesCompareEqual) {
    const int one = 1;
    const int two = 2;
    EXPECT_EQ(OviType_CompareValues(colour_, &one, &two, 1), 0);
    EXPECT_EQ(OviType_CompareValues(colour_, &two, &one, 1), 0);
    EXPECT_EQ(OviType_CompareValues(colour_, &one, nullptr, 1), 0);
}

TEST_F(EnumerationTest, ANumberIsValidWhenItIsAnItemsValue) {
    for (const int number : {1, 2, 3})
        EXPECT_TRUE(IsNumberValid(colour_, number));
    for (const int number : {0, 4, -1, 256 + 1})
        EXPECT_FALSE(IsNumberValid(colour_, number));
    EXPECT_FALSE(IsValid(colour_, nullptr));
}

TEST_F(EnumerationTest, ABlockIsValidWhenItIsAnItemsName) {
    EXPECT_TRUE(IsValid(colour_, "Green"));
    for (const char* other : {"Gree", "Greens", "green", "Gray"}) {
        alignas(8) char block[8] = {};
        std::string(other).copy(block, sizeof block - 1);
        EXPECT_FALSE(IsValid(colour_, block)) << other;
    }
}

TEST_F(EnumerationTest, NoByteBehindTheFirstDifferenceIsRead) {
    // Made with their exact size, so that a sanitizer sees every byte too many.
    const std::vector<char> differs{'G', 'r', 'a', 'y'};
    EXPECT_FALSE(IsValid(colour_, differs.data()));
}

TEST_F(EnumerationTest, ATextIsValidWhenItIsAnItemsNameOrValue) {
    OviEnumeration* unit = Load("Unit", "STRING", {{"Metre", "m"}, {"Foot", "ft"}});
    for (const char* text : {"Metre", "Foot", "m", "ft"})
        EXPECT_TRUE(IsValid(unit, &text)) << text;
    for (const char* text : {"metre", "M", "", static_cast<const char*>(nullptr)})
        EXPECT_FALSE(IsValid(unit, &text));
}

TEST_F(EnumerationTest, AnEightBitValueIsValidByItsCharacterToo) {
    OviEnumeration* letter = Load("Letter", "UINT8", {{"A", "1"}, {"Long", "76"}});
    const auto isValid = [&](unsigned char byte) {
        const unsigned char block[] = {byte, 0};
        return IsValid(letter, block);
    };
    EXPECT_TRUE(isValid('A'));
    EXPECT_TRUE(isValid(1));
    EXPECT_TRUE(isValid(76));
    EXPECT_FALSE(isValid('B'));
}

TEST_F(EnumerationTest, ItemsOfSeveralNumbersAreComparedAsFarAsAValueGoes) {
    OviEnumeration* direction = Load("Direction", "Vector", {{"Up", "9"}, {"Down", "-9"}},
                                     "<type name='Vector' type='INT32' dim='3'/>");
    const std::vector<int> nine{9}; // an enumeration's value is one element
    const std::vector<int> eight{8};
    EXPECT_TRUE(IsValid(direction, nine.data()));
    EXPECT_FALSE(IsValid(direction, eight.data()));
}

TEST_F(EnumerationTest, ItemsOfAnotherTypeThanTheBaseAreNotCompared) {
    OviEnumeration* letter = Load("Letter", "UINT8", {{"Alpha", "1"}});
    OviType_SetBaseType(letter, TypeNamed("INT64"));
    const long long one = 1;
    EXPECT_FALSE(IsValid(letter, &one));
    OviType_SetBaseType(letter, TypeNamed("STRING"));
    const char* text = "Alpha";
    EXPECT_TRUE(IsValid(letter, &text));
    text = "1";
    EXPECT_FALSE(IsValid(letter, &text));
}

TEST_F(EnumerationTest, WithoutABaseTypeNothingIsValidAndNothingCrashes) {
    OviType_SetBaseType(colour_, nullptr);
    int number = 1;
    EXPECT_FALSE(IsNumberValid(colour_, 1));
    EXPECT_EQ(OviType_NewValue(colour_, nullptr, 1), nullptr);
    EXPECT_EQ(OviType_GetValueSize(colour_, nullptr, 1), 0);
    EXPECT_EQ(OviType_CompareValues(colour_, &number, &number, 1), 0);
    EXPECT_EQ(OviType_GetValueFromString(colour_, "2", &number, 0), 0);
    EXPECT_EQ(OviType_WriteValueToBinary(colour_, &number, 1, &number, 4), 0);
}

// -- declarations ---------------------------------------------------------------------------------

TEST_F(EnumerationTest, TheDeclarationHoldsTheItemsInOrder) {
    OviNamedObject_SetComment(colour_, "of paint");
    EXPECT_EQ(DeclarationOf(colour_), "\n<!--of paint-->\n<enum name='Colour' type='INT32'>"
                                      "\n\t<!---->\n\t<item name='Blue' value='3'/>"
                                      "\n\t<item name='Green' value='2'/>"
                                      "\n\t<item name='Red' value='1'/>\n</enum>");
}

TEST_F(EnumerationTest, AnItemDeclaresItsNameAndValue) {
    EXPECT_EQ(DeclarationOf(OviEnumeration_GetItem(colour_, "Red")),
              "\n<item name='Red' value='1'/>");
    OviEnumeration* letter = Load("Letter", "UINT8", {{"A", "65"}});
    // As a number, so that reading gives the same value again.
    EXPECT_EQ(DeclarationOf(OviEnumeration_GetItemAt(letter, 0)), "\n<item name='A' value='65'/>");
}

} // namespace
