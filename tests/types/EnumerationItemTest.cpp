// Items with values that hosts cannot make.

#include <gtest/gtest.h>

#include "types/CustomType.h"
#include "types/Enumeration.h"
#include "types/EnumerationItem.h"
#include "types/IntType.h"
#include "types/StringType.h"

namespace {

using namespace Kor;

/// The elements of an item's value.
std::vector<int> Elements(const EnumerationItem& item, size_t count) {
    const auto* first = static_cast<const int*>(item.GetValue());
    return {first, first + count};
}

TEST(EnumerationItem, TheTextFillsTheFirstElement) {
    IntType<int> three("Three", 3, 4);
    const EnumerationItem item("Up", &three, "9");
    EXPECT_EQ(Elements(item, 3), (std::vector<int>{9, 0, 0}));
    EXPECT_EQ(item.GetValueText(), "9");
    EXPECT_EQ(item.GetDimension(), 1);
    EXPECT_EQ(item.GetAlignment(), 1);
}

TEST(EnumerationItem, ACopyHasEveryElementAsItIs) {
    IntType<int> three("Three", 3, 4);
    const EnumerationItem item("Up", &three, "9");
    const std::unique_ptr<Object> copy = item.Clone();
    EXPECT_EQ(Elements(static_cast<EnumerationItem&>(*copy), 3), (std::vector<int>{9, 0, 0}));
}

TEST(EnumerationItem, ACopyOverACustomTypeHasEveryElementAsItIs) {
    IntType<int> three("Three", 3, 4);
    CustomType alias("Alias", 3);
    alias.SetBaseType(&three);
    const EnumerationItem item("Up", &alias, "9");
    const std::unique_ptr<Object> copy = item.Clone();
    EXPECT_EQ(Elements(static_cast<EnumerationItem&>(*copy), 3), (std::vector<int>{9, 0, 0}));
}

TEST(EnumerationItem, ANewValueIsMadeByTheRulesOfItsType) {
    IntType<int> three("Three", 3, 4);
    EnumerationItem item("Up", &three, "9");
    const int numbers[] = {1, 2, 3};
    item.SetValue(numbers); // integers repeat the first element
    EXPECT_EQ(Elements(item, 3), (std::vector<int>{1, 1, 1}));
    item.SetValue(item.GetValue());
    EXPECT_EQ(Elements(item, 3), (std::vector<int>{1, 1, 1}));
}

TEST(EnumerationItem, WithoutAValueTypeThereIsNoValue) {
    EnumerationItem item("Up", nullptr, "9");
    EXPECT_EQ(item.GetValue(), nullptr);
    EXPECT_EQ(item.GetValueText(), "");
    const int number = 5;
    item.SetValue(&number);
    EXPECT_EQ(item.GetValue(), nullptr);
    EXPECT_EQ(item.GetValueSize(&number, 1), 0);
    EXPECT_TRUE(item.IsValueValid(&number, nullptr, nullptr, 1));
    const std::unique_ptr<Object> copy = item.Clone();
    EXPECT_EQ(static_cast<EnumerationItem&>(*copy).GetValue(), nullptr);
}

TEST(EnumerationItem, AVariableLengthGivesNoValueAndNoMatch) {
    IntType<int> many("Many", 0, 4);
    Enumeration enumeration("Flags", &many);
    enumeration.AddItem(new EnumerationItem("First", &many, "1"));
    EXPECT_EQ(enumeration.GetItemAt(0)->GetValue(), nullptr);
    const int one[] = {1, 0};
    EXPECT_FALSE(enumeration.IsValueValid(one, nullptr, nullptr, 1));
}

TEST(Enumeration, TakesTheAlignmentOfItsBase) {
    StringType text("Text", 1, 4);
    EXPECT_EQ(Enumeration("Words", &text).GetAlignment(), 4);
    EXPECT_EQ(Enumeration("Words", &text).GetDimension(), 1);
    EXPECT_EQ(Enumeration("Words", nullptr).GetAlignment(), 1);
}

TEST(Enumeration, ItsItemsOutliveItOnceRemoved) {
    StringType text("Text", 1, 4);
    auto item = std::make_unique<EnumerationItem>("First", &text, "1");
    {
        Enumeration enumeration("Words", &text);
        enumeration.AddItem(item.get());
        EXPECT_EQ(item->GetEnumeration(), &enumeration);
        enumeration.RemoveItem(item.get());
    }
    EXPECT_EQ(item->GetEnumeration(), nullptr);
    EXPECT_TRUE(item->SetName("Second"));
}

} // namespace
