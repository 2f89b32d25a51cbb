// View properties and views as view items.

#include "api/Schema.h"

namespace {

class ViewPropertyTest : public SchemaTest {
protected:
    void SetUp() override {
        SchemaTest::SetUp();
        mesh = Make("Mesh");
        size = AddAttribute(mesh, "size");
    }

    static OviView* ViewOf(OviTemplate* owner, const char* name) {
        OviTemplate_CreateView(owner, name);
        return OviTemplate_GetView(owner, name, false);
    }

    OviTemplate* mesh = nullptr;
    OviProperty* size = nullptr;
};

TEST_F(ViewPropertyTest, IsAViewItemThatRefersToAProperty) {
    OviViewProperty* leaf = OviViewProperty_New("leaf", size);
    EXPECT_EQ(OviObject_GetClass(leaf), OVI_CLASS_VIEW_PROPERTY);
    for (int id : {38, 37, 31, 0})
        EXPECT_TRUE(OviObject_ImplementsClass(leaf, id)) << id;
    for (int id : {36, 39, 15})
        EXPECT_FALSE(OviObject_ImplementsClass(leaf, id)) << id;
    EXPECT_EQ(OviViewProperty_GetProperty(leaf), size);
    EXPECT_EQ(OviLockable_GetLockState(OviObject_GetLockable(leaf)), 0);
    OviObject_Delete(leaf);
    EXPECT_EQ(OviTemplate_GetProperty(mesh, "size"), size);
}

TEST_F(ViewPropertyTest, NeedsAValidNameButNoProperty) {
    for (const char* name : {"", "two words", static_cast<const char*>(nullptr)})
        EXPECT_EQ(OviViewProperty_New(name, size), nullptr);
    OviViewProperty* leaf = OviViewProperty_New("leaf", nullptr);
    EXPECT_EQ(OviViewProperty_GetProperty(leaf), nullptr);
    OviViewProperty_SetProperty(leaf, size);
    EXPECT_EQ(OviViewProperty_GetProperty(leaf), size);
    OviViewProperty_SetProperty(leaf, nullptr);
    EXPECT_EQ(OviViewProperty_GetProperty(leaf), nullptr);
    OviObject_Delete(leaf);
}

TEST_F(ViewPropertyTest, ACopyRefersToTheSameProperty) {
    OviViewProperty* leaf = OviViewProperty_New("leaf", size);
    OviLockable_SetLockState(OviObject_GetLockable(leaf), 3);
    OviViewProperty* copy = CloneOf(leaf);
    OviObject_Delete(leaf);
    EXPECT_EQ(OviObject_GetClass(copy), OVI_CLASS_VIEW_PROPERTY);
    EXPECT_EQ(OviViewProperty_GetProperty(copy), size);
    EXPECT_EQ(OviLockable_GetLockState(OviObject_GetLockable(copy)), 0);
    OviObject_Delete(copy);
}

TEST_F(ViewPropertyTest, WhenThePropertyDiesItRefersToNone) {
    OviView* view = ViewOf(mesh, "main");
    OviViewProperty* first = OviViewProperty_New("first", size);
    OviViewProperty* second = OviViewProperty_New("second", size);
    OviGroup_AddViewItemAt(view, first, -1);
    OviGroup_AddViewItemAt(view, second, -1);
    OviTemplate_RemoveProperty(mesh, size);
    EXPECT_EQ(OviViewProperty_GetProperty(first), size);
    OviObject_Delete(size);
    EXPECT_EQ(OviViewProperty_GetProperty(first), nullptr);
    EXPECT_EQ(OviViewProperty_GetProperty(second), nullptr);
    OviViewProperty* copy = CloneOf(second);
    EXPECT_EQ(OviViewProperty_GetProperty(copy), nullptr);
    OviObject_Delete(copy);
}

TEST_F(ViewPropertyTest, AViewIsAGroup) {
    OviView* view = ViewOf(mesh, "main");
    EXPECT_EQ(OviObject_GetClass(view), OVI_CLASS_VIEW);
    for (int id : {39, 36, 37, 31, 0})
        EXPECT_TRUE(OviObject_ImplementsClass(view, id)) << id;
    OviGroup_AddViewItemAt(view, OviGroup_New("a"), -1);
    EXPECT_EQ(OviGroup_GetViewItemCount(view), 1);
}

TEST_F(ViewPropertyTest, ACopyOfAViewHasCopiesOfItsItems) {
    OviView* view = ViewOf(mesh, "main");
    OviGroup_AddViewItemAt(view, OviViewProperty_New("leaf", size), -1);
    OviLockable_SetLockState(OviObject_GetLockable(view), 4);
    OviView* copy = CloneOf(view);
    EXPECT_EQ(OviObject_GetClass(copy), OVI_CLASS_VIEW);
    EXPECT_EQ(OviLockable_GetLockState(OviObject_GetLockable(copy)), 0);
    ASSERT_EQ(OviGroup_GetViewItemCount(copy), 1);
    auto* leaf = static_cast<OviViewProperty*>(OviGroup_GetViewItemAt(copy, 0));
    EXPECT_NE(leaf, OviGroup_GetViewItemAt(view, 0));
    EXPECT_EQ(OviViewProperty_GetProperty(leaf), size);
    OviObject_Delete(copy);
    EXPECT_EQ(OviTemplate_GetViewCount(mesh), 1);
}

TEST_F(ViewPropertyTest, AViewAmongTheItemsOfAGroupIsCopiedAsAView) {
    OviGroup* group = OviGroup_New("outer");
    OviView* inner = CloneOf(ViewOf(mesh, "main"));
    OviGroup_AddViewItemAt(inner, OviGroup_New("leaf"), -1);
    OviGroup_AddViewItemAt(group, inner, -1);
    OviGroup* copy = CloneOf(group);
    OviViewItem* copied = OviGroup_GetViewItemAt(copy, 0);
    EXPECT_EQ(OviObject_GetClass(copied), OVI_CLASS_VIEW);
    EXPECT_EQ(OviGroup_GetViewItemCount(static_cast<OviGroup*>(copied)), 1);
    OviObject_Delete(copy);
    OviObject_Delete(group);
}

TEST_F(ViewPropertyTest, ATemplatesViewsDieWithIt) {
    OviView* view = ViewOf(mesh, "main");
    OviGroup_AddViewItemAt(view, OviViewProperty_New("leaf", size), -1);
    OviTemplateManager_RemoveTemplate(mesh);
    OviObject_Delete(mesh);
}

} // namespace
