#include "core/KeyIndex.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "core/ObjectRegistry.h"

namespace {

struct Named {
    std::string key;
    std::string_view GetKey() const { return key; }
};

using Index = Kor::KeyIndex<Named>;

std::vector<std::unique_ptr<Named>> MakeMany(int count) {
    std::vector<std::unique_ptr<Named>> all;
    for (int i = 0; i < count; ++i)
        all.push_back(std::make_unique<Named>(Named{"object." + std::to_string(i)}));
    return all;
}

TEST(KeyIndex, AFewObjectsDoNotKeepTheSlotsOfMany) {
    const auto all = MakeMany(100000);
    Index index;
    for (const auto& object : all)
        index.Add(object.get());
    EXPECT_GT(index.GetSlotCount(), 200000u);
    for (size_t i = 0; i < all.size(); ++i) {
        if (i % 10000 != 0)
            index.Remove(all[i].get());
    }
    EXPECT_LT(index.GetSlotCount(), 5000u);
    for (size_t i = 0; i < all.size(); ++i)
        ASSERT_EQ(index.Find(all[i]->key), i % 10000 == 0 ? all[i].get() : nullptr);
    for (const auto& object : all) { // and room for many again
        if (!index.Find(object->key))
            index.Add(object.get());
    }
    EXPECT_EQ(index.Find("object.99999"), all.back().get());
}

TEST(KeyIndex, FindsWhatWasAddedAndNothingElse) {
    const auto all = MakeMany(5000);
    Index index;
    EXPECT_EQ(index.Find("object.1"), nullptr);
    for (const auto& object : all)
        index.Add(object.get());
    EXPECT_EQ(index.GetCount(), 5000);
    for (const auto& object : all)
        ASSERT_EQ(index.Find(object->key), object.get());
    EXPECT_EQ(index.Find("object.5000"), nullptr);
    EXPECT_EQ(index.Find(""), nullptr);
    EXPECT_FALSE(index.IsAmbiguous());
}

TEST(KeyIndex, KeepsFindingTheRestWhileOthersGo) {
    const auto all = MakeMany(3000);
    Index index;
    for (const auto& object : all)
        index.Add(object.get());
    std::vector<size_t> order(all.size());
    for (size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    std::shuffle(order.begin(), order.end(), std::mt19937(7));
    for (size_t gone = 0; gone < order.size(); ++gone) {
        index.Remove(all[order[gone]].get());
        EXPECT_EQ(index.Find(all[order[gone]]->key), nullptr);
        if (gone % 100 != 0)
            continue;
        for (size_t left = gone + 1; left < order.size(); ++left)
            ASSERT_EQ(index.Find(all[order[left]]->key), all[order[left]].get());
    }
    EXPECT_TRUE(index.IsEmpty());
}

TEST(KeyIndex, KnowsThatAKeyIsShared) {
    Named first{"same"};
    Named second{"same"};
    Index index;
    index.Add(&first);
    EXPECT_FALSE(index.IsAmbiguous());
    index.Add(&second);
    EXPECT_TRUE(index.IsAmbiguous());
    index.Remove(&first);
    EXPECT_EQ(index.Find("same"), &second);
    index.Remove(&second);
    EXPECT_FALSE(index.IsAmbiguous()); // nothing is left
}

TEST(KeyIndex, TakesOutWhatChangedItsKey) {
    const auto all = MakeMany(10);
    Index index;
    for (const auto& object : all)
        index.Add(object.get());
    all[3]->key = "another";
    index.Remove(all[3].get());
    EXPECT_EQ(index.GetCount(), 9);
    EXPECT_EQ(index.Find("another"), nullptr);
    Named stranger{"object.3"};
    index.Remove(&stranger); // was never there
    EXPECT_EQ(index.GetCount(), 9);
}

TEST(KeyIndex, KeysOfEveryLengthAreTold) {
    std::vector<std::unique_ptr<Named>> all;
    for (size_t length = 0; length < 40; ++length) {
        for (const char last : {'a', 'b'})
            all.push_back(std::make_unique<Named>(
                Named{length == 0 ? std::string() : std::string(length - 1, 'x') + last}));
    }
    std::set<std::uint64_t> hashes;
    for (const auto& object : all)
        hashes.insert(Kor::HashKey(object->key));
    EXPECT_EQ(hashes.size(), all.size() - 1); // the empty key is there twice
}

/// Names that count up must not gather in one part of a table.
TEST(KeyIndex, CountedNamesSpreadOverTheLowBits) {
    constexpr size_t kBuckets = 4096;
    for (const int digits : {1, 3, 6, 9, 20}) {
        std::vector<int> hits(kBuckets);
        for (int i = 0; i < 4096; ++i) {
            std::string number = std::to_string(i);
            number.insert(0, static_cast<size_t>(digits), '0');
            ++hits[Kor::HashKey("prop_" + number) % kBuckets];
        }
        EXPECT_LT(*std::max_element(hits.begin(), hits.end()), 10) << digits;
    }
}

/// The registry answers the same with and without its index, through every kind of change.
TEST(ObjectRegistryIndex, GivesTheFirstOfItsKeyThroughAllChanges) {
    auto all = MakeMany(2000);
    std::mt19937 numbers(11);
    std::shuffle(all.begin(), all.end(), numbers);
    Kor::ObjectRegistry<Named> registry;
    for (const auto& object : all) {
        EXPECT_EQ(registry.Get(object->key), nullptr);
        registry.Insert(object.get());
        ASSERT_EQ(registry.Get(object->key), object.get());
    }
    Named other{all[5]->key};
    EXPECT_LT(registry.Insert(&other), 0); // takes the place of the one before
    EXPECT_EQ(registry.Get(other.key), &other);
    ASSERT_TRUE(registry.RemoveExactly(&other));
    EXPECT_EQ(registry.Get(other.key), nullptr);
    registry.Insert(all[5].get());

    registry.RemoveExactly(all[7].get());
    all[7]->key = all[8]->key;
    registry.Place(all[7].get());
    EXPECT_EQ(registry.Get(all[8]->key), all[8].get()); // the first of two
    registry.Remove(all[8].get());
    EXPECT_EQ(registry.Get(all[8]->key), all[7].get());
    while (registry.TakeLast()) {
    }
    EXPECT_EQ(registry.Get(all[0]->key), nullptr);
    registry.Insert(all[0].get());
    EXPECT_EQ(registry.Get(all[0]->key), all[0].get());
}

} // namespace
