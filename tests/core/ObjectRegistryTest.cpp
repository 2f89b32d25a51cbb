// The registry for many objects, compared with a plain sorted vector over random operations.

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "core/Keyed.h"
#include "core/ObjectRegistry.h"

namespace {

using namespace Kor;

/// The same operations on one vector, as plainly as can be.
class Model {
public:
    int Find(std::string_view key) const {
        const int at = LowerBound(key);
        return at < Count() && entries_[static_cast<size_t>(at)]->GetKey() == key ? at : ~at;
    }
    int Insert(Keyed* object, Keyed** replaced) {
        const auto own = std::find(entries_.begin(), entries_.end(), object);
        const int found = own != entries_.end() ? static_cast<int>(own - entries_.begin())
                                                : Find(object->GetKey());
        *replaced = found >= 0 ? entries_[static_cast<size_t>(found)] : nullptr;
        if (found >= 0)
            entries_[static_cast<size_t>(found)] = object;
        else
            entries_.insert(entries_.begin() + ~found, object);
        return ~found;
    }
    void Place(Keyed* object) {
        int at = LowerBound(object->GetKey());
        while (at < Count() && entries_[static_cast<size_t>(at)]->GetKey() == object->GetKey())
            ++at;
        entries_.insert(entries_.begin() + at, object);
    }
    int Remove(const Keyed* object) {
        const auto exact = std::find(entries_.begin(), entries_.end(), object);
        const int at = exact != entries_.end() ? static_cast<int>(exact - entries_.begin())
                                               : Find(object->GetKey());
        if (at >= 0)
            entries_.erase(entries_.begin() + at);
        return at;
    }
    int Count() const { return static_cast<int>(entries_.size()); }
    bool Contains(const Keyed* object) const {
        return std::find(entries_.begin(), entries_.end(), object) != entries_.end();
    }
    const std::vector<Keyed*>& Entries() const { return entries_; }

private:
    int LowerBound(std::string_view key) const {
        const auto at = std::lower_bound(
            entries_.begin(), entries_.end(), key,
            [](const Keyed* object, std::string_view k) { return object->GetKey() < k; });
        return static_cast<int>(at - entries_.begin());
    }

    std::vector<Keyed*> entries_;
};

/// A registry and its model, which do everything together.
class Pair {
public:
    explicit Pair(unsigned seed, int keys) : random_(seed), keys_(keys) {}

    void Add(int key) { Insert(New(key)); }
    void Insert(Keyed* object) {
        Keyed* replaced = nullptr;
        Keyed* expected = nullptr;
        const int result = registry_.Insert(object, &replaced);
        ASSERT_EQ(result, model_.Insert(object, &expected));
        ASSERT_EQ(replaced, expected);
    }
    void Place(int key) {
        Keyed* object = New(key);
        registry_.Place(object);
        model_.Place(object);
    }
    void AddLate(int key) {
        Keyed* replaced = nullptr;
        Keyed* object = New(key);
        if (model_.Find(object->GetKey()) >= 0)
            return;
        registry_.InsertLate(object);
        model_.Insert(object, &replaced);
        ASSERT_EQ(registry_.GetCount(), model_.Count());
        ASSERT_EQ(registry_.Get(object->GetKey()), object);
    }
    void Remove(const Keyed* object) { ASSERT_EQ(registry_.Remove(object), model_.Remove(object)); }
    void RemoveExactly(const Keyed* object) {
        const bool there = model_.Contains(object);
        if (there)
            model_.Remove(object);
        ASSERT_EQ(registry_.RemoveExactly(object), there);
    }
    void TakeLast() {
        Keyed* expected = model_.Count() == 0 ? nullptr : model_.Entries().back();
        ASSERT_EQ(registry_.TakeLast(), expected);
        if (expected)
            model_.Remove(expected);
    }

    void StepRandomly() {
        Keyed* known = objects_.empty() ? nullptr : objects_[Below(objects_.size())].get();
        switch (Below(12)) {
        case 0:
            return Place(static_cast<int>(Below(static_cast<size_t>(keys_))));
        case 1:
            return known ? Remove(known) : void();
        case 2:
            return known ? RemoveExactly(known) : void();
        case 3:
            return known ? Insert(known) : void();
        case 4:
            return Below(10) == 0 ? TakeLast() : void();
        case 5:
        case 6:
        case 7:
            return AddLate(static_cast<int>(Below(static_cast<size_t>(keys_))));
        default:
            return Add(static_cast<int>(Below(static_cast<size_t>(keys_))));
        }
    }

    /// Compares everything that can be asked.
    void Compare() {
        ASSERT_EQ(registry_.GetCount(), model_.Count());
        ASSERT_EQ(registry_.IsEmpty(), model_.Count() == 0);
        ASSERT_EQ(registry_.Snapshot(), model_.Entries());
        ASSERT_EQ(registry_.GetAt(-1), nullptr);
        ASSERT_EQ(registry_.GetAt(model_.Count()), nullptr);
        for (int i = 0; i < model_.Count(); ++i)
            ASSERT_EQ(registry_.GetAt(i), model_.Entries()[static_cast<size_t>(i)]);
        for (int i = 0; i < 200; ++i) {
            const std::string key = KeyOf(static_cast<int>(Below(static_cast<size_t>(keys_))));
            const int found = model_.Find(key);
            ASSERT_EQ(registry_.Find(key), found);
            ASSERT_EQ(registry_.Get(key),
                      found < 0 ? nullptr : model_.Entries()[static_cast<size_t>(found)]);
        }
        for (int i = 0; i < 200 && !objects_.empty(); ++i) {
            const Keyed* object = objects_[Below(objects_.size())].get();
            ASSERT_EQ(registry_.Contains(object), model_.Contains(object));
        }
    }

    void CompareOne(int index) {
        ASSERT_EQ(registry_.GetAt(index), model_.Entries()[static_cast<size_t>(index)]);
    }
    void Find(const Keyed* object) {
        ASSERT_EQ(registry_.Find(object->key), model_.Find(object->key));
    }
    void ExpectContained(const Keyed* object) { ASSERT_TRUE(registry_.Contains(object)); }
    void Replace(Keyed* object) {
        Keyed* replaced = nullptr;
        objects_.push_back(std::make_unique<Keyed>(object->key));
        ASSERT_TRUE(registry_.Replace(object, objects_.back().get()));
        model_.Insert(objects_.back().get(), &replaced);
        ASSERT_FALSE(registry_.Replace(object, objects_.back().get()));
    }

    size_t Below(size_t limit) { return random_() % limit; }
    int Count() const { return model_.Count(); }
    Keyed* First() const { return model_.Entries().front(); }

private:
    static std::string KeyOf(int key) { return "key" + std::to_string(key); }
    Keyed* New(int key) {
        objects_.push_back(std::make_unique<Keyed>(KeyOf(key)));
        return objects_.back().get();
    }

    std::mt19937 random_;
    int keys_;
    std::vector<std::unique_ptr<Keyed>> objects_;
    ObjectRegistry<Keyed> registry_;
    Model model_;
};

class ObjectRegistryTest : public ::testing::TestWithParam<int> {};

TEST_P(ObjectRegistryTest, DoesWhatAPlainSortedListDoes) {
    Pair pair(static_cast<unsigned>(GetParam()), GetParam());
    for (int round = 0; round < 6 && !HasFatalFailure(); ++round) {
        for (int i = 0; i < 1500 && !HasFatalFailure(); ++i)
            pair.StepRandomly();
        pair.Compare();
    }
    while (pair.Count() > 0 && !HasFatalFailure())
        pair.Below(2) == 0 ? pair.TakeLast() : pair.Remove(pair.First());
    pair.Compare();
}

// Few keys give long runs of equals, many keys give many chunks.
INSTANTIATE_TEST_SUITE_P(Keys, ObjectRegistryTest, ::testing::Values(1, 3, 50, 2000, 1000000));

TEST(ObjectRegistryOrder, GrowsInAnyOrder) {
    const int count = 5000;
    std::vector<int> ascending(count);
    for (int i = 0; i < count; ++i)
        ascending[static_cast<size_t>(i)] = 100000 + i;
    std::vector<int> descending(ascending.rbegin(), ascending.rend());
    std::vector<int> shuffled = ascending;
    std::shuffle(shuffled.begin(), shuffled.end(), std::mt19937(7));
    for (const auto& order : {ascending, descending, shuffled}) {
        Pair pair(1, 200000);
        for (const int key : order)
            ASSERT_NO_FATAL_FAILURE(pair.Add(key));
        pair.Compare();
    }
}

TEST(ObjectRegistryOrder, PutsLateObjectsInOrderWhateverIsAskedFirst) {
    std::vector<int> keys(3000);
    for (size_t i = 0; i < keys.size(); ++i)
        keys[i] = 10000 + static_cast<int>(i);
    std::shuffle(keys.begin(), keys.end(), std::mt19937(3));
    for (int first = 0; first < 9; ++first) {
        Pair pair(1, 20000);
        for (const int key : keys)
            ASSERT_NO_FATAL_FAILURE(pair.AddLate(key));
        switch (first) {
        case 0:
            pair.TakeLast();
            break;
        case 1:
            pair.Remove(pair.First());
            break;
        case 2:
            pair.RemoveExactly(pair.First());
            break;
        case 3:
            pair.Insert(pair.First());
            break;
        case 4:
            pair.CompareOne(2000);
            break;
        case 5:
            pair.Find(pair.First());
            break;
        case 6:
            pair.ExpectContained(pair.First());
            break;
        case 7:
            pair.Replace(pair.First());
            break;
        default:
            pair.Place(12000);
        }
        ASSERT_FALSE(HasFatalFailure());
        ASSERT_NO_FATAL_FAILURE(pair.Compare());
    }
}

TEST(ObjectRegistryOrder, PutsAFewLateObjectsBetweenMany) {
    Pair pair(1, 20000);
    for (int i = 0; i < 5000; ++i)
        ASSERT_NO_FATAL_FAILURE(pair.Add(10000 + 2 * i));
    for (int i = 0; i < 60; ++i)
        ASSERT_NO_FATAL_FAILURE(pair.AddLate(10001 + 100 * ((i * 37) % 60)));
    ASSERT_NO_FATAL_FAILURE(pair.Compare());
}

TEST(ObjectRegistryOrder, TakesOutAnObjectWhoseKeyHasChanged) {
    ObjectRegistry<Keyed> registry;
    std::vector<std::unique_ptr<Keyed>> objects;
    for (int i = 0; i < 1500; ++i) {
        objects.push_back(std::make_unique<Keyed>("key" + std::to_string(10000 + i)));
        registry.Insert(objects.back().get());
    }
    EXPECT_EQ(registry.Get("key11400"), objects[1400].get());
    objects[1400]->key = "a";
    EXPECT_TRUE(registry.RemoveExactly(objects[1400].get()));
    EXPECT_FALSE(registry.RemoveExactly(objects[1400].get()));
    EXPECT_EQ(registry.GetCount(), 1499);
    EXPECT_EQ(registry.Get("key11400"), nullptr);
    EXPECT_EQ(registry.Get("a"), nullptr);
    EXPECT_EQ(registry.GetAt(1400), objects[1401].get());
}

TEST(ObjectRegistryOrder, WalksOverLateObjectsTooAndPeeksAtNone) {
    ObjectRegistry<Keyed> registry;
    std::vector<std::unique_ptr<Keyed>> objects;
    for (int i = 0; i < 20; ++i) {
        objects.push_back(std::make_unique<Keyed>("key" + std::to_string(10 + i * 7 % 20)));
        registry.InsertLate(objects.back().get());
    }
    EXPECT_EQ(registry.PeekFromEnd(0), nullptr); // nobody knows which one comes last
    std::vector<Keyed*> met;
    registry.ForEach([&](Keyed* object) { met.push_back(object); });
    EXPECT_EQ(met.size(), 20U);
    for (const auto& object : objects)
        EXPECT_EQ(std::count(met.begin(), met.end(), object.get()), 1);
    EXPECT_EQ(registry.Snapshot().size(), 20U);
    EXPECT_EQ(registry.PeekFromEnd(1)->key, "key28");
}

TEST(ObjectRegistryOrder, ForgetsLateObjectsWhenItIsCleared) {
    ObjectRegistry<Keyed> registry;
    std::vector<std::unique_ptr<Keyed>> objects;
    for (int i = 0; i < 200; ++i) {
        objects.push_back(std::make_unique<Keyed>("key" + std::to_string(i * 7 % 200)));
        registry.InsertLate(objects.back().get());
    }
    registry.Clear();
    EXPECT_EQ(registry.GetCount(), 0);
    EXPECT_EQ(registry.Get("key7"), nullptr);
    EXPECT_TRUE(registry.Snapshot().empty());
}

TEST(ObjectRegistryOrder, EmptiesFromTheFrontAndFillsAgain) {
    Pair pair(2, 100000);
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 2000; ++i)
            ASSERT_NO_FATAL_FAILURE(pair.Add(10000 + i));
        while (pair.Count() > 0)
            ASSERT_NO_FATAL_FAILURE(pair.RemoveExactly(pair.First()));
        pair.Compare();
    }
}

} // namespace
