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

TEST_F(TemplateFileViewsTest, DeepGroupsAreReadSavedAndReadAgain) {
    constexpr int kDepth = 20000;
    std::string text = "<view name='main' template='Mesh'>";
    for (int i = 0; i < kDepth; ++i)
        text += "<group name='g'>";
    for (int i = 0; i < kDepth; ++i)
        text += "</group>";
    EXPECT_EQ(Load(text + "</view>"), Names{});
    int depth = 0;
    for (OviGroup* at = View(); OviGroup_GetViewItemCount(at) > 0; ++depth)
        at = static_cast<OviGroup*>(OviGroup_GetViewItemAt(at, 0));
    EXPECT_EQ(depth, kDepth);
}

} // namespace
