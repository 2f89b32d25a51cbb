// Lists of thousands, whose form differs from that of short ones, beside plain vectors.

#include <algorithm>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "Keyed.h"
#include "core/ChunkedList.h"
#include "core/PointerList.h"
#include "core/SortedObjectList.h"

namespace {

using namespace Kor;
using testing::ElementsAreArray;

class LongList : public testing::TestWithParam<unsigned> {
protected:
    size_t Below(size_t end) { return random_() % end; }

    template <class List> static std::vector<int*> Walk(const List& list) {
        std::vector<int*> entries;
        for (int* entry : list)
            entries.push_back(entry);
        return entries;
    }

    std::mt19937& Random() { return random_; }

private:
    std::mt19937 random_{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Seeds, LongList, testing::Range(1U, 6U));

TEST_P(LongList, HoldsWhatAVectorHoldsAfterTheSameChanges) {
    std::vector<int> values(500); // fewer than there are entries: many stand several times
    PointerList<int> list;
    std::vector<int*> model;
    for (int step = 0; step < 12000; ++step) {
        int* value = &values[Below(values.size())];
        const size_t at = Below(model.size() + 1);
        const size_t kind = Below(step < 6000 ? 10 : 24);
        if (kind < 8) {
            list.InsertAt(at, value);
            model.insert(model.begin() + static_cast<std::ptrdiff_t>(at), value);
        } else if (kind == 8) {
            list.push_back(value);
            model.push_back(value);
        } else if (at < model.size() && kind == 9) {
            list.Replace(at, value);
            model[at] = value;
        } else if (at < model.size()) {
            list.EraseAt(at);
            model.erase(model.begin() + static_cast<std::ptrdiff_t>(at));
        }
        const auto found = std::find(model.begin(), model.end(), value);
        const size_t index =
            found == model.end() ? list.kNotFound : static_cast<size_t>(found - model.begin());
        ASSERT_EQ(list.Find(value), index);
        ASSERT_EQ(list.size(), model.size());
        if (!model.empty()) {
            ASSERT_EQ(list[at % model.size()], model[at % model.size()]);
            ASSERT_EQ(list.back(), model.back());
        }
        if (step % 500 == 0) {
            ASSERT_THAT(list.ToVector(), ElementsAreArray(model));
            ASSERT_THAT(Walk(list), ElementsAreArray(model));
        }
    }
    const PointerList<int> copy(list);
    EXPECT_THAT(copy.ToVector(), ElementsAreArray(model));
    const PointerList<int> moved(std::move(list));
    EXPECT_THAT(Walk(moved), ElementsAreArray(model));
}

TEST_P(LongList, TakesOutEachEntryAsOftenAsItStandsThere) {
    std::vector<int> values(2000);
    PointerList<int> list;
    std::vector<int> left(values.size());
    for (int i = 0; i < 6000; ++i) {
        const size_t value = Below(values.size());
        list.InsertAt(Below(list.size() + 1), &values[value]);
        ++left[value];
    }
    size_t count = list.size();
    for (int i = 0; i < 20000; ++i) {
        const size_t value = Below(values.size());
        const bool isThere = left[value] > 0;
        ASSERT_EQ(list.TakeOut(&values[value]), isThere);
        left[value] -= isThere ? 1 : 0;
        count -= isThere ? 1 : 0;
        ASSERT_EQ(list.size(), count);
    }
    for (size_t value = 0; value < values.size(); ++value) {
        const auto entries = list.ToVector();
        ASSERT_EQ(std::count(entries.begin(), entries.end(), &values[value]), left[value]);
    }
}

TEST_P(LongList, IsPutInOrder) {
    std::vector<int> values(5000);
    for (int& value : values)
        value = static_cast<int>(Below(1000));
    PointerList<int> list;
    std::vector<int*> model;
    for (int& value : values) {
        const size_t at = Below(model.size() + 1);
        list.InsertAt(at, &value);
        model.insert(model.begin() + static_cast<std::ptrdiff_t>(at), &value);
    }
    for (int i = 0; i < 1000; ++i) { // leaves free nodes between the others
        const size_t at = Below(model.size());
        list.EraseAt(at);
        model.erase(model.begin() + static_cast<std::ptrdiff_t>(at));
    }
    const auto isLess = [](const int* a, const int* b) { return *a < *b; };
    list.SortStably(isLess);
    std::stable_sort(model.begin(), model.end(), isLess);
    EXPECT_THAT(list.ToVector(), ElementsAreArray(model));
    const auto byAddress = [](const int* a, const int* b) { return std::less<>()(a, b); };
    list.Sort(byAddress);
    std::sort(model.begin(), model.end(), byAddress);
    EXPECT_THAT(list.ToVector(), ElementsAreArray(model));
    list.InsertAt(7, model.front());
    model.insert(model.begin() + 7, model.front());
    EXPECT_THAT(list.ToVector(), ElementsAreArray(model));
    EXPECT_EQ(list.Find(model.back()), model.size() - 1);
}

TEST_P(LongList, KeepsItsRoomWhenItIsCleared) {
    std::vector<int> values(3000);
    PointerList<int> list;
    for (int& value : values)
        list.InsertAt(0, &value);
    const size_t room = list.capacity();
    list.clear();
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(list.begin(), list.end());
    EXPECT_EQ(list.capacity(), room);
    list.InsertAt(0, values.data());
    EXPECT_THAT(list.ToVector(), testing::ElementsAre(values.data()));
}

/// The rules of a sorted list in the simplest form.
struct SortedModel {
    std::vector<Keyed*> objects;

    auto Above(const std::string& key) {
        return std::find_if(objects.begin(), objects.end(),
                            [&](const Keyed* other) { return other->key > key; });
    }
    void Place(Keyed* object) { objects.insert(Above(object->key), object); }
    void Remove(const Keyed* object) {
        objects.erase(std::find(objects.begin(), objects.end(), object));
    }
    int Find(const std::string& key) const {
        const auto found = std::find_if(objects.begin(), objects.end(),
                                        [&](const Keyed* other) { return other->key >= key; });
        const auto index = static_cast<int>(found - objects.begin());
        return found != objects.end() && (*found)->key == key ? index : ~index;
    }
};

TEST_P(LongList, SortsAsASimplerListDoesAlsoWhereManyShareAKey) {
    std::vector<std::unique_ptr<Keyed>> objects;
    for (int i = 0; i < 4000; ++i)
        objects.push_back(std::make_unique<Keyed>("k" + std::to_string(Below(i < 2000 ? 5 : 900))));
    SortedObjectList<Keyed> list;
    SortedModel model;
    std::vector<Keyed*> out;
    for (const auto& object : objects)
        out.push_back(object.get());
    std::shuffle(out.begin(), out.end(), Random());
    std::vector<Keyed*> in;
    for (int step = 0; step < 12000; ++step) {
        const bool enters = in.empty() || (!out.empty() && Below(step < 6000 ? 10 : 3) > 1);
        auto& from = enters ? out : in;
        std::swap(from[Below(from.size())], from.back());
        Keyed* object = from.back();
        from.pop_back();
        (enters ? in : out).push_back(object);
        if (enters) {
            list.Place(object);
            model.Place(object);
        } else {
            const auto at = std::find(model.objects.begin(), model.objects.end(), object);
            ASSERT_EQ(list.FindEntry(object), at - model.objects.begin());
            ASSERT_TRUE(list.RemoveExactly(object));
            ASSERT_FALSE(list.Contains(object));
            model.Remove(object);
        }
        const std::string key = "k" + std::to_string(Below(1000));
        ASSERT_EQ(list.Find(key), model.Find(key));
    }
    EXPECT_THAT(list.GetAll(), ElementsAreArray(model.objects));
}

TEST_P(LongList, PlacesManyOrFewObjectsTogether) {
    std::vector<std::unique_ptr<Keyed>> objects;
    SortedObjectList<Keyed> list;
    SortedModel model;
    for (const int count : {3000, 3, 2000, 40, 1}) {
        std::vector<Keyed*> added;
        for (int i = 0; i < count; ++i) {
            objects.push_back(std::make_unique<Keyed>(std::to_string(Below(5000))));
            added.push_back(objects.back().get());
        }
        std::stable_sort(added.begin(), added.end(),
                         [](const Keyed* a, const Keyed* b) { return a->key < b->key; });
        list.MakeRoomFor(added.size());
        list.PlaceAll(added);
        for (Keyed* object : added)
            model.Place(object);
        ASSERT_THAT(list.GetAll(), ElementsAreArray(model.objects));
    }
}

TEST_P(LongList, FindsEachOfManyObjectsOfOneKeyInAChunkedList) {
    std::vector<std::unique_ptr<Keyed>> objects;
    for (int i = 0; i < 3000; ++i)
        objects.push_back(std::make_unique<Keyed>("k" + std::to_string(Below(4))));
    ChunkedList<Keyed> list;
    SortedModel model;
    std::vector<Keyed*> out;
    for (const auto& object : objects)
        out.push_back(object.get());
    std::vector<Keyed*> in;
    for (int step = 0; step < 9000; ++step) {
        const bool enters = in.empty() || (!out.empty() && Below(step < 5000 ? 10 : 3) > 1);
        auto& from = enters ? out : in;
        std::swap(from[Below(from.size())], from.back());
        Keyed* object = from.back();
        from.pop_back();
        (enters ? in : out).push_back(object);
        if (enters) {
            list.PutAt(list.UpperBound(object->key), object);
            model.Place(object);
        } else {
            const auto index = std::find(model.objects.begin(), model.objects.end(), object) -
                               model.objects.begin();
            const auto at = list.PositionOf(object);
            ASSERT_EQ(list.GetAt(at), object);
            ASSERT_EQ(list.IndexAt(at), index);
            list.Erase(at);
            model.Remove(object);
            ASSERT_EQ(list.GetAt(list.PositionOf(object)), nullptr);
        }
    }
    EXPECT_THAT(list.GetAll(), ElementsAreArray(model.objects));
}

TEST_P(LongList, LetsAnotherObjectTakeAPlaceAmongManyOfItsKey) {
    std::vector<std::unique_ptr<Keyed>> objects;
    ChunkedList<Keyed> list;
    for (int i = 0; i < 500; ++i) {
        objects.push_back(std::make_unique<Keyed>("same"));
        list.PutAt(list.UpperBound("same"), objects.back().get());
    }
    Keyed* middle = objects[250].get();
    EXPECT_EQ(list.IndexAt(list.PositionOf(middle)), 250);
    Keyed other("same");
    list.Replace(list.PositionOf(middle), &other);
    EXPECT_EQ(list.IndexAt(list.PositionOf(&other)), 250);
    EXPECT_EQ(list.GetAt(list.PositionOf(middle)), nullptr);
    EXPECT_EQ(list.IndexAt(list.PositionOf(objects.back().get())), 499);
}

} // namespace
