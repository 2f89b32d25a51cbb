// How often a registry reads keys: what it must not do for every object.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "core/ObjectRegistry.h"

namespace {

using namespace Kor;

/// Counts how often keys are read.
struct Counted {
    std::string key;
    std::string_view GetKey() const {
        ++reads;
        return key;
    }
    static inline long reads = 0;
};

class ObjectRegistryCost : public ::testing::Test {
protected:
    Counted* New(const std::string& key) {
        objects_.push_back(std::make_unique<Counted>(Counted{key}));
        return objects_.back().get();
    }
    void Fill(int count) {
        for (int i = 0; i < count; ++i)
            registry.Place(New("key" + std::to_string(10000 + i)));
    }
    template <class Call> static long CountReads(Call call) {
        const long before = Counted::reads;
        call();
        return Counted::reads - before;
    }

    ObjectRegistry<Counted> registry;

private:
    std::vector<std::unique_ptr<Counted>> objects_;
};

TEST_F(ObjectRegistryCost, FindsAnObjectAmongManyWithoutTheirOrder) {
    Fill(5000);
    EXPECT_NE(registry.Get("key12345"), nullptr); // makes the index
    EXPECT_LE(CountReads([&] { EXPECT_NE(registry.Get("key12346"), nullptr); }), 2);
}

TEST_F(ObjectRegistryCost, FindsWithoutTheOrderAfterAnObjectTookAnothersPlace) {
    Fill(5000);
    EXPECT_NE(registry.Get("key12345"), nullptr); // makes the index
    Counted* other = New("key12345");
    EXPECT_LT(registry.Insert(other), 0);
    EXPECT_LE(CountReads([&] { EXPECT_EQ(registry.Get("key12345"), other); }), 2);
    EXPECT_LE(CountReads([&] { EXPECT_NE(registry.Get("key12346"), nullptr); }), 2);
}

TEST_F(ObjectRegistryCost, PlacesManyObjectsOfOneKeyInAFewSteps) {
    Fill(100);
    EXPECT_NE(registry.Get("key10007"), nullptr); // makes the index
    for (int i = 0; i < 5000; ++i)
        registry.Place(New("key10007"));
    EXPECT_LE(CountReads([&] { registry.Place(New("key10007")); }), 40);
    EXPECT_LE(CountReads([&] { EXPECT_NE(registry.Get("key10009"), nullptr); }), 40);
}

TEST_F(ObjectRegistryCost, FindsWithoutTheOrderAgainOnceTheSharedKeysAreGone) {
    Fill(100);
    registry.Place(New("key10007"));
    EXPECT_NE(registry.Get("key10007"), nullptr);
    while (registry.TakeLast()) {
    }
    Fill(5000);
    EXPECT_NE(registry.Get("key12345"), nullptr); // makes the index
    EXPECT_LE(CountReads([&] { EXPECT_NE(registry.Get("key12346"), nullptr); }), 2);
    registry.Place(New("key10007"));
    registry.Clear();
    Fill(5000);
    EXPECT_NE(registry.Get("key12345"), nullptr);
    EXPECT_LE(CountReads([&] { EXPECT_NE(registry.Get("key12346"), nullptr); }), 2);
}

TEST_F(ObjectRegistryCost, PutsOneLateObjectBetweenManyInAFewSteps) {
    Fill(5000);
    EXPECT_NE(registry.Get("key12345"), nullptr); // makes the index
    registry.InsertLate(New("key12345_late"));
    EXPECT_LE(CountReads([&] { EXPECT_EQ(registry.GetAt(2346)->key, "key12345_late"); }), 50);
}

TEST_F(ObjectRegistryCost, PutsManyLateObjectsBetweenManyTogether) {
    constexpr int kCount = 5000;
    Fill(kCount);
    EXPECT_NE(registry.Get("key12345"), nullptr); // makes the index
    for (int i = 0; i < kCount; ++i)
        registry.InsertLate(New("key" + std::to_string(10000 + i * 7 % kCount) + "_"));
    EXPECT_LE(CountReads([&] { EXPECT_EQ(registry.GetAt(1)->key, "key10000_"); }), 10 * kCount);
}

TEST_F(ObjectRegistryCost, PutsLateObjectsInOrderOnce) {
    Fill(20);
    for (int i = 0; i < 1000; ++i)
        registry.InsertLate(New("key" + std::to_string(20000 + i * 7 % 1000)));
    EXPECT_EQ(registry.GetAt(20)->key, "key20000");
    EXPECT_EQ(CountReads([&] { EXPECT_EQ(registry.GetAt(21)->key, "key20001"); }), 0);
}

} // namespace
