// The list of search paths.

#include "api/Schema.h"

namespace {

class SearchPathTest : public SchemaTest {
protected:
    static int Add(const char* path) { return OviTemplateManager_AddSearchPath(path, false); }

    static Names Paths() {
        Names paths;
        for (int i = 0; i < OviTemplateManager_GetSearchPathCount(); ++i)
            paths.push_back(OviTemplateManager_GetSearchPathAt(i));
        return paths;
    }
};

TEST_F(SearchPathTest, PathsStandInTheOrderOfAddingWithABackslashAtTheEnd) {
    EXPECT_EQ(Add("C:\\defs"), ~0);
    EXPECT_EQ(Add("B:\\"), ~1);
    EXPECT_EQ(Add("/usr/share/defs/"), ~2);
    EXPECT_EQ(Add("relative"), ~3);
    EXPECT_EQ(Paths(), (Names{"C:\\defs\\", "B:\\", "/usr/share/defs/\\", "relative\\"}));
}

TEST_F(SearchPathTest, AnEqualPathIsFoundWhateverItsCase) {
    Add("C:\\a");
    Add("C:\\defs");
    EXPECT_EQ(Add("c:\\DEFS\\"), 1);
    EXPECT_EQ(Add("C:\\defs"), 1);
    EXPECT_EQ(OviTemplateManager_AddSearchPath("C:\\A", true), 0);
    EXPECT_EQ(Paths(), (Names{"C:\\a\\", "C:\\defs\\"}));
}

TEST_F(SearchPathTest, TheEmptyPathStaysEmpty) {
    EXPECT_EQ(Add(""), ~0);
    EXPECT_EQ(Add(nullptr), 0);
    EXPECT_EQ(Paths(), Names{""});
    EXPECT_EQ(OviTemplateManager_RemoveSearchPath(nullptr), 0);
}

TEST_F(SearchPathTest, RemovalGivesTheIndexOrTheComplementOfTheCount) {
    EXPECT_EQ(OviTemplateManager_RemoveSearchPath("C:\\defs"), -1);
    for (const char* path : {"a", "b", "c"})
        Add(path);
    EXPECT_EQ(OviTemplateManager_RemoveSearchPath("d"), ~3);
    EXPECT_EQ(OviTemplateManager_RemoveSearchPath("B"), 1);
    EXPECT_EQ(Paths(), (Names{"a\\", "c\\"}));
    EXPECT_EQ(OviTemplateManager_RemoveSearchPath("c\\"), 1);
    EXPECT_EQ(OviTemplateManager_RemoveSearchPath("b"), ~1);
}

TEST_F(SearchPathTest, AnIndexOutOfRangeGivesTheEmptyText) {
    Add("a");
    EXPECT_STREQ(OviTemplateManager_GetSearchPathAt(-1), "");
    EXPECT_STREQ(OviTemplateManager_GetSearchPathAt(1), "");
}

TEST_F(SearchPathTest, PathsEndWithTheLibrary) {
    Add("a");
    Ovi_Terminate();
    EXPECT_EQ(OviTemplateManager_GetSearchPathCount(), 0);
    Ovi_Initialize();
}

TEST_F(SearchPathTest, AMissingDirectoryStaysInTheListWithoutAReport) {
    const std::string missing = Directory() + "/missing";
    EXPECT_EQ(OviTemplateManager_AddSearchPath(missing.c_str(), true), ~0);
    EXPECT_EQ(OviTemplateManager_GetSearchPathCount(), 1);
    EXPECT_EQ(Errors(), Names{});
}

TEST_F(SearchPathTest, AnEqualPathAddedAgainLoadsNothing) {
    WriteFile("defs/p/T.template", "<?xml?><templates><template name='T'/></templates>");
    const std::string path = PathOf("defs");
    EXPECT_EQ(OviTemplateManager_AddSearchPath(path.c_str(), false), ~0);
    EXPECT_EQ(OviTemplateManager_AddSearchPath(path.c_str(), true), 0);
    EXPECT_EQ(OviTemplateManager_GetTemplate("T"), nullptr);
    EXPECT_TRUE(OviTemplateManager_LoadPackage("p")) << "it could have been loaded";
    EXPECT_NE(OviTemplateManager_GetTemplate("T"), nullptr);
}

TEST_F(SearchPathTest, AFaultyPackageNeitherChangesTheResultNorStopsTheOthers) {
    WriteFile("defs/a/T.template", "no header");
    WriteFile("defs/b/T.template", "<?xml?><templates><template name='T'/></templates>");
    EXPECT_EQ(OviTemplateManager_AddSearchPath(PathOf("defs").c_str(), true), ~0);
    EXPECT_EQ(Errors(), Names{"1 1 Missing XML header element"});
    EXPECT_NE(OviTemplateManager_GetTemplate("T"), nullptr);
    EXPECT_FALSE(OviTemplateManager_LoadPackage("a"));
}

TEST_F(SearchPathTest, PackagesAreLoadedInByteOrder) {
    WriteFile("defs/a/T.template", "<?xml?><templates package='a'><template name='T'>"
                                   "<extends template='B.Base'/></template></templates>");
    WriteFile("defs/B/Base.template",
              "<?xml?><templates package='B'><template name='Base'/></templates>");
    OviTemplateManager_AddSearchPath(PathOf("defs").c_str(), true);
    EXPECT_EQ(Errors(), Names{}) << "capitals come first";
    EXPECT_EQ(ParentsOf(OviTemplateManager_GetTemplate("a.T")), Names{"B.Base#1"});
}

TEST_F(SearchPathTest, RemovalUnloadsNothing) {
    WriteFile("defs/p/T.template", "<?xml?><templates><template name='T'/></templates>");
    const std::string path = PathOf("defs");
    OviTemplateManager_AddSearchPath(path.c_str(), true);
    ASSERT_NE(OviTemplateManager_GetTemplate("T"), nullptr);
    EXPECT_EQ(OviTemplateManager_RemoveSearchPath(path.c_str()), 0);
    EXPECT_NE(OviTemplateManager_GetTemplate("T"), nullptr);
    EXPECT_TRUE(OviTemplateManager_LoadPackage("p")) << "it still counts as loaded";
}

} // namespace
