#include "core/ChunkedList.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "core/Keyed.h"

namespace Kor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ChunkedListTest : public testing::Test {
protected:
    using List = ChunkedList<Keyed>;

    Keyed* New(const std::string& key) {
        objects_.push_back(std::make_unique<Keyed>(key));
        return objects_.back().get();
    }

    /// Behind all objects of that key.
    Keyed* Put(const std::string& key) {
        Keyed* object = New(key);
        list.PutAt(list.UpperBound(key), object);
        return object;
    }

    /// So many that they stand in several chunks: "k10000", "k10002", ...
    void PutMany(int count) {
        for (int i = 0; i < count; ++i)
            Put("k" + std::to_string(10000 + 2 * i));
    }

    std::vector<std::string> GetKeys() const {
        std::vector<std::string> keys;
        for (const Keyed* object : list.GetAll())
            keys.push_back(object->key);
        return keys;
    }

    List list;

private:
    std::vector<std::unique_ptr<Keyed>> objects_;
};

TEST_F(ChunkedListTest, IsEmptyAtFirst) {
    EXPECT_TRUE(list.IsEmpty());
    EXPECT_EQ(list.GetCount(), 0);
    EXPECT_EQ(list.GetAt(list.GetFirst()), nullptr);
    EXPECT_EQ(list.GetAt(list.LowerBound("a")), nullptr);
    EXPECT_EQ(list.IndexAt(list.UpperBound("a")), 0);
    EXPECT_TRUE(list.ComesLast("a"));
    EXPECT_THAT(GetKeys(), IsEmpty());
}

TEST_F(ChunkedListTest, IsWalkedFromPlaceToPlaceThroughAllChunks) {
    PutMany(2000);
    int index = 0;
    for (List::Position at = list.GetFirst(); Keyed* object = list.GetAt(at); at = list.Next(at)) {
        ASSERT_EQ(object, list.GetAt(index));
        ASSERT_EQ(list.IndexAt(at), index++);
    }
    EXPECT_EQ(index, 2000);
}

TEST_F(ChunkedListTest, FindsTheBoundsOfKeysThatFillSeveralChunks) {
    PutMany(700);
    for (int i = 0; i < 1500; ++i)
        Put("k10500_same");
    const int first = list.IndexAt(list.LowerBound("k10500_same"));
    EXPECT_EQ(list.GetAt(first)->key, "k10500_same");
    EXPECT_EQ(list.GetAt(first - 1)->key, "k10500");
    const int end = list.IndexAt(list.UpperBound("k10500_same"));
    EXPECT_EQ(end - first, 1500);
    EXPECT_EQ(list.GetAt(end)->key, "k10502");
}

TEST_F(ChunkedListTest, PutsAnObjectBehindThoseOfItsKey) {
    Keyed* first = Put("b");
    Put("c");
    Keyed* second = Put("b");
    EXPECT_EQ(list.GetAt(0), first);
    EXPECT_EQ(list.GetAt(1), second);
    EXPECT_THAT(GetKeys(), ElementsAre("b", "b", "c"));
}

TEST_F(ChunkedListTest, TellsTheObjectsOfOneKeyApart) {
    PutMany(600);
    std::vector<Keyed*> same;
    for (int i = 0; i < 600; ++i)
        same.push_back(Put("k10100"));
    for (Keyed* object : same)
        ASSERT_EQ(list.GetAt(list.PositionOf(object)), object);
    const Keyed* stranger = New("k10100");
    EXPECT_EQ(list.GetAt(list.PositionOf(stranger)), nullptr);
}

TEST_F(ChunkedListTest, SearchesForAnObjectWhoseKeyHasChanged) {
    PutMany(1200);
    Keyed* changed = list.GetAt(1100);
    changed->key = "a";
    EXPECT_EQ(list.GetAt(list.PositionOf(changed)), nullptr);
    EXPECT_EQ(list.IndexAt(list.Search(changed)), 1100);
    EXPECT_EQ(list.GetAt(list.Search(New("a"))), nullptr);
}

TEST_F(ChunkedListTest, ReplacesAnEntryAtAChunksEndToo) {
    PutMany(2000);
    for (const int index : {0, 511, 512, 1024, 1999}) {
        Keyed* other = New(list.GetAt(index)->key);
        list.Replace(list.LowerBound(other->key), other);
        EXPECT_EQ(list.GetAt(index), other);
    }
}

TEST_F(ChunkedListTest, CountsOnBehindWhatIsTakenOut) {
    PutMany(2000);
    const std::string behind = list.GetAt(700)->key;
    for (int i = 0; i < 600; ++i) // more than the first chunk
        list.Erase(list.GetFirst());
    EXPECT_EQ(list.GetCount(), 1400);
    EXPECT_EQ(list.IndexAt(list.LowerBound(behind)), 100);
    EXPECT_EQ(list.GetAt(100)->key, behind);
}

TEST_F(ChunkedListTest, MergesObjectsBeforeBetweenAndBehind) {
    PutMany(1000);
    std::vector<Keyed*> added = {New("a"), New("k10001"), New("k11001"), New("z"), New("zz")};
    list.Merge(added.begin(), added.end());
    EXPECT_EQ(list.GetCount(), 1005);
    EXPECT_EQ(list.GetAt(0)->key, "a");
    EXPECT_EQ(list.GetAt(2)->key, "k10001");
    EXPECT_EQ(list.GetAt(1004)->key, "zz");
    const std::vector<std::string> keys = GetKeys();
    EXPECT_TRUE(std::is_sorted(keys.begin(), keys.end()));
    for (size_t i = 0; i < keys.size(); ++i)
        ASSERT_EQ(list.IndexAt(list.LowerBound(keys[i])), static_cast<int>(i));
}

TEST_F(ChunkedListTest, MergesIntoAnEmptyList) {
    std::vector<Keyed*> added = {New("a"), New("b")};
    list.Merge(added.begin(), added.end());
    EXPECT_THAT(GetKeys(), ElementsAre("a", "b"));
}

TEST_F(ChunkedListTest, PeeksOnlyIntoTheLastChunk) {
    EXPECT_EQ(list.PeekFromEnd(0), nullptr);
    PutMany(514); // two of them in the last chunk
    EXPECT_EQ(list.PeekFromEnd(0), list.GetAt(513));
    EXPECT_EQ(list.PeekFromEnd(1), list.GetAt(512));
    EXPECT_EQ(list.PeekFromEnd(2), nullptr);
}

TEST_F(ChunkedListTest, IsEmptyWhenItWasCleared) {
    PutMany(600);
    list.Clear();
    EXPECT_TRUE(list.IsEmpty());
    Put("a");
    EXPECT_THAT(GetKeys(), ElementsAre("a"));
}

} // namespace
} // namespace Kor
