// Texts: "STRING", and "VOID" and "REFERENCE", which differ only in name.

#include <array>

#include "api/Host.h"
#include "api/Values.h"

namespace {

class StringTypeTest : public HostTest, public ::testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        HostTest::SetUp();
        type_ = TypeNamed(GetParam());
        ASSERT_NE(type_, nullptr);
    }

    int Compare(const char* a, const char* b) { return OviType_CompareValues(type_, &a, &b, 1); }

    /// Whether a property with these bounds (null blocks for "-") takes the text.
    bool IsValid(const char* value, const char* minimum, const char* maximum) {
        OviAttributeProperty* property = OviAttributeProperty_New("text", 1);
        OviAttributeProperty_SetType(property, type_);
        OviAttributeProperty_SetMinValue(property, Bound(minimum));
        OviAttributeProperty_SetMaxValue(property, Bound(maximum));
        const bool valid = OviAttributeProperty_IsValueValid(property, &value);
        OviObject_Delete(property);
        return valid;
    }

    void* Bound(const char* text) {
        const bool absent = text && std::string(text) == "-";
        return absent ? nullptr : OviType_NewValue(type_, &text, 1);
    }

    OviType* type_ = nullptr;
};

TEST_P(StringTypeTest, SizeIsTheLengthsAndFourBytesEach) {
    const std::array<const char*, 3> texts{"hello", nullptr, "x"};
    EXPECT_EQ(OviType_GetValueSize(type_, texts.data(), 3), 5 + 4 + 4 + 1 + 4);
    EXPECT_EQ(OviType_GetValueSize(type_, texts.data(), 1), 9);
    EXPECT_EQ(OviType_GetValueSize(type_, texts.data(), 0), 0);
    EXPECT_EQ(OviType_GetValueSize(type_, nullptr, 2), 8);
    EXPECT_EQ(OviType_GetValueSize(type_, nullptr, -2), 0);
    EXPECT_EQ(OviType_GetValueSize(type_, nullptr, 2000000000), 2147483647);
}

TEST_P(StringTypeTest, NewValuesOwnCopiesOfTheTexts) {
    std::string first = "first";
    const std::array<const char*, 3> initial{first.c_str(), nullptr, ""};
    Block block(type_, initial.data(), 3);
    first = "other";
    EXPECT_STREQ(block.At<char*>(0), "first");
    EXPECT_EQ(block.At<char*>(1), nullptr);
    EXPECT_STREQ(block.At<char*>(2), "");
    Block nothing(type_, nullptr, 2);
    EXPECT_EQ(nothing.At<char*>(0), nullptr);
    EXPECT_EQ(nothing.At<char*>(1), nullptr);
    EXPECT_EQ(OviType_NewValue(type_, initial.data(), 0), nullptr);
}

TEST_P(StringTypeTest, ReadingReplacesTheTextAndGivesItsLength) {
    Block block(type_, nullptr, 2);
    EXPECT_EQ(block.Read("longer than before", 1), 18);
    EXPECT_EQ(block.Read("word", 1), 4);
    EXPECT_STREQ(block.At<char*>(1), "word");
    EXPECT_EQ(block.At<char*>(0), nullptr);
    EXPECT_EQ(block.Read("", 1), 0);
    EXPECT_EQ(block.At<char*>(1), nullptr); // the empty text is stored as null
    EXPECT_EQ(block.Read(nullptr, 1), 0);
    EXPECT_EQ(block.At<char*>(1), nullptr);
}

TEST_P(StringTypeTest, AnElementMayBeReadFromItself) {
    Block block(type_, nullptr, 1);
    block.Read("itself");
    EXPECT_EQ(block.Read(block.At<char*>(0)), 6);
    EXPECT_EQ(block.Read(block.At<char*>(0) + 2), 4);
    EXPECT_EQ(block.Text(), "self");
}

TEST_P(StringTypeTest, TheTextIsTheElementAndNullReadsAsEmpty) {
    Block block(type_, nullptr, 2);
    block.Read("a text", 1);
    EXPECT_EQ(block.Text(1), "a text");
    EXPECT_EQ(block.Text(0), "");
}

TEST_P(StringTypeTest, ComparisonIsByUnsignedBytesWithNullFirst) {
    EXPECT_EQ(Compare("a", "b"), -1);
    EXPECT_EQ(Compare("b", "a"), 1);
    EXPECT_EQ(Compare("a", "a"), 0);
    EXPECT_EQ(Compare("a", "aa"), -1);
    EXPECT_EQ(Compare("Z", "a"), -1);
    EXPECT_EQ(Compare("\xff", "a"), 1);
    EXPECT_EQ(Compare(nullptr, ""), -1);
    EXPECT_EQ(Compare("", nullptr), 1);
    EXPECT_EQ(Compare(nullptr, nullptr), 0);
    const std::array<const char*, 2> a{"same", "a"};
    const std::array<const char*, 2> b{"same", "b"};
    EXPECT_EQ(OviType_CompareValues(type_, a.data(), b.data(), 2), -1);
    EXPECT_EQ(OviType_CompareValues(type_, a.data(), b.data(), 1), 0);
    EXPECT_EQ(OviType_CompareValues(type_, a.data(), b.data(), 0), 0);
}

TEST_P(StringTypeTest, TheMinimumIsInclusiveAndTheMaximumExclusive) {
    EXPECT_TRUE(IsValid("b", "b", "d"));
    EXPECT_TRUE(IsValid("c", "b", "d"));
    EXPECT_FALSE(IsValid("d", "b", "d"));
    EXPECT_FALSE(IsValid("a", "b", "d"));
    EXPECT_FALSE(IsValid("e", "b", "d"));
}

TEST_P(StringTypeTest, AbsentBoundsAreNone) {
    for (const char* none : {"-", static_cast<const char*>(nullptr)}) {
        EXPECT_TRUE(IsValid("e", "b", none));
        EXPECT_FALSE(IsValid("a", "b", none));
        EXPECT_TRUE(IsValid("a", none, "d"));
        EXPECT_FALSE(IsValid("d", none, "d"));
        EXPECT_TRUE(IsValid("a", none, none));
    }
}

TEST_P(StringTypeTest, NullAndEmptyTextsAreInvalid) {
    EXPECT_FALSE(IsValid(nullptr, "-", "-"));
    EXPECT_FALSE(IsValid("", "-", "-"));
    OviAttributeProperty* property = OviAttributeProperty_New("text", 1);
    OviAttributeProperty_SetType(property, type_);
    EXPECT_FALSE(OviAttributeProperty_IsValueValid(property, nullptr));
    OviObject_Delete(property);
}

INSTANTIATE_TEST_SUITE_P(Names, StringTypeTest, ::testing::Values("STRING", "VOID", "REFERENCE"),
                         [](const auto& test) { return std::string(test.param); });

} // namespace
