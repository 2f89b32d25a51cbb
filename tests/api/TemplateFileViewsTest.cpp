// Views, groups and view properties in template files.

#include "api/Schema.h"

namespace {

class TemplateFileViewsTest : public SchemaTest {
protected:
    static constexpr const char* kMesh = "<template name='Base'><node name='body'/></template>"
                                         "<template name='Mesh'><extends template='Base'/>"
                                         "<attribute name='size' type='INT32'/></template>";

    Names Load(const std::string& elements) {
        path_ = WriteSchema("F.template", std::string("<templates>") + kMesh + "\n" + elements +
                                              "\n</templates>");
        EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(path_.c_str()));
        return Errors();
    }

    static OviView* View(const char* name = "main", const char* owner = "Mesh",
                         uint32_t version = 1) {
        return OviTemplate_GetView(OviTemplateManager_GetTemplateVersion(owner, version), name,
                                   false);
    }

    /// The tree of a group, such as "main(group(size) body)".
    static std::string Tree(OviViewItem* item) {
        std::string text = NameOf(item);
        if (!OviObject_ImplementsClass(item, OVI_CLASS_GROUP))
            return text;
        auto* group = static_cast<OviGroup*>(item);
        text += "(";
        for (int i = 0; i < OviGroup_GetViewItemCount(group); ++i)
            text += (i ? " " : "") + Tree(OviGroup_GetViewItemAt(group, i));
        return text + ")";
    }

    /// A view with groups one inside the other.
    static std::string DeepView(int depth) {
        std::string text = "<view name='main' template='Mesh'>";
        for (int i = 0; i < depth; ++i)
            text += "<group name='g'>";
        for (int i = 0; i < depth; ++i)
            text += "</group>";
        return text + "</view>";
    }

    static int DepthOf(OviGroup* group) {
        int depth = 0;
        for (; OviGroup_GetViewItemCount(group) > 0; ++depth)
            group = static_cast<OviGroup*>(OviGroup_GetViewItemAt(group, 0));
        return depth;
    }

    /// Saves the file, loads the saved one into an empty registry without a finding, and gives its
    /// text.
    std::string SaveAndLoad() {
        const std::string output =
            PathOf(path_.find("out.template") == std::string::npos ? "out.template"
                                                                   : "again/out.template");
        EXPECT_TRUE(OviTemplateManager_SaveTemplateFile(path_.c_str(), output.c_str()));
        Ovi_Terminate();
        Ovi_Initialize();
        OviErrorManager_Clear();
        EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(output.c_str()));
        path_ = output;
        EXPECT_EQ(Errors(), Names{}) << ReadFile(output);
        return ReadFile(output);
    }

    std::string path_;
};

TEST_F(TemplateFileViewsTest, AViewHoldsGroupsAndPropertiesInOrder) {
    EXPECT_EQ(
        Load("<view name='main' template='Mesh'><property name='size'/><group name='g'>"
             "<property name='body'/><group name='h'/></group><property name='body'/></view>"),
        Names{});
    ASSERT_NE(View(), nullptr);
    EXPECT_EQ(Tree(View()), "main(size g(body h()) body)");
    auto* leaf = static_cast<OviViewProperty*>(OviGroup_GetViewItemAt(View(), 0));
    EXPECT_EQ(OviViewProperty_GetProperty(leaf),
              OviTemplate_GetProperty(OviTemplateManager_GetTemplate("Mesh"), "size"));
}

TEST_F(TemplateFileViewsTest, AViewBelongsToExactlyTheVersionItNames) {
    EXPECT_EQ(Load("<template name='Mesh'><node name='new' version='2'/></template>"
                   "<view name='first' template='Mesh'/>"
                   "<view name='second' template='Mesh' version='2'><property name='new'/></view>"),
              Names{});
    EXPECT_NE(View("first", "Mesh", 1), nullptr);
    EXPECT_EQ(View("second", "Mesh", 1), nullptr);
    EXPECT_EQ(Tree(View("second", "Mesh", 2)), "second(new)");
}

TEST_F(TemplateFileViewsTest, TheTemplateIsFoundThroughTheUsingList) {
    WriteFile("lib/p/P.template", "<?xml version='1.0'?><templates package='p'>"
                                  "<template name='Far'/></templates>");
    OviTemplateManager_AddSearchPath((Directory() + "/lib").c_str(), false);
    EXPECT_EQ(Load("<using package='p'/><view name='main' template='Far'/>"
                   "<view name='full' template='p.Far'/>"),
              Names{});
    EXPECT_NE(View("main", "p.Far"), nullptr);
    EXPECT_NE(View("full", "p.Far"), nullptr);
}

TEST_F(TemplateFileViewsTest, TextsAndCommentsGoToTheCurrentItem) {
    EXPECT_EQ(Load("<!--v--><view name='main' template='Mesh'><label>V</label><!--g-->"
                   "<group name='g'><label>G</label><property name='size'><label>P</label>"
                   "</property><description language='de'>GD</description></group>"
                   "<description>VD</description></view>"),
              Names{});
    OviViewItem* group = OviGroup_GetViewItemAt(View(), 0);
    OviViewItem* leaf = OviGroup_GetViewItemAt(static_cast<OviGroup*>(group), 0);
    EXPECT_STREQ(OviNamedObject_GetLabel(View(), nullptr), "V");
    EXPECT_STREQ(OviNamedObject_GetDescription(View(), nullptr), "VD");
    EXPECT_STREQ(OviNamedObject_GetComment(View()), "v");
    EXPECT_STREQ(OviNamedObject_GetLabel(group, nullptr), "G");
    EXPECT_STREQ(OviNamedObject_GetDescription(group, "de"), "GD");
    EXPECT_STREQ(OviNamedObject_GetComment(group), "g");
    EXPECT_STREQ(OviNamedObject_GetLabel(leaf, nullptr), "P");
}

TEST_F(TemplateFileViewsTest, TextsGoToTheMemberBeforeTheViewItemBeforeTheTemplate) {
    EXPECT_EQ(Load("<template name='T'><attribute name='a' type='INT32'>"
                   "<view name='v' template='Mesh'><label>x</label></view></attribute>"
                   "<view name='w' template='Mesh'><attribute name='b' type='INT32'>"
                   "<label>y</label></attribute><label>z</label></view><label>t</label>"
                   "</template>"),
              Names{});
    OviTemplate* type = OviTemplateManager_GetTemplate("T");
    EXPECT_STREQ(OviNamedObject_GetLabel(OviTemplate_GetProperty(type, "a"), nullptr), "x");
    EXPECT_EQ(OviNamedObject_GetLabelCount(View("v")), 0) << "though it is the innermost";
    EXPECT_STREQ(OviNamedObject_GetLabel(OviTemplate_GetProperty(type, "b"), nullptr), "y");
    EXPECT_STREQ(OviNamedObject_GetLabel(View("w"), nullptr), "z");
    EXPECT_STREQ(OviNamedObject_GetLabel(type, nullptr), "t");
}

TEST_F(TemplateFileViewsTest, TheSecondViewOfANameTakesThePlace) {
    EXPECT_EQ(Load("<view name='main' template='Mesh'><group name='a'/></view>"
                   "<view name='main' template='Mesh'><group name='b'/></view>"),
              Names{});
    EXPECT_EQ(Tree(View()), "main(b())");
}

TEST_F(TemplateFileViewsTest, FaultsAreReported) {
    const std::string rule = "'. Valid characters must be in the range [A-Z][a-z][0-9][_]. ";
    EXPECT_EQ(
        Load("<group name='g'/>\n<property name='size'/>\n<view template='Mesh'/>\n"
             "<view name='v'/>\n<view name='a b' template='Mesh'/>\n"
             "<view name='v' template='No'/>\n<view name='v' template='Mesh' version='2'/>\n"
             "<view name='main' template='Mesh'><group/></view>\n"
             "<view name='m2' template='Mesh'><group name='a-b'/></view>\n"
             "<view name='m3' template='Mesh'><property/>\n<property name='no'/></view>\n"
             "<view name='m4' template='Mesh'><view name='in' template='Mesh'/></view>\n"
             "<label>x</label>"),
        (Names{"1 3 <group> must occur inside a <view> or a <group> element",
               "1 4 <property> must occur inside a <view> or a <group> element",
               "1 5 <view> requires a 'name' attribute",
               "1 6 <view> requires a 'template' attribute",
               "1 7 Invalid view name: 'a b" + rule + "Ignoring view.",
               "1 8 View 'v' referring to unknown template 'No'",
               "1 9 View 'v' referring to unknown template 'Mesh'",
               "1 10 <group> requires a 'name' attribute",
               "1 11 Invalid group name: 'a-b" + rule + "Ignoring group.",
               "1 12 <property> requires a 'name' attribute", "1 13 Unknown property: no",
               "1 14 Unexpected nested <view> element",
               "1 15 <label> must occur inside a <template>, <attribute>, <view>, <group>, or a "
               "<property> element"}));
    EXPECT_EQ(View("in"), nullptr);
}

TEST_F(TemplateFileViewsTest, AnOpenViewItemIsReportedOnce) {
    const Names errors = Load("<view name='main' template='Mesh'><group name='g'>");
    int count = 0;
    for (const std::string& error : errors)
        count += error.find("Missing closing element for view item: 'g'") != std::string::npos;
    EXPECT_EQ(count, 1);
    EXPECT_EQ(Tree(View()), "main(g())");
}

TEST_F(TemplateFileViewsTest, ViewsAreSavedInsideTheTemplateBehindTheProperties) {
    Load("<template name='Mesh'><node name='new' version='2'/></template>"
         "<!--v--><view name='main' template='Mesh'><label>V</label><group name='g'>"
         "<!--p--><property name='size'><description>D</description></property><group name='h'/>"
         "</group><property name='body'/></view>"
         "<view name='other' template='Mesh' version='2'><property name='new'/></view>");
    auto* dead = OviViewProperty_New("dead", nullptr); // has no element
    OviGroup_AddViewItemAt(View(), dead, 0);
    const std::string before = Tree(View());
    const std::string output = PathOf("out.template");
    ASSERT_TRUE(OviTemplateManager_SaveTemplateFile(path_.c_str(), output.c_str()));
    const std::string text = ReadFile(output);
    EXPECT_NE(text.find("<view name='main' template='Mesh'>"), std::string::npos) << text;
    EXPECT_NE(text.find("<view name='other' template='Mesh' version='2'>"), std::string::npos);
    EXPECT_LT(text.find("<node name='new'"), text.find("<view ")) << text;
    EXPECT_LT(text.rfind("</view>"), text.rfind("</template>")) << text;
    EXPECT_EQ(before, "main(dead g(size h()) body)");
    Ovi_Terminate();
    Ovi_Initialize();
    ASSERT_TRUE(OviTemplateManager_LoadTemplateFile(output.c_str()));
    EXPECT_EQ(Errors(), Names{});
    EXPECT_EQ(Tree(View()), "main(g(size h()) body)");
    EXPECT_EQ(Tree(View("other", "Mesh", 2)), "other(new)");
    EXPECT_STREQ(OviNamedObject_GetComment(View()), "v");
    const std::string again = PathOf("again.template");
    ASSERT_TRUE(OviTemplateManager_SaveTemplateFile(output.c_str(), again.c_str()));
    EXPECT_EQ(ReadFile(again), text);
}

TEST_F(TemplateFileViewsTest, AViewInsideAViewIsSavedAsAGroup) {
    Load("<view name='outer' template='Mesh'/><view name='inner' template='Mesh'>"
         "<label>I</label><property name='size'/></view>");
    OviGroup_AddViewItemAt(View("outer"), View("inner"), -1);
    OviGroup_AddViewItemAt(View("outer"), OviGroup_New("last"), -1);
    SaveAndLoad();
    EXPECT_EQ(Tree(View("outer")), "outer(inner(size) last())");
    EXPECT_EQ(Tree(View("inner")), "inner(size)");
    OviViewItem* inner = OviGroup_GetViewItemAt(View("outer"), 0);
    EXPECT_EQ(OviObject_GetClass(inner), OVI_CLASS_GROUP);
    EXPECT_STREQ(OviNamedObject_GetLabel(inner, nullptr), "I");
}

TEST_F(TemplateFileViewsTest, AViewIsSavedForTheTemplateThatListsIt) {
    Load("<template name='Mesh'><node name='new' version='2'/></template>"
         "<view name='replaced' template='Mesh'/><view name='other' template='Base'/>");
    OviTemplate* mesh = OviTemplateManager_GetTemplateVersion("Mesh", 2);
    // Listed in the place of another one, a view does not become the template's own.
    OviTemplate_CreateView(mesh, "other");
    OviView* former = View("other", "Mesh", 2);
    EXPECT_LT(OviTemplate_AddView(mesh, View("other", "Base")), 0);
    OviObject_Delete(former);
    OviView* loose = View("replaced");
    OviTemplate_RemoveView(OviTemplateManager_GetTemplateVersion("Mesh", 1), loose);
    OviTemplate_CreateView(mesh, "replaced");
    former = View("replaced", "Mesh", 2);
    EXPECT_LT(OviTemplate_AddView(mesh, loose), 0);
    OviObject_Delete(former);
    SaveAndLoad();
    EXPECT_EQ(Tree(View("replaced", "Mesh", 2)), "replaced()");
    EXPECT_EQ(Tree(View("other", "Mesh", 2)), "other()");
    EXPECT_EQ(Tree(View("other", "Base")), "other()");
}

TEST_F(TemplateFileViewsTest, ARecycledTemplateMayHaveViews) {
    const std::string first =
        WriteSchema("A.template", "<templates><template name='Rec'/></templates>");
    ASSERT_TRUE(OviTemplateManager_LoadTemplateFile(first.c_str()));
    const std::string second = WriteSchema(
        "B.template",
        "<templates><template name='User'><attribute name='r' type='Rec'/></template></templates>");
    ASSERT_TRUE(OviTemplateManager_LoadTemplateFile(second.c_str()));
    OviTemplateManager_UnloadTemplateFile(first.c_str());
    ASSERT_TRUE(OviType_IsRecycled(OviTemplateManager_GetTemplateVersion("Rec", 1)));
    // The definition takes the template's former views away; the open one is no former one.
    EXPECT_EQ(Load("<view name='u' template='Rec'/><view name='v' template='Rec'>\n"
                   "<template name='Rec'/>\n<group name='g'/></view>"
                   "<view name='w' template='Rec'><group name='g'/></view>"),
              Names{});
    EXPECT_EQ(View("u", "Rec"), nullptr);
    EXPECT_EQ(Tree(View("v", "Rec")), "v(g())");
    EXPECT_EQ(Tree(View("w", "Rec")), "w(g())");
}

TEST_F(TemplateFileViewsTest, AViewOfARecycledTemplateStaysWithoutItsEndTag) {
    const std::string first =
        WriteSchema("A.template", "<templates><template name='Rec'/></templates>");
    ASSERT_TRUE(OviTemplateManager_LoadTemplateFile(first.c_str()));
    AddAttribute(Make("User"), "r", OviTemplateManager_GetTemplate("Rec"));
    OviTemplateManager_UnloadTemplateFile(first.c_str());
    const std::string open =
        WriteSchema("C.template", "<templates><view name='v' template='Rec'><group name='g'>");
    OviTemplateManager_LoadTemplateFile(open.c_str());
    EXPECT_EQ(Tree(View("v", "Rec")), "v(g())");
}

TEST_F(TemplateFileViewsTest, DeepGroupsAreRead) {
    constexpr int kDepth = 20000;
    EXPECT_EQ(Load(DeepView(kDepth)), Names{});
    EXPECT_EQ(DepthOf(View()), kDepth);
}

// Each level is indented, so that a saved file grows with the square of its depth.
TEST_F(TemplateFileViewsTest, DeepGroupsAreSavedAndReadAgain) {
    constexpr int kDepth = 300;
    EXPECT_EQ(Load(DeepView(kDepth)), Names{});
    const std::string text = SaveAndLoad();
    EXPECT_EQ(DepthOf(View()), kDepth);
    EXPECT_EQ(SaveAndLoad(), text);
}

} // namespace
