// What a registry does while objects wait for their places and there is no memory to give them any.

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "core/Keyed.h"
#include "core/ObjectRegistry.h"
#include "faults/Allocations.h"

namespace {

using Kor::ObjectRegistry;

/// "key100" to "key299" in a registry: at even numbers with their places, at odd ones without.
class ObjectRegistryMemory : public ::testing::Test {
protected:
    static constexpr int kCount = 200;

    ObjectRegistryMemory() {
        for (int i = 0; i < kCount; ++i)
            objects.push_back(std::make_unique<Keyed>("key" + std::to_string(100 + i)));
        for (int i = 0; i < kCount; i += 2)
            registry.Insert(At(i));
        for (int i = kCount - 1; i > 0; i -= 2)
            registry.InsertLate(At(i));
    }
    ~ObjectRegistryMemory() override { Allocations::Disarm(); }

    Keyed* At(int i) { return objects[static_cast<size_t>(i)].get(); }

    static void RunOut() { Allocations::Arm(1, Allocations::kFromThenOn); }

    /// With memory again: all but these, in order.
    void ExpectAllBut(std::initializer_list<int> gone) {
        Allocations::Disarm();
        int index = 0;
        for (int i = 0; i < kCount; ++i) {
            const bool isGone = std::find(gone.begin(), gone.end(), i) != gone.end();
            EXPECT_EQ(registry.Get(At(i)->key), isGone ? nullptr : At(i));
            EXPECT_TRUE(isGone || registry.GetAt(index) == At(i)) << i;
            index += isGone ? 0 : 1;
        }
        EXPECT_EQ(registry.GetCount(), index);
    }

    std::vector<std::unique_ptr<Keyed>> objects;
    ObjectRegistry<Keyed> registry;
};

TEST_F(ObjectRegistryMemory, GivesNoIndexAndChangesNothing) {
    RunOut();
    EXPECT_THROW(registry.GetAt(3), std::bad_alloc);
    EXPECT_THROW(registry.Find("key103"), std::bad_alloc);
    EXPECT_THROW(registry.Snapshot(), std::bad_alloc);
    EXPECT_THROW(registry.MakeRoom(), std::bad_alloc);
    EXPECT_THROW(registry.Place(At(3)), std::bad_alloc);
    EXPECT_EQ(registry.GetAt(-1), nullptr);
    EXPECT_EQ(registry.GetAt(kCount), nullptr);
    EXPECT_EQ(registry.Get("key103"), At(3)); // by the index of keys
    EXPECT_EQ(registry.Get("key104"), At(4));
    ExpectAllBut({});
}

TEST_F(ObjectRegistryMemory, SaysWhichIndexAnObjectHadThatIsTakenOut) {
    RunOut();
    EXPECT_EQ(registry.Remove(At(51)), 51);
    EXPECT_EQ(registry.Remove(At(50)), 50);
    EXPECT_EQ(registry.Remove(At(101)), 99);
    EXPECT_EQ(registry.Remove(At(199)), 196);
    EXPECT_EQ(registry.Remove(At(0)), 0);
    EXPECT_EQ(registry.Remove(At(0)), ~0);
    EXPECT_EQ(registry.Remove(At(101)), ~98);
    EXPECT_EQ(registry.Get("key151"), nullptr);
    ExpectAllBut({0, 50, 51, 101, 199});
}

TEST_F(ObjectRegistryMemory, TakesOutExactlyThisObject) {
    RunOut();
    EXPECT_TRUE(registry.RemoveExactly(At(51)));
    EXPECT_FALSE(registry.RemoveExactly(At(51)));
    EXPECT_TRUE(registry.RemoveExactly(At(50)));
    EXPECT_FALSE(registry.RemoveExactly(At(50)));
    ExpectAllBut({50, 51});
}

TEST_F(ObjectRegistryMemory, IsEmptiedFromTheLastToTheFirst) {
    RunOut();
    for (int i = kCount - 1; i >= 0; --i)
        ASSERT_EQ(registry.TakeLast(), At(i));
    EXPECT_EQ(registry.TakeLast(), nullptr);
    EXPECT_TRUE(registry.IsEmpty());
}

TEST_F(ObjectRegistryMemory, PutsAnObjectBackForWhichItMadeRoom) {
    for (int i = 0; i < kCount; ++i) {
        registry.MakeRoom();
        RunOut();
        registry.Remove(At(i));
        registry.Place(At(i));
        EXPECT_FALSE(Allocations::HasFailed());
        Allocations::Disarm();
    }
    ExpectAllBut({});
}

TEST_F(ObjectRegistryMemory, AddsOneAtATimeOrNotAtAll) {
    const auto more = std::make_unique<Keyed>("key150_");
    for (long allocation = 1; registry.GetCount() == kCount; ++allocation) {
        Allocations::Arm(allocation, Allocations::kFromThenOn);
        try {
            registry.Insert(more.get());
        } catch (const std::bad_alloc&) {
            EXPECT_EQ(registry.GetCount(), kCount);
        }
        Allocations::Disarm();
    }
    EXPECT_EQ(registry.Find("key150_"), 51);
    EXPECT_EQ(registry.Remove(more.get()), 51);
    ExpectAllBut({});
}

TEST_F(ObjectRegistryMemory, FindsByBisectionWhereTheIndexOfKeysIsNotMade) {
    for (const auto mode : {Allocations::kOnce, Allocations::kFromThenOn}) {
        for (long allocation = 1; allocation < 5; ++allocation) {
            ObjectRegistry<Keyed> other;
            for (const auto& object : objects)
                other.Insert(object.get());
            Allocations::Arm(allocation, mode);
            EXPECT_EQ(other.Get("key103"), At(3));
            EXPECT_EQ(other.Get("key298"), At(198));
            EXPECT_EQ(other.Get("key103_"), nullptr);
            Allocations::Disarm();
            EXPECT_EQ(other.Get("key104"), At(4));
        }
    }
}

/// The counts are those at which chunks, or lists of them, are just full.
class RoomInARegistry : public ::testing::TestWithParam<int> {
protected:
    RoomInARegistry() {
        for (int i = 0; i < GetParam(); ++i)
            objects.push_back(std::make_unique<Keyed>("key" + std::to_string(10000 + i)));
    }

    ObjectRegistry<Keyed> Fill() const {
        ObjectRegistry<Keyed> registry;
        for (const auto& object : objects)
            registry.Insert(object.get());
        return registry;
    }

    /// Keys before all, in the middle of each quarter, and behind all.
    static std::vector<std::string> GetPlaces() {
        std::vector<std::string> keys = {"a", "z"};
        for (int quarter = 0; quarter <= 4; ++quarter)
            keys.push_back("key" + std::to_string(10000 + quarter * GetParam() / 4) + "_");
        return keys;
    }

    std::vector<std::unique_ptr<Keyed>> objects;
};

TEST_P(RoomInARegistry, IsEnoughWhereverTheObjectComes) {
    for (const std::string& key : GetPlaces()) {
        ObjectRegistry<Keyed> fresh = Fill();
        Keyed added(key);
        fresh.MakeRoom();
        Allocations::Arm(1, Allocations::kFromThenOn);
        fresh.Place(&added);
        Allocations::Disarm();
        EXPECT_FALSE(Allocations::HasFailed()) << key;
        EXPECT_EQ(fresh.GetAt(fresh.Find(key)), &added);
    }
}

TEST_P(RoomInARegistry, IsEnoughForTheKeyItWasMadeFor) {
    for (const std::string& key : GetPlaces()) {
        ObjectRegistry<Keyed> fresh = Fill();
        Keyed added(key);
        fresh.MakeRoomFor(key);
        Allocations::Arm(1, Allocations::kFromThenOn);
        EXPECT_GE(fresh.Insert(&added), 0);
        Allocations::Disarm();
        EXPECT_FALSE(Allocations::HasFailed()) << key;
        EXPECT_EQ(fresh.GetAt(fresh.Find(key)), &added);
    }
}

TEST_P(RoomInARegistry, IsEnoughAlsoWhenAnotherOneLeavesBefore) {
    for (const std::string& key : GetPlaces()) {
        ObjectRegistry<Keyed> fresh = Fill();
        Keyed* moved = objects[objects.size() / 2].get();
        const std::string before = moved->key;
        std::string after = key;
        fresh.MakeRoom();
        Allocations::Arm(1, Allocations::kFromThenOn);
        EXPECT_TRUE(fresh.RemoveExactly(moved));
        moved->key.swap(after);
        fresh.Place(moved);
        Allocations::Disarm();
        EXPECT_FALSE(Allocations::HasFailed()) << key;
        EXPECT_EQ(fresh.GetAt(fresh.Find(key)), moved);
        moved->key = before;
    }
}

INSTANTIATE_TEST_SUITE_P(Counts, RoomInARegistry, ::testing::Values(1, 2, 4, 256, 512, 1024, 2048));

} // namespace
