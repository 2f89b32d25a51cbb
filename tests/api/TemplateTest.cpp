// Parents and children of templates.

#include "api/Schema.h"

namespace {

class TemplateTest : public SchemaTest {
protected:
    void SetUp() override {
        SchemaTest::SetUp();
        root = OviTemplateManager_GetRoot();
    }

    OviTemplate* root = nullptr;
};

TEST_F(TemplateTest, ATemplateWithoutParentsHasTheRoot) {
    OviTemplate* made = Make("Mesh");
    EXPECT_EQ(ParentsOf(made), Names{"Object#1"});
    EXPECT_EQ(ChildrenOf(root), Names{"Mesh#1"});
    EXPECT_EQ(OviTemplate_GetVersion(made), 1);
    EXPECT_EQ(OviTemplate_GetLatestVersion(made), 1);
}

TEST_F(TemplateTest, TheRootGivesWayToAParentAndComesBackWithItsRemoval) {
    OviTemplate* base = Make("Base");
    OviTemplate* made = Make("Mesh");
    EXPECT_EQ(OviTemplate_AddParent(made, base), 0);
    EXPECT_EQ(ParentsOf(made), Names{"Base#1"});
    EXPECT_EQ(ChildrenOf(root), Names{"Base#1"});
    EXPECT_EQ(ChildrenOf(base), Names{"Mesh#1"});
    EXPECT_EQ(OviTemplate_RemoveParent(made, base), 0);
    EXPECT_EQ(ParentsOf(made), Names{"Object#1"});
    EXPECT_EQ(ChildrenOf(base), Names{});
}

TEST_F(TemplateTest, TheRootGivesWayOnlyWhenItIsTheOnlyParent) {
    OviTemplate* a = Make("A");
    OviTemplate* made = Make("Mesh", {a});
    EXPECT_EQ(OviTemplate_AddParent(made, root), 1);
    EXPECT_EQ(OviTemplate_AddParent(made, Make("B")), 1);
    EXPECT_EQ(ParentsOf(made), (Names{"A#1", "B#1", "Object#1"}));
}

TEST_F(TemplateTest, RemovingTheRootLeavesNoParent) {
    OviTemplate* made = Make("Mesh");
    EXPECT_EQ(OviTemplate_RemoveParent(made, root), 0);
    EXPECT_EQ(ParentsOf(made), Names{});
    EXPECT_EQ(ChildrenOf(root), Names{});
}

TEST_F(TemplateTest, RemovingAForeignParentBringsTheRootBackWhenThereIsNone) {
    OviTemplate* made = Make("Mesh");
    OviTemplate* other = Make("Other");
    OviTemplate_RemoveParent(made, root);
    EXPECT_EQ(OviTemplate_RemoveParent(made, other), ~0);
    EXPECT_EQ(ParentsOf(made), Names{"Object#1"});
    EXPECT_EQ(OviTemplate_RemoveParent(made, other), ~1);
    EXPECT_EQ(ParentsOf(made), Names{"Object#1"});
}

TEST_F(TemplateTest, ParentsAndChildrenStandInByteOrderOfTheirKeys) {
    OviTemplate* made = Make("Mesh", {Make("b"), Make("C"), Make("a"), Make("A")});
    EXPECT_EQ(ParentsOf(made), (Names{"A#1", "C#1", "a#1", "b#1"}));
    OviTemplate* base = Make("Base");
    for (const char* name : {"z", "Z", "pkg.Y"})
        Make(name, {base});
    EXPECT_EQ(ChildrenOf(base), (Names{"Z#1", "pkg.Y#1", "z#1"}));
}

TEST_F(TemplateTest, AddParentGivesThePlaceOfTheNewParent) {
    OviTemplate* made = Make("Mesh");
    EXPECT_EQ(OviTemplate_AddParent(made, Make("B")), 0);
    EXPECT_EQ(OviTemplate_AddParent(made, Make("D")), 1);
    EXPECT_EQ(OviTemplate_AddParent(made, Make("C")), 1);
    EXPECT_EQ(OviTemplate_AddParent(made, Make("A")), 0);
    EXPECT_EQ(OviTemplate_RemoveParent(made, OviTemplate_GetParentAt(made, 2)), 2);
}

TEST_F(TemplateTest, AddingAParentTwiceGivesTheComplementOfItsPlace) {
    OviTemplate* a = Make("A");
    OviTemplate* b = Make("B");
    OviTemplate* made = Make("Mesh", {a, b});
    EXPECT_EQ(OviTemplate_AddParent(made, a), ~0);
    EXPECT_EQ(OviTemplate_AddParent(made, b), ~1);
    EXPECT_EQ(OviTemplate_GetParentCount(made), 2);
    EXPECT_EQ(ChildrenOf(b), Names{"Mesh#1"});
}

TEST_F(TemplateTest, CirclesAreRefused) {
    OviTemplate* a = Make("A");
    OviTemplate* b = Make("B", {a});
    OviTemplate* c = Make("C", {b});
    EXPECT_EQ(OviTemplate_AddParent(a, a), -1);
    EXPECT_EQ(OviTemplate_AddParent(a, b), -1);
    EXPECT_EQ(OviTemplate_AddParent(a, c), -1);
    EXPECT_EQ(OviTemplate_AddParent(root, c), -1);
    EXPECT_EQ(ParentsOf(a), Names{"Object#1"});
    EXPECT_EQ(ChildrenOf(c), Names{});
}

TEST_F(TemplateTest, ParentsAndChildrenAreFoundByTheirWholeKey) {
    OviTemplate* base = Make("pkg.Base");
    OviTemplate* made = Make("Mesh", {base});
    EXPECT_EQ(OviTemplate_GetParent(made, "pkg.Base#1"), base);
    for (const char* wrong : {"Base", "pkg.Base", "Base#1", "pkg.Base#2", "PKG.BASE#1", ""})
        EXPECT_EQ(OviTemplate_GetParent(made, wrong), nullptr) << wrong;
    EXPECT_EQ(OviTemplate_GetChild(base, "Mesh#1"), made);
    EXPECT_EQ(OviTemplate_GetChild(base, "Mesh"), nullptr);
}

TEST_F(TemplateTest, IsChildOfSeesDirectParentsAndIsDescendantOfAllAncestors) {
    OviTemplate* a = Make("A");
    OviTemplate* b = Make("B", {a, Make("Other")});
    OviTemplate* c = Make("C", {b});
    EXPECT_TRUE(OviTemplate_IsChildOf(c, b));
    EXPECT_FALSE(OviTemplate_IsChildOf(c, a));
    EXPECT_TRUE(OviTemplate_IsDescendantOf(c, b));
    EXPECT_TRUE(OviTemplate_IsDescendantOf(c, a));
    EXPECT_TRUE(OviTemplate_IsDescendantOf(c, root));
    EXPECT_FALSE(OviTemplate_IsDescendantOf(c, c));
    EXPECT_FALSE(OviTemplate_IsDescendantOf(a, c));
}

TEST_F(TemplateTest, IdentityAsAParentGoesByTheKey) {
    OviTemplate* base = Make("Base");
    OviTemplate* made = Make("Mesh", {base});
    OviTemplate* same = CloneOf(base);
    EXPECT_TRUE(OviTemplate_IsChildOf(made, same));
    EXPECT_TRUE(OviTemplate_IsDescendantOf(made, same));
    OviObject_Delete(same);
}

TEST_F(TemplateTest, AParentOfTheSameKeyIsOverwrittenWithoutAChildLink) {
    OviTemplate* base = Make("Base");
    OviTemplate* made = Make("Mesh", {base});
    OviTemplate* twin = CloneOf(base);
    EXPECT_EQ(OviTemplate_AddParent(made, twin), ~0);
    EXPECT_EQ(OviTemplate_GetParentAt(made, 0), twin);
    EXPECT_EQ(OviTemplate_GetChildCount(twin), 0);
    EXPECT_EQ(ChildrenOf(base), Names{"Mesh#1"});
    OviObject_Delete(twin);
    EXPECT_EQ(ParentsOf(made), Names{"Object#1"});
}

TEST_F(TemplateTest, ATemplateIsAType) {
    OviTemplate* made = Make("geo.Mesh");
    EXPECT_EQ(OviObject_GetClass(made), OVI_CLASS_TEMPLATE);
    for (int id = -1; id < 50; ++id) {
        const bool implemented = id == OVI_CLASS_TEMPLATE || id == OVI_CLASS_TYPE ||
                                 id == OVI_CLASS_NAMED_OBJECT || id == OVI_CLASS_OBJECT;
        EXPECT_EQ(OviObject_ImplementsClass(made, id), implemented) << id;
    }
    EXPECT_STREQ(OviNamedObject_GetName(made), "Mesh");
    EXPECT_STREQ(OviType_GetPackageName(made), "geo");
    EXPECT_STREQ(OviType_GetFullName(made), "geo.Mesh");
}

TEST_F(TemplateTest, NullAndIndicesOutOfRangeAreHarmless) {
    OviTemplate* made = Make("Mesh");
    EXPECT_EQ(OviTemplate_AddParent(nullptr, made), -1);
    EXPECT_EQ(OviTemplate_AddParent(made, nullptr), -1);
    EXPECT_EQ(OviTemplate_RemoveParent(made, nullptr), -1);
    EXPECT_EQ(OviTemplate_GetParentCount(nullptr), 0);
    EXPECT_EQ(OviTemplate_GetParentAt(made, -1), nullptr);
    EXPECT_EQ(OviTemplate_GetParentAt(made, 1), nullptr);
    EXPECT_EQ(OviTemplate_GetChildAt(made, 0), nullptr);
    EXPECT_EQ(OviTemplate_GetParent(made, nullptr), nullptr);
    EXPECT_EQ(OviTemplate_GetChild(nullptr, "x"), nullptr);
    EXPECT_FALSE(OviTemplate_IsChildOf(made, nullptr));
    EXPECT_FALSE(OviTemplate_IsDescendantOf(nullptr, made));
    EXPECT_EQ(OviTemplate_GetVersion(nullptr), 0);
    EXPECT_EQ(ParentsOf(made), Names{"Object#1"});
}

// -- odd orders of deletion -----------------------------------------------------------------------

TEST_F(TemplateTest, ChildrenOfADeletedTemplateFallBackToTheRoot) {
    OviTemplate* base = Make("Base");
    OviTemplate* only = Make("Only", {base});
    OviTemplate* both = Make("Both", {base, Make("Other")});
    OviObject_Delete(base);
    EXPECT_EQ(ParentsOf(only), Names{"Object#1"});
    EXPECT_EQ(ParentsOf(both), Names{"Other#1"});
    EXPECT_EQ(ChildrenOf(root), (Names{"Only#1", "Other#1"}));
    EXPECT_EQ(OviTemplateManager_GetTemplate("Base"), nullptr);
}

TEST_F(TemplateTest, TheRootCannotBeDeletedByHand) {
    OviTemplate* made = Make("Mesh");
    OviObject_Delete(root);
    EXPECT_EQ(OviTemplateManager_GetRoot(), root);
    EXPECT_EQ(ParentsOf(made), Names{"Object#1"});
    EXPECT_EQ(OviTemplateManager_RemoveTemplate(root), -1);
    EXPECT_EQ(OviTemplateManager_GetTemplate("Object"), root);
}

// A clone has its source's key and takes its place among the children of the parents.
TEST_F(TemplateTest, ASourceThatItsCloneHadReplacedAsAChildComesBackWithTheClonesEnd) {
    OviTemplate* base = Make("Base");
    OviTemplate* made = Make("Mesh", {base});
    OviTemplate* twin = CloneOf(made);
    EXPECT_EQ(OviTemplate_GetChildAt(base, 0), twin);
    EXPECT_EQ(OviTemplate_GetChildCount(base), 1);
    OviObject_Delete(twin);
    EXPECT_EQ(OviTemplate_GetChildAt(base, 0), made);
}

TEST_F(TemplateTest, ASourceHiddenByItsCloneCanBeRenamedAndDeleted) {
    OviTemplate* base = Make("Base");
    OviTemplate* made = Make("Mesh", {base});
    OviTemplate* twin = CloneOf(made);
    EXPECT_TRUE(OviNamedObject_SetName(made, "Renamed"));
    EXPECT_EQ(ChildrenOf(base), (Names{"Mesh#1", "Renamed#1"}));
    OviObject_Delete(made);
    EXPECT_EQ(ChildrenOf(base), Names{"Mesh#1"});
    OviObject_Delete(base);
    EXPECT_EQ(ParentsOf(twin), Names{"Object#1"});
    OviObject_Delete(twin);
}

TEST_F(TemplateTest, AParentWhosePlaceAnotherTookLosesTheChildThatDies) {
    OviTemplate* base = Make("Base");
    OviTemplate* made = Make("Mesh", {base});
    OviTemplate* twin = CloneOf(base);
    OviTemplate_AddParent(made, twin);
    OviObject_Delete(made);
    EXPECT_EQ(ChildrenOf(base), Names{});
    EXPECT_EQ(ChildrenOf(twin), Names{});
    OviObject_Delete(twin);
}

TEST_F(TemplateTest, AParentWhosePlaceAnotherTookStaysReplacedWhenItIsRenamed) {
    OviTemplate* base = Make("Base");
    OviTemplate* made = Make("Mesh", {base});
    OviTemplate* twin = CloneOf(base);
    OviTemplate_AddParent(made, twin);
    OviNamedObject_SetName(base, "Renamed");
    EXPECT_EQ(ParentsOf(made), Names{"Base#1"});
    OviNamedObject_SetName(twin, "Zwilling");
    EXPECT_EQ(ParentsOf(made), Names{"Zwilling#1"});
    EXPECT_EQ(OviTemplate_GetParent(made, "Zwilling#1"), twin);
    OviObject_Delete(twin);
    EXPECT_EQ(ParentsOf(made), Names{"Object#1"});
    OviObject_Delete(base);
    OviObject_Delete(made);
}

TEST_F(TemplateTest, TemplatesCanBeDeletedInAnyOrder) {
    const char* orders[] = {"ABCD", "DCBA", "BDAC", "CADB"};
    for (const char* order : orders) {
        Make("D", {Make("B", {Make("A")}), Make("C", {Make("A")})});
        for (const char* name = order; *name; ++name) {
            const char text[] = {*name, '\0'};
            OviObject_Delete(OviTemplateManager_GetTemplate(text));
        }
        EXPECT_EQ(Templates(), Names{"Object#1"}) << order;
        EXPECT_EQ(ChildrenOf(root), Names{}) << order;
    }
}

} // namespace
