// Integers of 8 to 64 bits.

#include <climits>
#include <cstring>

#include "api/Host.h"
#include "api/Values.h"

namespace {

/// One integer type; `read` holds what a text becomes after 32-bit reading and conversion.
struct IntCase {
    const char* name;
    int width;
    bool isSigned;
};

const IntCase kIntCases[] = {{"INT8", 1, true},    {"UINT8", 1, false}, {"INT16", 2, true},
                             {"UINT16", 2, false}, {"INT32", 4, true},  {"UINT32", 4, false},
                             {"INT64", 8, true},   {"UINT64", 8, false}};

class IntTypeTest : public HostTest, public ::testing::WithParamInterface<IntCase> {
protected:
    void SetUp() override {
        HostTest::SetUp();
        type_ = TypeNamed(GetParam().name);
        ASSERT_NE(type_, nullptr);
    }

    size_t Width() const { return static_cast<size_t>(GetParam().width); }

    /// An element as the library keeps it, from a wider number.
    std::string Bytes(long long number) const {
        return {reinterpret_cast<const char*>(&number), Width()};
    }

    /// A block with these numbers, written by hand.
    std::string Array(std::initializer_list<long long> numbers) const {
        std::string array;
        for (const long long number : numbers)
            array += Bytes(number);
        return array;
    }

    bool IsValid(long long value, const long long* minimum, const long long* maximum) {
        OviAttributeProperty* property = OviAttributeProperty_New("number", 1);
        OviAttributeProperty_SetType(property, type_);
        if (minimum)
            OviAttributeProperty_SetMinValue(property, OviType_NewValue(type_, minimum, 1));
        if (maximum)
            OviAttributeProperty_SetMaxValue(property, OviType_NewValue(type_, maximum, 1));
        const bool valid = OviAttributeProperty_IsValueValid(property, &value);
        OviObject_Delete(property);
        return valid;
    }

    OviType* type_ = nullptr;
};

TEST_P(IntTypeTest, SizeIsDimensionTimesWidthWhateverTheCount) {
    for (const int count : {0, 1, 7, -1})
        EXPECT_EQ(OviType_GetValueSize(type_, nullptr, count), GetParam().width);
    int dummy[8] = {};
    EXPECT_EQ(OviType_GetValueSize(type_, dummy, 3), GetParam().width);
}

TEST_P(IntTypeTest, NewValuesRepeatTheFirstElement) {
    const std::string initial = Array({5, 6, 7});
    Block block(type_, initial.data(), 3);
    EXPECT_EQ(std::string(static_cast<char*>(block.Get()), 3 * Width()), Array({5, 5, 5}));
    Block zeroes(type_, nullptr, 3);
    EXPECT_EQ(std::string(static_cast<char*>(zeroes.Get()), 3 * Width()), Array({0, 0, 0}));
}

TEST_P(IntTypeTest, NoValueHasFewerThanOneElement) {
    EXPECT_EQ(OviType_NewValue(type_, nullptr, 0), nullptr);
    EXPECT_EQ(OviType_NewValue(type_, nullptr, -1), nullptr);
    OviType_DeleteValue(type_, nullptr, 1);
}

TEST_P(IntTypeTest, TextIsReadWithin32BitsAndConverted) {
    const std::vector<std::pair<const char*, long long>> readings{
        {"0", 0},
        {"65", 65},
        {"-1", -1},
        {" \t\n+12abc", 12},
        {"A", 0},
        {"", 0},
        {"- 5", 0},
        {"1.9", 1},
        {"0x10", 0},
        {"300", 300},
        {"2147483647", INT_MAX},
        {"-2147483648", INT_MIN},
        {"3000000000", INT_MAX},
        {"-3000000000", INT_MIN},
        {"99999999999999999999999", INT_MAX}};
    for (const auto& [text, number] : readings) {
        Block block(type_, nullptr, 1);
        EXPECT_EQ(block.Read(text), GetParam().width);
        EXPECT_EQ(std::string(static_cast<char*>(block.Get()), Width()), Bytes(number)) << text;
    }
}

TEST_P(IntTypeTest, OnlyTheNamedElementIsRead) {
    Block block(type_, nullptr, 3);
    block.Read("9", 1);
    EXPECT_EQ(std::string(static_cast<char*>(block.Get()), 3 * Width()), Array({0, 9, 0}));
}

TEST_P(IntTypeTest, TextIsDecimalButForEightBitsTheCharacter) {
    Block block(type_, nullptr, 2);
    block.Read("65");
    if (GetParam().width == 1) {
        EXPECT_EQ(block.Text(), "A");
        EXPECT_EQ(block.Text(1), std::string(1, '\0'));
        block.Read("A");
        EXPECT_EQ(block.Text(), std::string(1, '\0')); // reading wants a number
        return;
    }
    EXPECT_EQ(block.Text(), "65");
    EXPECT_EQ(block.Text(1), "0");
    block.Read("-1");
    const std::string largest[] = {"65535", "4294967295", "18446744073709551615"};
    const size_t place = Width() == 2 ? 0 : Width() == 4 ? 1 : 2;
    EXPECT_EQ(block.Text(), GetParam().isSigned ? "-1" : largest[place]);
}

TEST_P(IntTypeTest, ComparisonFollowsTheSignAndStopsAtTheFirstDifference) {
    const auto compare = [this](std::initializer_list<long long> a,
                                std::initializer_list<long long> b) {
        return OviType_CompareValues(type_, Array(a).data(), Array(b).data(),
                                     static_cast<int>(a.size()));
    };
    EXPECT_EQ(compare({1, 2, 3}, {1, 2, 3}), 0);
    EXPECT_EQ(compare({1, 2, 9}, {1, 3, 0}), -1);
    EXPECT_EQ(compare({2, 0}, {1, 9}), 1);
    EXPECT_EQ(compare({-1}, {1}), GetParam().isSigned ? -1 : 1);
    for (const int count : {0, -1})
        EXPECT_EQ(OviType_CompareValues(type_, Array({1}).data(), Array({2}).data(), count), 0);
}

TEST_P(IntTypeTest, BoundsAreInclusiveAndZeroIsNone) {
    const long long zero = 0;
    const long long two = 2;
    const long long ten = 10;
    EXPECT_TRUE(IsValid(2, &two, &ten));
    EXPECT_TRUE(IsValid(10, &two, &ten));
    EXPECT_FALSE(IsValid(1, &two, &ten));
    EXPECT_FALSE(IsValid(11, &two, &ten));
    EXPECT_FALSE(IsValid(11, &zero, &ten));
    EXPECT_TRUE(IsValid(11, &two, &zero));
    EXPECT_TRUE(IsValid(0, nullptr, nullptr));
    EXPECT_TRUE(IsValid(100, &two, nullptr));
    EXPECT_FALSE(IsValid(100, nullptr, &ten));
    // A minimum of zero is not enforced; unsigned types see a large number.
    EXPECT_EQ(IsValid(-5, &zero, &ten), GetParam().isSigned);
}

TEST_P(IntTypeTest, NullIsNeverValid) {
    OviAttributeProperty* property = OviAttributeProperty_New("number", 1);
    OviAttributeProperty_SetType(property, type_);
    EXPECT_FALSE(OviAttributeProperty_IsValueValid(property, nullptr));
    OviObject_Delete(property);
}

INSTANTIATE_TEST_SUITE_P(Widths, IntTypeTest, ::testing::ValuesIn(kIntCases),
                         [](const auto& test) { return std::string(test.param.name); });

} // namespace
