#include "core/PointerList.h"

#include <gmock/gmock.h>

#include <array>
#include <utility>

namespace Kor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PointerListTest : public testing::Test {
protected:
    std::array<int, 100> values{};
    int* a = values.data();
    int* b = a + 1;
    int* c = a + 2;
};

TEST_F(PointerListTest, TakesNoMoreThanTwoPointersItself) {
    EXPECT_LE(sizeof(PointerList<int>), 2 * sizeof(void*));
}

TEST_F(PointerListTest, IsEmptyAtFirst) {
    const PointerList<int> list{};
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(list.size(), 0U);
    EXPECT_THAT(list.ToVector(), IsEmpty());
}

TEST_F(PointerListTest, KeepsASingleEntryInPlace) {
    PointerList<int> list;
    list.push_back(a);
    EXPECT_EQ(list.capacity(), 1U);
    EXPECT_EQ(list.front(), a);
    EXPECT_EQ(list.back(), a);
    EXPECT_EQ(list.begin(), PointerList<int>::Iterator(&list, nullptr));
}

TEST_F(PointerListTest, KeepsTheOrderWhileItGrows) {
    PointerList<int> list;
    for (int& value : values)
        list.push_back(&value);
    ASSERT_EQ(list.size(), values.size());
    for (size_t i = 0; i < values.size(); ++i)
        EXPECT_EQ(list[i], &values[i]);
}

TEST_F(PointerListTest, SeldomMovesItsEntriesWhileItGrows) {
    PointerList<int> list;
    int moves = 0;
    for (int i = 0; i < 10000; ++i) {
        const size_t before = list.capacity();
        list.push_back(a);
        moves += list.capacity() == before ? 0 : 1;
    }
    EXPECT_LE(moves, 14);
}

TEST_F(PointerListTest, InsertsAtTheFrontInTheMiddleAndAtTheEnd) {
    PointerList<int> list;
    list.InsertAt(0, b);
    list.InsertAt(0, a);
    list.InsertAt(1, c);
    list.InsertAt(3, c);
    EXPECT_THAT(list.ToVector(), ElementsAre(a, c, b, c));
}

TEST_F(PointerListTest, TakesOutAnEntryAndMovesUpThoseBehind) {
    PointerList<int> list;
    for (int* entry : {a, b, c})
        list.push_back(entry);
    list.EraseAt(1);
    EXPECT_THAT(list.ToVector(), ElementsAre(a, c));
    list.EraseAt(1);
    EXPECT_THAT(list.ToVector(), ElementsAre(a));
    list.pop_back();
    EXPECT_TRUE(list.empty());
}

TEST_F(PointerListTest, KeepsItsRoomWhenItIsCleared) {
    PointerList<int> list;
    list.reserve(10);
    list.push_back(a);
    list.clear();
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(list.capacity(), 10U);
}

TEST_F(PointerListTest, IsCopiedInBothOfItsForms) {
    PointerList<int> one;
    one.push_back(a);
    PointerList<int> many(one);
    EXPECT_THAT(many.ToVector(), ElementsAre(a));
    many.push_back(b);
    EXPECT_THAT(one.ToVector(), ElementsAre(a));
    one = many;
    EXPECT_THAT(one.ToVector(), ElementsAre(a, b));
    const PointerList<int>& same = one;
    one = same;
    EXPECT_THAT(one.ToVector(), ElementsAre(a, b));
}

TEST_F(PointerListTest, IsMovedInBothOfItsForms) {
    PointerList<int> one;
    one.push_back(a);
    PointerList<int> moved(std::move(one));
    EXPECT_THAT(moved.ToVector(), ElementsAre(a));
    moved.push_back(b);
    const PointerList<int> again(std::move(moved));
    EXPECT_THAT(again.ToVector(), ElementsAre(a, b));
}

TEST_F(PointerListTest, IsEmptyOnceItWasMovedFrom) {
    PointerList<int> source;
    PointerList<int> target;
    target.push_back(c);
    for (int* entry : {a, b}) {
        source.push_back(entry);
        target = std::move(source);
        EXPECT_THAT(target.ToVector(), ElementsAre(entry));
        EXPECT_TRUE(source.empty()); // as promised. NOLINT(bugprone-use-after-move)
    }
    PointerList<int>& same = target;
    target = std::move(same);
    EXPECT_THAT(target.ToVector(), ElementsAre(b));
    const PointerList<int> fresh(std::move(target));
    EXPECT_TRUE(target.empty()); // as promised. NOLINT(bugprone-use-after-move)
}

TEST_F(PointerListTest, TakesOutAnEntryOnce) {
    PointerList<int> list;
    for (int* entry : {a, b, a})
        list.push_back(entry);
    EXPECT_TRUE(list.TakeOut(a));
    EXPECT_EQ(list.size(), 2U);
    EXPECT_TRUE(list.TakeOut(a));
    EXPECT_FALSE(list.TakeOut(a));
    EXPECT_THAT(list.ToVector(), ElementsAre(b));
}

TEST_F(PointerListTest, SaysSoWhenItWouldGrowBeyondWhatItCounts) {
    PointerList<int> list;
    list.push_back(a);
    EXPECT_THROW(list.reserve(size_t{1} << 31), std::bad_alloc);
    EXPECT_THAT(list.ToVector(), ElementsAre(a));
}

} // namespace
} // namespace Kor
