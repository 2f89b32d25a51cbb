// Types that borrow everything from their base type.

#include "api/Host.h"
#include "api/Values.h"

namespace {

class CustomTypeTest : public HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        type_ = OviCustomType_New("Custom", 3);
    }
    void TearDown() override {
        OviObject_Delete(type_);
        HostTest::TearDown();
    }

    /// Whether a property of the type takes the value.
    bool IsValid(const void* value, void* minimum = nullptr) {
        OviAttributeProperty* property = OviAttributeProperty_New("member", 1);
        auto* copy = static_cast<OviType*>(OviObject_Clone(type_)); // goes with the property
        OviAttributeProperty_SetType(property, copy);
        OviAttributeProperty_SetMinValue(property, minimum);
        const bool valid = OviAttributeProperty_IsValueValid(property, value);
        OviObject_Delete(property);
        return valid;
    }

    /// What a type without a base gives for every value operation.
    void ExpectNothing() {
        int number = 5;
        char buffer[16] = "untouched";
        EXPECT_EQ(OviType_GetValueSize(type_, &number, 3), 0);
        EXPECT_EQ(OviType_NewValue(type_, &number, 3), nullptr);
        OviType_DeleteValue(type_, &number, 1);
        const int other = 6;
        EXPECT_EQ(OviType_CompareValues(type_, &number, &other, 1), 0);
        EXPECT_TRUE(IsValid(&number));
        EXPECT_EQ(OviType_GetValueAsString(type_, &number, 0, buffer), 0);
        EXPECT_EQ(OviType_GetValueFromString(type_, "7", &number, 0), 0);
        EXPECT_EQ(OviType_WriteValueToBinary(type_, &number, 1, buffer, sizeof buffer), 0);
        EXPECT_EQ(number, 5);
        EXPECT_STREQ(buffer, "untouched");
    }

    OviCustomType* type_ = nullptr;
};

TEST_F(CustomTypeTest, WithoutABaseValuesHaveNoSizeAndAreAllValid) {
    ExpectNothing();
}

TEST_F(CustomTypeTest, WithABaseWithoutABaseNothingIsThereEither) {
    OviCustomType* base = OviCustomType_New("Base", 1);
    OviType_SetBaseType(type_, base);
    ExpectNothing();
    OviType_SetBaseType(type_, nullptr);
    OviObject_Delete(base);
}

TEST_F(CustomTypeTest, ACircleOfBasesIsNoBase) {
    OviCustomType* other = OviCustomType_New("Other", 1);
    OviType_SetBaseType(type_, other);
    OviType_SetBaseType(other, type_);
    ExpectNothing();
    OviObject_Delete(other);
    OviType_SetBaseType(type_, type_);
    ExpectNothing();
}

TEST_F(CustomTypeTest, ADeletedBaseStaysForItsUsers) {
    OviCustomType* base = OviCustomType_New("Base", 1);
    OviType_SetBaseType(base, TypeNamed("STRING"));
    OviType_SetBaseType(type_, base);
    OviAttributeProperty* property = OviAttributeProperty_New("member", 1);
    OviAttributeProperty_SetType(property, TypeNamed("UINT8"));
    const unsigned char initial = 7;
    OviAttributeProperty_SetDefaultValue(property,
                                         OviType_NewValue(TypeNamed("UINT8"), &initial, 1));
    void* value = OviType_NewValue(type_, nullptr, 3);
    OviObject_Delete(base);
    OviObject_Delete(TypeNamed("UINT8"));
    EXPECT_EQ(TypeNamed("UINT8"), nullptr);
    EXPECT_EQ(OviType_GetValueFromString(type_, "word", value, 0), 4);
    OviType_DeleteValue(type_, value, 3);
    EXPECT_STREQ(OviType_GetFullName(OviAttributeProperty_GetType(property)), "UINT8");
    OviObject_Delete(property);
}

TEST_F(CustomTypeTest, ValuesBehaveAsThoseOfTheBase) {
    OviType_SetBaseType(type_, TypeNamed("INT32"));
    // The base measures by its own dimension.
    EXPECT_EQ(OviType_GetValueSize(type_, nullptr, 3), 4);
    const int initial[] = {8, 9, 10};
    Block block(type_, initial, 3);
    EXPECT_EQ(block.At<int>(2), 8);
    EXPECT_EQ(block.Read("12", 1), 4);
    EXPECT_EQ(block.Text(1), "12");
    const int other[] = {8, 13, 8};
    EXPECT_EQ(OviType_CompareValues(type_, block.Get(), other, 3), -1);
    alignas(8) char packed[16];
    EXPECT_EQ(OviType_WriteValueToBinary(type_, block.Get(), 3, packed, sizeof packed), 12);
    EXPECT_EQ(std::string(packed, 12), std::string("\10\0\0\0\14\0\0\0\10\0\0\0", 12));
}

TEST_F(CustomTypeTest, ValuesBehaveAsThoseOfTheEndOfALongChain) {
    std::vector<OviCustomType*> chain;
    OviType* base = TypeNamed("STRING");
    for (int i = 0; i < 2000; ++i) {
        chain.push_back(OviCustomType_New("Link", 1));
        OviType_SetBaseType(chain.back(), base);
        base = chain.back();
    }
    OviType_SetBaseType(type_, base);
    {
        Block block(type_, nullptr, 3);
        block.Read("word", 2);
        EXPECT_EQ(block.Text(2), "word");
    }
    for (OviCustomType* link : chain) // each but the last is still in use
        OviObject_Delete(link);
    OviType_SetBaseType(type_, nullptr);
}

TEST_F(CustomTypeTest, ValidityIsJudgedByTheBase) {
    OviType_SetBaseType(type_, TypeNamed("INT32"));
    const int minimum = 3;
    const int large[] = {3, 4, 5};
    const int small[] = {3, 4, 2};
    EXPECT_TRUE(IsValid(large, OviType_NewValue(type_, &minimum, 3)));
    EXPECT_FALSE(IsValid(small, OviType_NewValue(type_, &minimum, 3)));
    EXPECT_FALSE(IsValid(nullptr));
}

TEST_F(CustomTypeTest, ACustomTypeOverAnEnumerationTakesItsItemsOnly) {
    const std::string path =
        WriteFile("colours.template", TemplateFile("<enum name=\"Colour\" type=\"INT32\">"
                                                   "<item name=\"Red\" value=\"1\"/></enum>"));
    ASSERT_TRUE(OviTemplateManager_LoadTemplateFile(path.c_str()));
    OviType_SetBaseType(type_, OviTemplateManager_GetEnumeration("Colour"));
    const int red[] = {1, 1, 1};
    const int blue[] = {2, 2, 2};
    EXPECT_TRUE(IsValid(red));
    EXPECT_FALSE(IsValid(blue));
    EXPECT_EQ(OviType_CompareValues(type_, red, blue, 3), 0); // as enumerations compare
    OviType_SetBaseType(type_, nullptr);
}

TEST_F(CustomTypeTest, ACopyHasTheSameBaseNameAndDimension) {
    OviType_SetBaseType(type_, TypeNamed("FLOAT"));
    OviType_SetAlignment(type_, 16);
    auto* copy = static_cast<OviCustomType*>(OviObject_Clone(type_));
    EXPECT_EQ(DeclarationOf(copy), "\n<type name='Custom' type='FLOAT' dim='3'/>");
    EXPECT_EQ(OviType_GetAlignment(copy), 16);
    OviObject_Delete(copy);
}

} // namespace
