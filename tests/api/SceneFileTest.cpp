#include <filesystem>

#include "api/SceneHost.h"

namespace {

class SceneFileTest : public SceneTest {
protected:
    static constexpr const char* kEmptyScene = "<?xml version='1.0' encoding='UTF-8'?>\n<assets/>";

    /// Loads a scene and gives what was written on the standard error stream meanwhile.
    static std::string ComplaintOfLoading(const std::string& path, bool expected) {
        ::testing::internal::CaptureStderr();
        EXPECT_EQ(OviAssetManager_LoadScene(path.c_str()), expected);
        return ::testing::internal::GetCapturedStderr();
    }
};

struct ForcedName {
    const char* given;
    const char* forced;
};

/// Works with relative paths: the directories above may have dots in their names, too.
class ForcedExtensionTest : public SceneFileTest, public ::testing::WithParamInterface<ForcedName> {
protected:
    void SetUp() override {
        SceneFileTest::SetUp();
        previous_ = std::filesystem::current_path();
        std::filesystem::current_path(Directory());
    }
    void TearDown() override {
        std::filesystem::current_path(previous_);
        SceneFileTest::TearDown();
    }

private:
    std::filesystem::path previous_;
};

} // namespace

TEST_P(ForcedExtensionTest, NamesTheFileWritten) {
    OviAssetManager_NewAsset("only");
    EXPECT_TRUE(OviAssetManager_SaveScene(GetParam().given));
    EXPECT_NE(ReadFile(GetParam().forced).find("<asset name='only'/>"), std::string::npos);
}

TEST_P(ForcedExtensionTest, NamesTheFileRead) {
    WriteFile(GetParam().forced, std::string(kHeader) + "<assets><asset name='only'/></assets>");
    EXPECT_TRUE(OviAssetManager_LoadScene(GetParam().given));
    EXPECT_NE(OviAssetManager_GetAsset("only"), nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    Paths, ForcedExtensionTest,
    ::testing::Values(ForcedName{"scene", "scene.asset"}, ForcedName{"scene.xml", "scene.asset"},
                      ForcedName{"scene.asset", "scene.asset"},
                      ForcedName{"scene.ASSET", "scene.asset"}, ForcedName{"scene.", "scene.asset"},
                      ForcedName{"a.b.c", "a.b.asset"}, ForcedName{".hidden", ".hidden.asset"},
                      ForcedName{".hidden.xml", ".hidden.asset"},
                      // The path is a plain text: a dot of a directory counts, too.
                      ForcedName{"levels.old\\scene", "levels.asset"},
                      ForcedName{"levels.old/scene", "levels.asset"}));

TEST_F(SceneFileTest, LeavesADotAtTheVeryStartAlone) {
    const std::string complaint = ComplaintOfLoading(".no_such_file_here", false);
    EXPECT_EQ(complaint, "Unable to open file '.no_such_file_here.asset'\n");
    EXPECT_EQ(ComplaintOfLoading("", false), "Unable to open file '.asset'\n");
}

TEST_F(SceneFileTest, ReportsAFileThatCannotBeReadOnTheErrorStreamAlone) {
    const std::string path = Directory() + "/missing.xml";
    EXPECT_EQ(ComplaintOfLoading(path, false),
              "Unable to open file '" + Directory() + "/missing.asset'\n");
    EXPECT_TRUE(Errors().empty());
    EXPECT_FALSE(OviAssetManager_IsDirty());
}

TEST_F(SceneFileTest, ReportsADirectoryInPlaceOfAFile) {
    std::filesystem::create_directories(PathOf("dir.asset"));
    EXPECT_NE(ComplaintOfLoading(Directory() + "/dir.x", false), "");
    EXPECT_FALSE(OviAssetManager_SaveScene((Directory() + "/dir.x").c_str()));
    EXPECT_EQ(Errors(), Lines{"1 -1 Unable to open file for writing"});
    EXPECT_EQ(OviErrorItem_GetSourceName(OviErrorManager_GetErrorItemAt(0)),
              Directory() + "/dir.asset");
}

TEST_F(SceneFileTest, NullPathsDoNotCrash) {
    EXPECT_NE(ComplaintOfLoading("", false), "");
    ::testing::internal::CaptureStderr();
    EXPECT_FALSE(OviAssetManager_LoadScene(nullptr));
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "Unable to open file '.asset'\n");
}

TEST_F(SceneFileTest, WritesAnEmptyScene) {
    EXPECT_TRUE(OviAssetManager_SaveScene(PathOf("empty.asset").c_str()));
    EXPECT_EQ(ReadFile(PathOf("empty.asset")), kEmptyScene);
}

TEST_F(SceneFileTest, WritesAssetsInNameOrder) {
    for (const char* name : {"b", "c", "a"})
        OviAssetManager_NewAsset(name);
    EXPECT_TRUE(OviAssetManager_SaveScene(PathOf("scene.asset").c_str()));
    EXPECT_EQ(ReadFile(PathOf("scene.asset")),
              "<?xml version='1.0' encoding='UTF-8'?>\n<assets>\n\t<asset name='a'/>"
              "\n\t<asset name='b'/>\n\t<asset name='c'/>\n</assets>");
}

TEST_F(SceneFileTest, AddsLoadedAssetsToThoseThere) {
    OviAsset* there = OviAssetManager_NewAsset("there");
    StartRecording();
    EXPECT_TRUE(Load("<asset name='there'/><asset name='new'/>"));
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 2);
    EXPECT_EQ(OviAssetManager_GetAsset("there"), there);
    EXPECT_EQ(Events(), Lines{"0x1005 new 0"});
    EXPECT_TRUE(Errors().empty());
}

TEST_F(SceneFileTest, NeitherSavingNorLoadingClearsTheDirtyFlag) {
    OviAssetManager_NewAsset("a");
    EXPECT_TRUE(OviAssetManager_SaveScene(PathOf("scene.asset").c_str()));
    EXPECT_TRUE(OviAssetManager_IsDirty());
    OviAssetManager_NewScene();
    EXPECT_TRUE(OviAssetManager_SaveScene(PathOf("empty.asset").c_str()));
    EXPECT_FALSE(OviAssetManager_IsDirty());
    EXPECT_TRUE(OviAssetManager_LoadScene(PathOf("empty.asset").c_str()));
    EXPECT_FALSE(OviAssetManager_IsDirty());
    EXPECT_TRUE(OviAssetManager_LoadScene(PathOf("scene.asset").c_str()));
    EXPECT_TRUE(OviAssetManager_IsDirty());
}

TEST_F(SceneFileTest, KeepsTheAssetsMadeBeforeAFault) {
    const auto path = WriteFile("broken.asset",
                                std::string(kHeader) + "<assets><asset name='a'/><asset name='b>");
    OviAssetManager_LoadScene(path.c_str());
    EXPECT_NE(OviAssetManager_GetAsset("a"), nullptr);
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 1);
    EXPECT_EQ(Errors(), (Lines{"1 2 Missing closing quote",
                               "1 2 <asset> element must have an 'name' attribute"}));
    EXPECT_FALSE(OviAssetManager_LoadScene(WriteFile("void.asset", "").c_str()));
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 1);
}

TEST_F(SceneFileTest, ReportsFaultsUnderTheForcedName) {
    WriteFile("faulty.asset", std::string(kHeader) + "<assets>\n<asset/></assets>");
    EXPECT_TRUE(OviAssetManager_LoadScene((Directory() + "/faulty.xml").c_str()));
    EXPECT_EQ(Errors(), Lines{"1 3 <asset> element must have an 'name' attribute"});
    EXPECT_EQ(OviErrorItem_GetSourceName(OviErrorManager_GetErrorItemAt(0)),
              Directory() + "/faulty.asset");
}

TEST_F(SceneFileTest, SavesAndLoadsTheSameScene) {
    Schema("<type name='Three' type='INT32' dim='3'/><type name='Many' type='STRING' dim='0'/>"
           "<template name='T'><attribute name='one' type='DOUBLE'/>"
           "<attribute name='three' type='Three'/><attribute name='many' type='Many'/>"
           "<attribute name='unset' type='INT32'/></template>");
    OviAsset* asset = AssetOf("T", "asset");
    const double one = 0.1;
    OviAttributeInstance_SetValue(AttributeOf(asset, "T.one"), &one);
    auto* three =
        static_cast<int32_t*>(OviAttributeInstance_GetValue(AttributeOf(asset, "T.three")));
    for (int i = 0; i < 3; ++i)
        three[i] = i - 1;
    const char* texts[] = {"a <b>", "", "c'\"&"};
    OviAttributeInstance_SetDimension(AttributeOf(asset, "T.many"), 3);
    OviAttributeInstance_SetValue(AttributeOf(asset, "T.many"), texts);
    OviAttributeInstance_SetBinding(AttributeOf(asset, "T.one"), "|node.attr");
    const std::string before = XMLOf(asset);
    ASSERT_TRUE(OviAssetManager_SaveScene(PathOf("scene.asset").c_str()));
    OviAssetManager_NewScene();
    ASSERT_TRUE(OviAssetManager_LoadScene(PathOf("scene.asset").c_str()));
    EXPECT_EQ(XMLOf(OviAssetManager_GetAsset("asset")), before);
    EXPECT_TRUE(Errors().empty());
}
