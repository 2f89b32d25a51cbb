// Truth values.

#include "api/Host.h"
#include "api/Values.h"

namespace {

class BoolTypeTest : public HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        type_ = TypeNamed("BOOL");
    }

    OviType* type_ = nullptr;
};

TEST_F(BoolTypeTest, SizeIsTheCount) {
    EXPECT_EQ(OviType_GetValueSize(type_, nullptr, 1), 1);
    EXPECT_EQ(OviType_GetValueSize(type_, nullptr, 5), 5);
    EXPECT_EQ(OviType_GetValueSize(type_, nullptr, 0), 0);
    EXPECT_EQ(OviType_GetValueSize(type_, nullptr, -1), 0);
}

TEST_F(BoolTypeTest, NewValuesRepeatTheFirstElement) {
    const unsigned char initial[] = {1, 0, 0};
    Block block(type_, initial, 3);
    Block zeroes(type_, nullptr, 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(block.At<unsigned char>(i), 1);
        EXPECT_EQ(zeroes.At<unsigned char>(i), 0);
    }
    EXPECT_EQ(OviType_NewValue(type_, initial, 0), nullptr);
}

TEST_F(BoolTypeTest, OnlyZeroAndFalseReadAsFalse) {
    Block block(type_, nullptr, 1);
    for (const char* text : {"0", "false", "FALSE", "False", "fAlSe"}) {
        block.At<unsigned char>(0) = 1;
        EXPECT_EQ(block.Read(text), 1);
        EXPECT_EQ(block.At<unsigned char>(0), 0) << text;
    }
    for (const char* text : {"1", "true", "no", "off", "", "00", "0 ", " false", "falsely", "f"}) {
        block.At<unsigned char>(0) = 0;
        block.Read(text);
        EXPECT_EQ(block.At<unsigned char>(0), 1) << text;
    }
}

TEST_F(BoolTypeTest, TextIsTrueOrFalse) {
    const unsigned char values[] = {0, 1, 255};
    char buffer[8];
    EXPECT_EQ(OviType_GetValueAsString(type_, values, 0, buffer), 5);
    EXPECT_EQ(std::string(buffer, 5), "false");
    for (const int index : {1, 2}) {
        EXPECT_EQ(OviType_GetValueAsString(type_, values, index, buffer), 4);
        EXPECT_EQ(std::string(buffer, 4), "true");
    }
}

TEST_F(BoolTypeTest, TheCopiedTextHasNoNul) {
    const unsigned char value = 1;
    char buffer[] = "########";
    OviType_GetValueAsString(type_, &value, 0, buffer);
    EXPECT_STREQ(buffer, "true####");
}

TEST_F(BoolTypeTest, FalseComesBeforeTrueWhateverItsByte) {
    const unsigned char a[] = {0, 2};
    const unsigned char b[] = {0, 255};
    EXPECT_EQ(OviType_CompareValues(type_, a, b, 2), 0);
    EXPECT_EQ(OviType_CompareValues(type_, a, b + 1, 1), -1);
    EXPECT_EQ(OviType_CompareValues(type_, b + 1, a, 1), 1);
}

TEST_F(BoolTypeTest, EveryValueIsValidWhateverTheBounds) {
    OviAttributeProperty* property = OviAttributeProperty_New("flag", 1);
    OviAttributeProperty_SetType(property, type_);
    const unsigned char one = 1;
    OviAttributeProperty_SetMinValue(property, OviType_NewValue(type_, &one, 1));
    const unsigned char zero = 0;
    EXPECT_TRUE(OviAttributeProperty_IsValueValid(property, &zero));
    EXPECT_TRUE(OviAttributeProperty_IsValueValid(property, &one));
    EXPECT_FALSE(OviAttributeProperty_IsValueValid(property, nullptr));
    OviObject_Delete(property);
}

} // namespace
