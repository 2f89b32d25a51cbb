// What types do for the readers, writers and registries.

#include <set>

#include <gtest/gtest.h>

#include "types/CustomType.h"
#include "types/FloatType.h"
#include "types/IntType.h"
#include "types/StringType.h"

namespace {

using namespace Kor;

TEST(Type, TextsAreAppendedToTheOutput) {
    const StringType type("STRING", 1, 4);
    const char* word = "word";
    std::string text = "before ";
    EXPECT_EQ(type.GetValueAsString(&word, text, 0), 11);
    EXPECT_EQ(text, "before word");
    const IntType<int> number("INT32", 1, 4);
    const int five = 5;
    EXPECT_EQ(number.GetValueAsString(&five, text, 0), 1);
    EXPECT_EQ(text, "5");
}

TEST(Type, SmallIntegersAreReadableAsNumbers) {
    const IntType<std::uint8_t> type("UINT8", 1, 1);
    const std::uint8_t bytes[] = {65, 200};
    EXPECT_EQ(type.GetReadableText(bytes, 1), "200");
    CustomType alias("Alias", 1);
    alias.SetBaseType(const_cast<IntType<std::uint8_t>*>(&type));
    EXPECT_EQ(alias.GetReadableText(bytes, 0), "65");
    alias.SetBaseType(nullptr);
}

TEST(Type, PackagesAreThoseOfTheTypeAndItsBases) {
    CustomType first("a.b.First", 1);
    CustomType second("c.Second", 1);
    CustomType third("Third", 1);
    first.SetBaseType(&second);
    second.SetBaseType(&third);
    std::set<std::string> packages;
    first.CollectPackages(packages);
    EXPECT_EQ(packages, (std::set<std::string>{"", "a.b", "c"}));
    third.SetBaseType(&first); // by mistake a circle
    packages.clear();
    first.CollectPackages(packages);
    EXPECT_EQ(packages, (std::set<std::string>{"", "a.b", "c"}));
    third.SetBaseType(nullptr);
    first.SetBaseType(nullptr);
    second.SetBaseType(nullptr);
}

TEST(Type, RefersToItselfAndItsBaseFromOtherFiles) {
    CustomType base("Base", 1);
    CustomType type("Type", 1);
    const CustomType other("Other", 1);
    type.SetBaseType(&base);
    type.SetSearchPath("C:\\types"); // the file is C:\types\Type.template
    EXPECT_TRUE(type.RefersTo(&type, nullptr));
    EXPECT_TRUE(type.RefersTo(&base, nullptr));
    EXPECT_FALSE(type.RefersTo(&other, nullptr));
    EXPECT_FALSE(type.RefersTo(nullptr, nullptr));
    EXPECT_TRUE(type.RefersTo(&base, "C:\\types\\Else.template"));
    EXPECT_FALSE(type.RefersTo(&base, "c:\\TYPES\\type.TEMPLATE"));
    EXPECT_FALSE(type.RefersTo(&other, "C:\\types\\Else.template"));
}

TEST(Type, AValueOfTheBaseIsCopiedWithAllElements) {
    const IntType<int> type("INT32", 3, 4);
    const int numbers[] = {1, 2, 3};
    auto* copy = static_cast<int*>(type.CopyValue(numbers, 3));
    EXPECT_EQ(std::vector<int>(copy, copy + 3), (std::vector<int>{1, 2, 3}));
    type.DeleteValue(copy, 3);
    EXPECT_EQ(type.CopyValue(nullptr, 3), nullptr);
    EXPECT_EQ(type.CopyValue(numbers, 0), nullptr);
}

TEST(Type, SizesFollowTheDimensionForIntegersOnly) {
    const IntType<std::int16_t> integers("Shorts", 5, 2);
    EXPECT_EQ(integers.GetValueSize(nullptr, 1), 10);
    const FloatType<float> floats("Floats", 5, 4);
    EXPECT_EQ(floats.GetValueSize(nullptr, 1), 4);
    EXPECT_EQ(IntType<int>("None", -3, 4).GetValueSize(nullptr, 1), 0);
    EXPECT_EQ(IntType<std::int64_t>("Huge", 2000000000, 8).GetValueSize(nullptr, 1), 2147483647);
}

} // namespace
