// The views of templates.

#include "api/Schema.h"

namespace {

class TemplateViewsTest : public SchemaTest {
protected:
    void SetUp() override {
        SchemaTest::SetUp();
        mesh = Make("Mesh");
    }

    static Names ViewsOf(OviTemplate* self) {
        Names names;
        for (int i = 0; i < OviTemplate_GetViewCount(self); ++i)
            names.push_back(NameOf(OviTemplate_GetViewAt(self, i)));
        return names;
    }

    OviView* View(const char* name) { return OviTemplate_GetView(mesh, name, false); }

    OviTemplate* mesh = nullptr;
};

TEST_F(TemplateViewsTest, ViewsAreMadeInNameOrder) {
    EXPECT_EQ(OviTemplate_CreateView(mesh, "Main"), 0);
    EXPECT_EQ(OviTemplate_CreateView(mesh, "Small"), 1);
    EXPECT_EQ(OviTemplate_CreateView(mesh, "Large"), 0);
    EXPECT_EQ(ViewsOf(mesh), (Names{"Large", "Main", "Small"}));
    EXPECT_EQ(OviObject_GetClass(View("Main")), OVI_CLASS_VIEW);
}

TEST_F(TemplateViewsTest, InvalidNamesAreRefused) {
    for (const char* name : {"", "two words", "a.b", static_cast<const char*>(nullptr)})
        EXPECT_EQ(OviTemplate_CreateView(mesh, name), -1);
    EXPECT_EQ(OviTemplate_CreateView(nullptr, "Main"), -1);
    EXPECT_EQ(OviTemplate_GetViewCount(mesh), 0);
}

TEST_F(TemplateViewsTest, AViewOfATakenNameReplacesTheOlderOneWhichIsNotDeleted) {
    OviTemplate_CreateView(mesh, "A");
    OviTemplate_CreateView(mesh, "Main");
    OviView* older = View("Main");
    EXPECT_EQ(OviTemplate_CreateView(mesh, "Main"), ~1);
    EXPECT_NE(View("Main"), older);
    EXPECT_EQ(ViewsOf(mesh), (Names{"A", "Main"}));
    EXPECT_STREQ(OviNamedObject_GetName(older), "Main");
    OviView* newer = View("Main");
    OviObject_Delete(older); // and this does not take the newer one out
    EXPECT_EQ(View("Main"), newer);
}

TEST_F(TemplateViewsTest, ARemovedViewBelongsToTheCaller) {
    OviTemplate_CreateView(mesh, "A");
    OviTemplate_CreateView(mesh, "B");
    OviView* view = View("B");
    EXPECT_EQ(OviTemplate_RemoveView(mesh, view), 1);
    EXPECT_EQ(OviTemplate_RemoveView(mesh, view), ~1);
    EXPECT_EQ(ViewsOf(mesh), Names{"A"});
    EXPECT_EQ(OviTemplate_AddView(mesh, view), 1);
    EXPECT_EQ(View("B"), view);
    OviTemplate_RemoveView(mesh, view);
    OviObject_Delete(mesh);
    EXPECT_STREQ(OviNamedObject_GetName(view), "B");
    OviObject_Delete(view);
}

TEST_F(TemplateViewsTest, ViewsAreInheritedLikeProperties) {
    OviTemplate* a = Make("A", {mesh});
    OviTemplate* b = Make("B");
    OviTemplate* heir = Make("Heir", {b, a});
    OviTemplate_CreateView(mesh, "Main");
    OviTemplate_CreateView(b, "Main");
    EXPECT_EQ(OviTemplate_GetView(heir, "Main", true), View("Main"));
    EXPECT_EQ(OviTemplate_GetView(heir, "Main", false), nullptr);
    EXPECT_EQ(OviTemplate_GetView(heir, "main", true), nullptr);
    EXPECT_EQ(OviTemplate_GetView(heir, nullptr, true), nullptr);
    EXPECT_EQ(OviTemplate_GetView(nullptr, "Main", true), nullptr);
}

TEST_F(TemplateViewsTest, ARenamedViewIsMovedToItsPlace) {
    for (const char* name : {"A", "B", "C"})
        OviTemplate_CreateView(mesh, name);
    OviView* view = View("A");
    EXPECT_TRUE(OviNamedObject_SetName(view, "Z"));
    EXPECT_EQ(ViewsOf(mesh), (Names{"B", "C", "Z"}));
    EXPECT_EQ(View("Z"), view);
    EXPECT_FALSE(OviNamedObject_SetName(view, "Z Z"));
    EXPECT_EQ(View("Z"), view);
}

TEST_F(TemplateViewsTest, ACloneIsNotListedAndDoesNotCopyTheLock) {
    OviTemplate_CreateView(mesh, "Main");
    OviNamedObject_SetLabel(View("Main"), nullptr, "Main view");
    OviLockable_SetLockState(OviObject_GetLockable(View("Main")), 7);
    OviView* clone = CloneOf(View("Main"));
    EXPECT_EQ(OviObject_GetClass(clone), OVI_CLASS_VIEW);
    EXPECT_STREQ(OviNamedObject_GetLabel(clone, nullptr), "Main view");
    EXPECT_EQ(OviLockable_GetLockState(OviObject_GetLockable(clone)), 0);
    OviNamedObject_SetName(clone, "Other");
    EXPECT_EQ(ViewsOf(mesh), Names{"Main"});
    EXPECT_EQ(OviTemplate_AddView(mesh, clone), 1);
    EXPECT_EQ(ViewsOf(mesh), (Names{"Main", "Other"}));
}

// -- odd orders of deletion -----------------------------------------------------------------------

TEST_F(TemplateViewsTest, AViewDeletedByHandLeavesItsTemplate) {
    OviTemplate_CreateView(mesh, "A");
    OviTemplate_CreateView(mesh, "B");
    OviObject_Delete(View("A"));
    EXPECT_EQ(ViewsOf(mesh), Names{"B"});
}

TEST_F(TemplateViewsTest, ViewsThatAreNotListedOutliveTheTemplateTheyName) {
    OviTemplate_CreateView(mesh, "Main");
    OviView* replaced = View("Main");
    OviView* clone = CloneOf(replaced);
    OviTemplate_CreateView(mesh, "Main");
    OviObject_Delete(mesh);
    for (OviView* view : {replaced, clone}) {
        EXPECT_TRUE(OviNamedObject_SetName(view, "Free"));
        OviView* again = CloneOf(view);
        OviObject_Delete(view);
        OviObject_Delete(again);
    }
}

TEST_F(TemplateViewsTest, AViewAddedToTwoTemplatesIsDeletedOnce) {
    OviTemplate* other = Make("Other");
    OviTemplate_CreateView(mesh, "Main");
    OviView* view = View("Main");
    EXPECT_EQ(OviTemplate_AddView(other, view), 0);
    OviNamedObject_SetName(view, "Both");
    EXPECT_EQ(ViewsOf(mesh), Names{"Both"});
    EXPECT_EQ(ViewsOf(other), Names{"Both"});
    OviObject_Delete(mesh);
    EXPECT_EQ(ViewsOf(other), Names{"Both"});
    OviObject_Delete(other);
}

TEST_F(TemplateViewsTest, AViewThatIsAnItemOfAnotherIsDeletedOnce) {
    for (const char* outer : {"A", "B"}) {
        OviTemplate* other = Make((std::string("Other") + outer).c_str());
        OviTemplate_CreateView(other, "A");
        OviTemplate_CreateView(other, "B");
        OviTemplate_CreateView(other, "C");
        OviView* group = OviTemplate_GetView(other, outer, false);
        OviView* item = OviTemplate_GetView(other, *outer == 'A' ? "B" : "A", false);
        OviGroup_AddViewItemAt(group, item, -1);
        OviGroup_AddViewItemAt(OviTemplate_GetView(other, "C", false), item, -1);
        OviObject_Delete(other);
    }
    OviTemplate_CreateView(mesh, "Main");
    OviTemplate_CreateView(Make("Outer"), "Main");
    OviView* outer = OviTemplate_GetView(OviTemplateManager_GetTemplate("Outer"), "Main", false);
    OviGroup_AddViewItemAt(outer, View("Main"), -1);
    OviObject_Delete(OviTemplateManager_GetTemplate("Outer"));
    EXPECT_EQ(ViewsOf(mesh), Names{});
}

TEST_F(TemplateViewsTest, NullAndIndicesOutOfRangeAreHarmless) {
    OviTemplate_CreateView(mesh, "Main");
    EXPECT_EQ(OviTemplate_AddView(mesh, nullptr), -1);
    EXPECT_EQ(OviTemplate_AddView(nullptr, View("Main")), -1);
    EXPECT_EQ(OviTemplate_RemoveView(mesh, nullptr), -1);
    EXPECT_EQ(OviTemplate_GetViewCount(nullptr), 0);
    EXPECT_EQ(OviTemplate_GetViewAt(mesh, -1), nullptr);
    EXPECT_EQ(OviTemplate_GetViewAt(mesh, 1), nullptr);
    EXPECT_EQ(OviTemplate_GetViewAt(nullptr, 0), nullptr);
}

} // namespace
