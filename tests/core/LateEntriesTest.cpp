#include "core/LateEntries.h"

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "core/Keyed.h"

namespace Kor {
namespace {

class LateEntriesTest : public testing::Test {
protected:
    void Add(const std::string& key) {
        objects.push_back(std::make_unique<Keyed>(key));
        entries.Add(objects.back().get());
    }

    std::vector<std::string> GetKeys() const {
        std::vector<std::string> keys;
        for (const Keyed* object : entries)
            keys.emplace_back(object->GetKey());
        return keys;
    }

    /// Adds the keys, sorts, and compares with the order of the texts themselves.
    void ExpectSorted(std::vector<std::string> keys) {
        for (const std::string& key : keys)
            Add(key);
        entries.Sort();
        std::sort(keys.begin(), keys.end());
        EXPECT_EQ(GetKeys(), keys);
    }

    std::vector<std::unique_ptr<Keyed>> objects;
    LateEntries<Keyed> entries;
};

TEST_F(LateEntriesTest, SortsKeysThatBeginAlike) {
    ExpectSorted({"prop_10", "prop_2", "prop_1", "prop_", "prop_99999999", "prop_999999990"});
}

TEST_F(LateEntriesTest, SortsKeysThatDifferBehindTheFirstEightCharacters) {
    ExpectSorted({"x_abcdefghij2", "x_abcdefghij1", "y", "x_abcdefgh", "x_abcdefghi"});
}

TEST_F(LateEntriesTest, SortsByTheValuesOfBytesWithoutSign) {
    ExpectSorted({"\xC3\xA4", "z", "a", "\x7F", "\xE6\xBC\xA2", "\xE6z"});
}

TEST_F(LateEntriesTest, SortsAShorterKeyBeforeALongerOne) {
    ExpectSorted({"aa", "a", "aaa", ""});
}

TEST_F(LateEntriesTest, SortsManyKeysInNoOrder) {
    std::vector<std::string> keys;
    for (int i = 0; i < 20000; ++i)
        keys.push_back("asset_" + std::to_string(i));
    std::shuffle(keys.begin(), keys.end(), std::mt19937(5));
    ExpectSorted(keys);
}

TEST_F(LateEntriesTest, SortsAgainAfterMoreWereAdded) {
    ExpectSorted({"c", "a"});
    Add("b");
    entries.Sort();
    EXPECT_EQ(GetKeys(), (std::vector<std::string>{"a", "b", "c"}));
}

TEST_F(LateEntriesTest, SaysWhichPlaceAnObjectHadThatIsTakenOut) {
    Add("c");
    Add("a");
    Add("b");
    EXPECT_EQ(entries.Remove(objects[2].get()), 1);
    EXPECT_EQ(entries.Remove(objects[2].get()), -1);
    EXPECT_EQ(GetKeys(), (std::vector<std::string>{"a", "c"}));
}

TEST_F(LateEntriesTest, CountsThoseBelowAKey) {
    EXPECT_EQ(entries.CountBelow("a"), 0);
    ExpectSorted({"b", "d", "f"});
    EXPECT_EQ(entries.CountBelow("b"), 0);
    EXPECT_EQ(entries.CountBelow("e"), 2);
    EXPECT_EQ(entries.CountBelow("g"), 3);
}

} // namespace
} // namespace Kor
