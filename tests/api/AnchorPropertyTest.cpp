// Anchor properties: attachment points and the anchor types they accept.

#include "api/Schema.h"

namespace {

class AnchorPropertyTest : public SchemaTest {
protected:
    void SetUp() override {
        SchemaTest::SetUp();
        anchor = OviAnchorProperty_New("socket", 1);
        for (const char* name : {"Bolt", "Hook", "Rope"})
            types.push_back(OviGroup_New(name)); // any named object serves
    }

    void TearDown() override {
        OviObject_Delete(anchor);
        for (OviNamedObject* type : types)
            OviObject_Delete(type);
        SchemaTest::TearDown();
    }

    Names AnchorTypes(OviAnchorProperty* property) {
        Names names;
        for (int i = 0; i < OviAnchorProperty_GetAnchorTypeCount(property); ++i)
            names.push_back(NameOf(OviAnchorProperty_GetAnchorTypeAt(property, i)));
        return names;
    }

    OviAnchorProperty* anchor = nullptr;
    std::vector<OviNamedObject*> types;
};

TEST_F(AnchorPropertyTest, IsOfItsOwnClassAndThoseOfNodeProperties) {
    EXPECT_EQ(OviObject_GetClass(anchor), OVI_CLASS_ANCHOR_PROPERTY);
    for (int id : {28, 14, 3, 15, 31, 0})
        EXPECT_TRUE(OviObject_ImplementsClass(anchor, id)) << id;
    for (int id : {30, 9, 7})
        EXPECT_FALSE(OviObject_ImplementsClass(anchor, id)) << id;
}

TEST_F(AnchorPropertyTest, StartsAsAParentAnchorWithoutTypes) {
    EXPECT_FALSE(OviAnchorProperty_IsChild(anchor));
    EXPECT_EQ(OviAnchorProperty_GetAnchorTypeCount(anchor), 0);
    EXPECT_EQ(OviNodeProperty_GetAncestorDistance(anchor), -1);
    OviAnchorProperty_SetChild(anchor, true);
    EXPECT_TRUE(OviAnchorProperty_IsChild(anchor));
    OviAnchorProperty_SetChild(anchor, false);
    EXPECT_FALSE(OviAnchorProperty_IsChild(anchor));
}

TEST_F(AnchorPropertyTest, ListsAnchorTypesInOrderOfTheirNames) {
    EXPECT_EQ(OviAnchorProperty_AddAnchorType(anchor, types[1]), 0);
    EXPECT_EQ(OviAnchorProperty_AddAnchorType(anchor, types[2]), 1);
    EXPECT_EQ(OviAnchorProperty_AddAnchorType(anchor, types[0]), 0);
    EXPECT_EQ(AnchorTypes(anchor), (Names{"Bolt", "Hook", "Rope"}));
    EXPECT_EQ(OviAnchorProperty_GetAnchorTypeAt(anchor, 3), nullptr);
    EXPECT_EQ(OviAnchorProperty_GetAnchorTypeAt(anchor, -1), nullptr);
}

TEST_F(AnchorPropertyTest, OverwritesTheTypeOfATakenName) {
    OviAnchorProperty_AddAnchorType(anchor, types[0]);
    OviAnchorProperty_AddAnchorType(anchor, types[1]);
    OviNamedObject* other = OviGroup_New("Hook");
    types.push_back(other);
    EXPECT_EQ(OviAnchorProperty_AddAnchorType(anchor, other), ~1);
    EXPECT_EQ(OviAnchorProperty_GetAnchorType(anchor, "Hook"), other);
    EXPECT_EQ(AnchorTypes(anchor), (Names{"Bolt", "Hook"}));
}

TEST_F(AnchorPropertyTest, RemovesTypesWithoutDeletingThem) {
    OviAnchorProperty_AddAnchorType(anchor, types[0]);
    OviAnchorProperty_AddAnchorType(anchor, types[1]);
    EXPECT_EQ(OviAnchorProperty_RemoveAnchorType(anchor, types[1]), 1);
    EXPECT_LT(OviAnchorProperty_RemoveAnchorType(anchor, types[1]), 0);
    EXPECT_STREQ(OviNamedObject_GetName(types[1]), "Hook");
    EXPECT_EQ(AnchorTypes(anchor), Names{"Bolt"});
}

TEST_F(AnchorPropertyTest, FindsTypesByExactlyTheirName) {
    OviAnchorProperty_AddAnchorType(anchor, types[0]);
    EXPECT_EQ(OviAnchorProperty_GetAnchorType(anchor, "Bolt"), types[0]);
    for (const char* name : {"bolt", "Bol", "Bolts", "", static_cast<const char*>(nullptr)})
        EXPECT_EQ(OviAnchorProperty_GetAnchorType(anchor, name), nullptr);
}

TEST_F(AnchorPropertyTest, FollowsTheNamesOfItsTypesAndForgetsThoseDeleted) {
    for (OviNamedObject* type : types)
        OviAnchorProperty_AddAnchorType(anchor, type);
    EXPECT_TRUE(OviNamedObject_SetName(types[0], "Zip"));
    EXPECT_EQ(AnchorTypes(anchor), (Names{"Hook", "Rope", "Zip"}));
    EXPECT_EQ(OviAnchorProperty_GetAnchorType(anchor, "Zip"), types[0]);
    EXPECT_EQ(OviAnchorProperty_GetAnchorType(anchor, "Hook"), types[1]);
    OviAnchorProperty* other = OviAnchorProperty_New("other", 1);
    OviAnchorProperty_AddAnchorType(other, types[2]);
    OviObject_Delete(types.back());
    types.pop_back();
    EXPECT_EQ(AnchorTypes(anchor), (Names{"Hook", "Zip"}));
    EXPECT_EQ(AnchorTypes(other), Names{});
    OviAnchorProperty_AddAnchorType(other, types[1]);
    OviObject_Delete(other);
    EXPECT_TRUE(OviNamedObject_SetName(types[1], "Claw"));
    EXPECT_EQ(AnchorTypes(anchor), (Names{"Claw", "Zip"}));
}

TEST_F(AnchorPropertyTest, ACopyKeepsTheSenseAndDropsTheTypes) {
    OviAnchorProperty_SetChild(anchor, true);
    OviNodeProperty_SetAncestor(anchor, "root");
    OviAnchorProperty_AddAnchorType(anchor, types[0]);
    OviAnchorProperty* copy = CloneOf(anchor);
    EXPECT_EQ(OviObject_GetClass(copy), OVI_CLASS_ANCHOR_PROPERTY);
    EXPECT_TRUE(OviAnchorProperty_IsChild(copy));
    EXPECT_STREQ(OviNodeProperty_GetAncestor(copy), "root");
    EXPECT_EQ(OviAnchorProperty_GetAnchorTypeCount(copy), 0);
    EXPECT_EQ(OviAnchorProperty_GetAnchorTypeCount(anchor), 1);
    OviObject_Delete(copy);
}

TEST_F(AnchorPropertyTest, DeletingItLeavesItsTypes) {
    OviAnchorProperty_AddAnchorType(anchor, types[0]);
    OviObject_Delete(anchor);
    anchor = nullptr;
    EXPECT_STREQ(OviNamedObject_GetName(types[0]), "Bolt");
}

} // namespace
