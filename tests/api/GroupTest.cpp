// Groups: ordered lists of view items, which they own.

#include "api/Schema.h"

namespace {

class GroupTest : public SchemaTest {
protected:
    void SetUp() override {
        SchemaTest::SetUp();
        group = OviGroup_New("main");
    }

    void TearDown() override {
        OviObject_Delete(group);
        SchemaTest::TearDown();
    }

    static OviGroup* Add(OviGroup* outer, const char* name, int position = -1) {
        OviGroup* inner = OviGroup_New(name);
        OviGroup_AddViewItemAt(outer, inner, position);
        return inner;
    }

    static Names ItemsOf(OviGroup* self) {
        Names names;
        for (int i = 0; i < OviGroup_GetViewItemCount(self); ++i)
            names.push_back(NameOf(OviGroup_GetViewItemAt(self, i)));
        return names;
    }

    static OviGroup* GroupAt(OviGroup* self, int index) {
        return static_cast<OviGroup*>(OviGroup_GetViewItemAt(self, index));
    }

    OviGroup* group = nullptr;
};

TEST_F(GroupTest, IsAViewItem) {
    EXPECT_EQ(OviObject_GetClass(group), OVI_CLASS_GROUP);
    for (int id : {36, 37, 31, 0})
        EXPECT_TRUE(OviObject_ImplementsClass(group, id)) << id;
    for (int id : {39, 38})
        EXPECT_FALSE(OviObject_ImplementsClass(group, id)) << id;
    EXPECT_EQ(OviGroup_GetViewItemCount(group), 0);
}

TEST_F(GroupTest, NeedsAValidName) {
    for (const char* name : {"", "two words", "a.b", static_cast<const char*>(nullptr)})
        EXPECT_EQ(OviGroup_New(name), nullptr);
}

TEST_F(GroupTest, InsertsBeforeAPositionOrAtTheEnd) {
    Add(group, "a", -1);
    Add(group, "b", 0);
    Add(group, "c", 1);
    Add(group, "d", -7);
    Add(group, "e", 99);
    EXPECT_EQ(ItemsOf(group), (Names{"b", "c", "a", "d", "e"}));
    EXPECT_EQ(OviGroup_GetViewItemAt(group, 5), nullptr);
    EXPECT_EQ(OviGroup_GetViewItemAt(group, -1), nullptr);
}

TEST_F(GroupTest, ARemovedItemOutlivesTheGroup) {
    OviGroup* outer = OviGroup_New("outer");
    Add(outer, "a");
    OviGroup* kept = Add(outer, "b");
    OviGroup_RemoveViewItemAt(outer, 7);
    OviGroup_RemoveViewItemAt(outer, -1);
    OviGroup_RemoveViewItemAt(outer, 1);
    EXPECT_EQ(ItemsOf(outer), Names{"a"});
    OviObject_Delete(outer);
    EXPECT_EQ(NameOf(kept), "b");
    OviObject_Delete(kept);
}

TEST_F(GroupTest, AnItemMayBeListedTwiceAndIsDeletedOnce) {
    OviGroup* twice = Add(group, "twice");
    OviGroup_AddViewItemAt(group, twice, -1);
    OviGroup* inner = Add(group, "inner");
    OviGroup_AddViewItemAt(inner, twice, -1);
    EXPECT_EQ(ItemsOf(group), (Names{"twice", "twice", "inner"}));
    OviGroup_RemoveViewItemAt(group, 0);
    EXPECT_EQ(ItemsOf(group), (Names{"twice", "inner"}));
    EXPECT_EQ(ItemsOf(inner), Names{"twice"});
}

TEST_F(GroupTest, AnItemDeletedByHandLeavesAllItsGroups) {
    OviGroup* item = Add(group, "item");
    OviGroup* inner = Add(group, "inner");
    OviGroup_AddViewItemAt(inner, item, -1);
    OviGroup_AddViewItemAt(group, item, -1);
    OviObject_Delete(item);
    EXPECT_EQ(ItemsOf(group), Names{"inner"});
    EXPECT_EQ(ItemsOf(inner), Names{});
}

TEST_F(GroupTest, AnItemOfTwoGroupsIsGoneForBothWhenOneDies) {
    OviGroup* dying = OviGroup_New("dying");
    OviGroup* shared = Add(dying, "shared");
    Add(shared, "leaf");
    OviGroup_AddViewItemAt(group, shared, -1);
    OviObject_Delete(dying);
    EXPECT_EQ(ItemsOf(group), Names{});
}

TEST_F(GroupTest, AGroupOfTwoTreesTakesNothingElseAlongWhenOneDies) {
    OviGroup* dying = OviGroup_New("dying");
    Add(dying, "first");
    OviGroup* shared = Add(dying, "shared");
    Add(Add(shared, "inner"), "leaf");
    Add(shared, "last");
    OviGroup* within = Add(dying, "within");
    OviGroup_AddViewItemAt(within, shared, -1);
    Add(within, "end");
    OviGroup_AddViewItemAt(group, shared, -1);
    OviGroup* other = Add(group, "other");
    OviGroup_AddViewItemAt(other, shared, -1);
    Add(other, "kept");
    OviObject_Delete(dying);
    EXPECT_EQ(ItemsOf(group), Names{"other"});
    EXPECT_EQ(ItemsOf(other), Names{"kept"});
}

TEST_F(GroupTest, AGroupNeverContainsItself) {
    OviGroup* inner = Add(group, "inner");
    OviGroup* innermost = Add(inner, "innermost");
    OviGroup_AddViewItemAt(innermost, group, -1);
    OviGroup_AddViewItemAt(inner, inner, -1);
    OviGroup_AddViewItemAt(group, nullptr, -1);
    EXPECT_EQ(ItemsOf(innermost), Names{});
    EXPECT_EQ(ItemsOf(inner), Names{"innermost"});
    EXPECT_EQ(ItemsOf(group), Names{"inner"});
}

TEST_F(GroupTest, ACopyHasATreeOfItsOwnInTheSameOrder) {
    OviNamedObject_SetComment(group, "about");
    OviLockable_SetLockState(OviObject_GetLockable(group), 5);
    OviGroup* b = Add(group, "b");
    OviLockable_SetLockState(OviObject_GetLockable(b), 6);
    Add(group, "a");
    Add(b, "z");
    Add(b, "y");
    OviGroup* copy = CloneOf(group);
    EXPECT_EQ(OviObject_GetClass(copy), OVI_CLASS_GROUP);
    EXPECT_STREQ(OviNamedObject_GetComment(copy), "about");
    EXPECT_EQ(OviLockable_GetLockState(OviObject_GetLockable(copy)), 0);
    EXPECT_EQ(ItemsOf(copy), (Names{"b", "a"}));
    EXPECT_NE(GroupAt(copy, 0), b);
    EXPECT_EQ(OviLockable_GetLockState(OviObject_GetLockable(GroupAt(copy, 0))), 0);
    EXPECT_EQ(ItemsOf(GroupAt(copy, 0)), (Names{"z", "y"}));
    OviObject_Delete(GroupAt(copy, 0));
    EXPECT_EQ(ItemsOf(group), (Names{"b", "a"}));
    OviObject_Delete(copy);
}

// Reading a file builds trees from the top, each item in the innermost group.
TEST_F(GroupTest, DeepTreesAreBuiltCopiedAndDeletedInTimeAndWithoutRecursion) {
    constexpr int kDepth = 20000;
    OviGroup* innermost = group;
    for (int i = 0; i < kDepth; ++i)
        innermost = Add(innermost, "inner");
    OviGroup* copy = CloneOf(group);
    int depth = 0;
    for (OviGroup* at = copy; OviGroup_GetViewItemCount(at) > 0; at = GroupAt(at, 0))
        ++depth;
    EXPECT_EQ(depth, kDepth);
    OviObject_Delete(copy);
    OviGroup_AddViewItemAt(innermost, group, -1);
    EXPECT_EQ(OviGroup_GetViewItemCount(innermost), 0);
}

} // namespace
