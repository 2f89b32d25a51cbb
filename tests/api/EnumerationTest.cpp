// Enumerations and their items, and how they are declared.

#include "api/EnumerationHost.h"

namespace {

class EnumerationTest : public EnumerationHost {};

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
