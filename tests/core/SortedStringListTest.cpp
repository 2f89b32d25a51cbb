// Strings in byte order, each once.

#include <random>
#include <set>

#include <gtest/gtest.h>

#include "core/SortedStringList.h"

namespace {

using namespace Kor;

std::vector<std::string> All(const SortedStringList& list) {
    return {list.begin(), list.end()};
}

TEST(SortedStringList, KeepsByteOrderAndEachOnce) {
    SortedStringList list;
    EXPECT_EQ(list.Insert("b"), 0);
    EXPECT_EQ(list.Insert("a"), 0);
    EXPECT_EQ(list.Insert(""), 0);
    EXPECT_EQ(list.Insert("B"), 1);
    EXPECT_EQ(list.Insert("\xff"), 4);
    EXPECT_EQ(list.Insert("a"), ~2);
    EXPECT_EQ(All(list), (std::vector<std::string>{"", "B", "a", "b", "\xff"}));
    EXPECT_EQ(list.GetCount(), 5);
    EXPECT_EQ(list.GetAt(3), "b");
}

TEST(SortedStringList, SearchesAndRemovalsGiveTheIndexOrAComplement) {
    SortedStringList list;
    EXPECT_EQ(list.Find("a"), ~0);
    EXPECT_EQ(list.Remove("a"), ~0);
    for (const char* text : {"a", "c", "e"})
        list.Insert(text);
    EXPECT_EQ(list.Find("c"), 1);
    EXPECT_EQ(list.Find("d"), ~2);
    EXPECT_TRUE(list.Contains("e"));
    EXPECT_FALSE(list.Contains("E"));
    EXPECT_EQ(list.Remove("b"), ~1);
    EXPECT_EQ(list.Remove("c"), 1);
    EXPECT_EQ(All(list), (std::vector<std::string>{"a", "e"}));
}

TEST(SortedStringList, AgreesWithASet) {
    SortedStringList list;
    std::set<std::string> model;
    std::mt19937 random(3);
    for (int i = 0; i < 5000; ++i) {
        const std::string text = std::to_string(random() % 700);
        if (random() % 3 == 0)
            ASSERT_EQ(list.Remove(text) >= 0, model.erase(text) == 1);
        else
            ASSERT_EQ(list.Insert(text) >= 0, model.insert(text).second);
    }
    EXPECT_EQ(All(list), std::vector<std::string>(model.begin(), model.end()));
}

} // namespace
