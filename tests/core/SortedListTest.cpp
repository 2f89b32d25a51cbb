// The two sorted lists of objects follow one set of rules.

#include <vector>

#include <gtest/gtest.h>

#include "core/Keyed.h"
#include "core/ObjectRegistry.h"
#include "core/SortedObjectList.h"

namespace {

using namespace Kor;

template <class List> class SortedListTest : public ::testing::Test {
protected:
    Keyed a_{"a"};
    Keyed b_{"b"};
    Keyed c_{"c"};
    List list_;
};

using Lists = ::testing::Types<SortedObjectList<Keyed>, ObjectRegistry<Keyed>>;

struct ListNames {
    template <class List> static std::string GetName(int index) {
        return index == 0 ? "SortedObjectList" : "ObjectRegistry";
    }
};
TYPED_TEST_SUITE(SortedListTest, Lists, ListNames);

TYPED_TEST(SortedListTest, GivesTheIndexOfANewEntry) {
    EXPECT_EQ(this->list_.Insert(&this->b_), 0);
    EXPECT_EQ(this->list_.Insert(&this->c_), 1);
    EXPECT_EQ(this->list_.Insert(&this->a_), 0);
    EXPECT_EQ(this->list_.GetCount(), 3);
    EXPECT_EQ(this->list_.GetAt(0), &this->a_);
    EXPECT_EQ(this->list_.GetAt(2), &this->c_);
}

TYPED_TEST(SortedListTest, SearchesGiveTheIndexOrTheComplementOfTheInsertionPoint) {
    EXPECT_EQ(this->list_.Find("a"), ~0);
    EXPECT_TRUE(this->list_.IsEmpty());
    this->list_.Insert(&this->a_);
    this->list_.Insert(&this->c_);
    EXPECT_EQ(this->list_.Find("a"), 0);
    EXPECT_EQ(this->list_.Find("c"), 1);
    EXPECT_EQ(this->list_.Find(""), ~0);
    EXPECT_EQ(this->list_.Find("b"), ~1);
    EXPECT_EQ(this->list_.Find("d"), ~2);
    EXPECT_EQ(this->list_.Get("c"), &this->c_);
    EXPECT_EQ(this->list_.Get("b"), nullptr);
}

TYPED_TEST(SortedListTest, AnExistingKeyIsOverwritten) {
    this->list_.Insert(&this->a_);
    this->list_.Insert(&this->b_);
    Keyed other("b");
    Keyed* replaced = &this->a_;
    EXPECT_EQ(this->list_.Insert(&other, &replaced), ~1);
    EXPECT_EQ(replaced, &this->b_);
    EXPECT_EQ(this->list_.GetCount(), 2);
    EXPECT_EQ(this->list_.Get("b"), &other);
    EXPECT_EQ(this->list_.Insert(&this->c_, &replaced), 2);
    EXPECT_EQ(replaced, nullptr);
}

TYPED_TEST(SortedListTest, AnObjectThatSharesItsKeyOverwritesItself) {
    Keyed second("b");
    Keyed third("b");
    for (Keyed* object : {&this->a_, &this->b_, &second, &third, &this->c_})
        this->list_.Place(object);
    Keyed* replaced = nullptr;
    EXPECT_EQ(this->list_.Insert(&third, &replaced), ~3);
    EXPECT_EQ(replaced, &third);
    EXPECT_EQ(this->list_.Insert(&second), ~2);
    const Keyed* expected[] = {&this->a_, &this->b_, &second, &third, &this->c_};
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(this->list_.GetAt(i), expected[i]);
    Keyed other("b");
    EXPECT_EQ(this->list_.Insert(&other, &replaced), ~1);
    EXPECT_EQ(replaced, &this->b_);
    EXPECT_EQ(this->list_.GetCount(), 5);
}

TYPED_TEST(SortedListTest, RemovalGoesByKeyAndPrefersTheObjectItself) {
    Keyed other("b");
    for (Keyed* object : {&this->a_, &this->b_, &this->c_})
        this->list_.Insert(object);
    this->list_.Place(&other);
    EXPECT_EQ(this->list_.Remove(&other), 2);
    EXPECT_EQ(this->list_.Get("b"), &this->b_);
    EXPECT_EQ(this->list_.Remove(&other), 1); // not there: the entry of its key goes
    EXPECT_EQ(this->list_.Get("b"), nullptr);
    EXPECT_EQ(this->list_.Remove(&other), ~1);
    EXPECT_EQ(this->list_.GetCount(), 2);
}

TYPED_TEST(SortedListTest, PlacingKeepsEqualsInOrder) {
    Keyed second("b");
    Keyed third("b");
    for (Keyed* object : {&this->b_, &second, &this->a_, &third, &this->c_})
        this->list_.Place(object);
    const Keyed* expected[] = {&this->a_, &this->b_, &second, &third, &this->c_};
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(this->list_.GetAt(i), expected[i]);
    EXPECT_EQ(this->list_.Find("b"), 1);
    EXPECT_TRUE(this->list_.Contains(&third));
}

TYPED_TEST(SortedListTest, AnObjectIsTakenOutEvenAfterItsKeyChanged) {
    for (Keyed* object : {&this->a_, &this->b_, &this->c_})
        this->list_.Insert(object);
    this->a_.key = "z";
    EXPECT_FALSE(this->list_.Contains(&this->a_));
    EXPECT_TRUE(this->list_.RemoveExactly(&this->a_));
    EXPECT_FALSE(this->list_.RemoveExactly(&this->a_));
    EXPECT_EQ(this->list_.GetCount(), 2);
    EXPECT_EQ(this->list_.GetAt(0), &this->b_);
    Keyed same("b");
    EXPECT_FALSE(this->list_.RemoveExactly(&same));
}

TYPED_TEST(SortedListTest, KeysAreComparedByUnsignedBytes) {
    Keyed high("\xff");
    Keyed capital("Z");
    Keyed shorter("");
    Keyed longer("aa");
    for (Keyed* object : {&high, &longer, &this->a_, &capital, &shorter})
        this->list_.Insert(object);
    const Keyed* expected[] = {&shorter, &capital, &this->a_, &longer, &high};
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(this->list_.GetAt(i), expected[i]);
}

TYPED_TEST(SortedListTest, OutsideTheListThereIsNull) {
    EXPECT_EQ(this->list_.GetAt(0), nullptr);
    this->list_.Insert(&this->a_);
    EXPECT_EQ(this->list_.GetAt(-1), nullptr);
    EXPECT_EQ(this->list_.GetAt(1), nullptr);
    this->list_.Clear();
    EXPECT_TRUE(this->list_.IsEmpty());
    EXPECT_EQ(this->list_.Find("a"), ~0);
}

TEST(SortedObjectList, PutsANewDuplicateInFrontOfItsEquals) {
    Keyed first("a");
    Keyed second("a");
    Keyed* replaced = &first;
    SortedObjectList<Keyed, true> list;
    EXPECT_EQ(list.Insert(&first), 0);
    EXPECT_EQ(list.Insert(&second, &replaced), 0);
    EXPECT_EQ(replaced, nullptr);
    EXPECT_EQ(list.GetAt(0), &second);
    EXPECT_EQ(list.GetAt(1), &first);
    EXPECT_EQ(list.IndexOf(&first), 1);
    Keyed other("b");
    EXPECT_EQ(list.IndexOf(&other), -1);
}

TEST(SortedObjectList, PlacesManyInTheirOrderBehindTheirEquals) {
    Keyed a("a");
    Keyed b("b");
    Keyed d("d");
    Keyed first("");
    Keyed second("b");
    Keyed third("c");
    Keyed last("e");
    SortedObjectList<Keyed> list;
    list.PlaceAll({});
    list.PlaceAll({&a, &b, &d});
    list.PlaceAll({});
    list.PlaceAll({&first, &second, &third, &last});
    EXPECT_EQ(list.GetAll(), (std::vector<Keyed*>{&first, &a, &b, &second, &third, &d, &last}));
}

TEST(SortedObjectList, WalksInOrder) {
    Keyed a("a");
    Keyed b("b");
    SortedObjectList<Keyed> list;
    list.Reserve(2);
    list.Append(&a);
    list.Append(&b);
    std::vector<const Keyed*> walked(list.begin(), list.end());
    EXPECT_EQ(walked, (std::vector<const Keyed*>{&a, &b}));
}

} // namespace
