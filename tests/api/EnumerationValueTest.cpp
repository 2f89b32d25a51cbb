// Values of enumerations: which are valid, and how they compare.

#include "api/EnumerationHost.h"

namespace {

class EnumerationValueTest : public EnumerationHost {};

TEST_F(EnumerationValueTest, ValuesAreThoseOfTheBaseType) {
    EXPECT_EQ(OviType_GetBaseType(colour_), TypeNamed("INT32"));
    EXPECT_EQ(OviType_GetAlignment(colour_), 4);
    Block block(colour_, nullptr, 2);
    EXPECT_EQ(block.Read("3", 1), 4);
    EXPECT_EQ(block.Text(1), "3");
    EXPECT_EQ(OviType_GetValueSize(colour_, nullptr, 2), 4);
    alignas(4) char packed[8];
    EXPECT_EQ(OviType_WriteValueToBinary(colour_, block.Get(), 2, packed, 8), 8);
}

TEST_F(EnumerationValueTest, AnyTwoValuesCompareEqual) {
    const int one = 1;
    const int two = 2;
    EXPECT_EQ(OviType_CompareValues(colour_, &one, &two, 1), 0);
    EXPECT_EQ(OviType_CompareValues(colour_, &two, &one, 1), 0);
    EXPECT_EQ(OviType_CompareValues(colour_, &one, nullptr, 1), 0);
}

TEST_F(EnumerationValueTest, ANumberIsValidWhenItIsAnItemsValue) {
    for (const int number : {1, 2, 3})
        EXPECT_TRUE(IsNumberValid(colour_, number));
    for (const int number : {0, 4, -1, 256 + 1})
        EXPECT_FALSE(IsNumberValid(colour_, number));
    EXPECT_FALSE(IsValid(colour_, nullptr));
}

TEST_F(EnumerationValueTest, ABlockIsValidWhenItIsAnItemsName) {
    EXPECT_TRUE(IsValid(colour_, "Green"));
    for (const char* other : {"Gree", "Greens", "green", "Gray"}) {
        alignas(8) char block[8] = {};
        std::string(other).copy(block, sizeof block - 1);
        EXPECT_FALSE(IsValid(colour_, block)) << other;
    }
}

TEST_F(EnumerationValueTest, NoByteBehindTheFirstDifferenceIsRead) {
    // Made with their exact size, so that a sanitizer sees every byte too many.
    const std::vector<char> differs{'G', 'r', 'a', 'y'};
    EXPECT_FALSE(IsValid(colour_, differs.data()));
}

TEST_F(EnumerationValueTest, ASmallNumberIsNotReadOnAsAName) {
    OviEnumeration* letter = Load("Letter", "UINT8", {{"Alpha", "1"}, {"A", "2"}});
    const std::vector<char> alpha{'A'}; // of exactly its size, as above
    EXPECT_TRUE(IsValid(letter, alpha.data())) << "by its character";
    OviEnumeration* word = Load("Word", "INT16", {{"Go", "5"}, {"Gone", "6"}});
    const std::vector<char> gone{'G', 'o'};
    EXPECT_FALSE(IsValid(word, gone.data()));
    const std::vector<char> other{'A', 'l'};
    OviEnumeration* truth = Load("Truth", "BOOL", {{"Alpha", "1"}});
    EXPECT_TRUE(IsValid(truth, other.data())) << "the first byte is a truth value";
}

TEST_F(EnumerationValueTest, ATextIsValidWhenItIsAnItemsNameOrValue) {
    OviEnumeration* unit = Load("Unit", "STRING", {{"Metre", "m"}, {"Foot", "ft"}});
    for (const char* text : {"Metre", "Foot", "m", "ft"})
        EXPECT_TRUE(IsValid(unit, &text)) << text;
    for (const char* text : {"metre", "M", "", static_cast<const char*>(nullptr)})
        EXPECT_FALSE(IsValid(unit, &text));
}

TEST_F(EnumerationValueTest, AnEightBitValueIsValidByItsCharacterToo) {
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

TEST_F(EnumerationValueTest, ItemsOfSeveralNumbersAreComparedAsFarAsAValueGoes) {
    OviEnumeration* direction = Load("Direction", "Vector", {{"Up", "9"}, {"Down", "-9"}},
                                     "<type name='Vector' type='INT32' dim='3'/>");
    const std::vector<int> nine{9}; // an enumeration's value is one element
    const std::vector<int> eight{8};
    EXPECT_TRUE(IsValid(direction, nine.data()));
    EXPECT_FALSE(IsValid(direction, eight.data()));
}

TEST_F(EnumerationValueTest, ItemsOfAnotherTypeThanTheBaseAreNotCompared) {
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

TEST_F(EnumerationValueTest, WithoutABaseTypeNothingIsValidAndNothingCrashes) {
    OviType_SetBaseType(colour_, nullptr);
    int number = 1;
    EXPECT_FALSE(IsNumberValid(colour_, 1));
    EXPECT_EQ(OviType_NewValue(colour_, nullptr, 1), nullptr);
    EXPECT_EQ(OviType_GetValueSize(colour_, nullptr, 1), 0);
    EXPECT_EQ(OviType_CompareValues(colour_, &number, &number, 1), 0);
    EXPECT_EQ(OviType_GetValueFromString(colour_, "2", &number, 0), 0);
    EXPECT_EQ(OviType_WriteValueToBinary(colour_, &number, 1, &number, 4), 0);
}

} // namespace
