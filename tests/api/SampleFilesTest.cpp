// The sample files: they load without a finding, and saving loses nothing.

#include <algorithm>
#include <filesystem>

#include "api/Host.h"
#include "api/SchemaDump.h"

namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

const fs::path kExamples = fs::path(OVI_SOURCE_DIR) / "examples";

class SampleFiles : public HostTest {
protected:
    /// The template files below a directory in the order that the samples promise: a directory's
    /// files first, then its subdirectories, each ascending; relative to the directory.
    static Lines TemplateFiles(const fs::path& root) {
        Lines files;
        for (const auto& entry : fs::recursive_directory_iterator(root)) {
            if (entry.path().extension() == ".template")
                files.push_back(fs::relative(entry.path(), root).generic_string());
        }
        std::sort(files.begin(), files.end(), [](const std::string& a, const std::string& b) {
            return fs::path(a).parent_path() != fs::path(b).parent_path()
                       ? fs::path(a).parent_path() < fs::path(b).parent_path()
                       : a < b;
        });
        return files;
    }

    static Lines Scenes() {
        Lines scenes;
        for (const auto& entry : fs::directory_iterator(kExamples / "scenes"))
            scenes.push_back(entry.path().filename().string());
        std::sort(scenes.begin(), scenes.end());
        return scenes;
    }

    static void LoadSchema(const fs::path& root) {
        for (const std::string& file : TemplateFiles(root))
            EXPECT_TRUE(OviTemplateManager_LoadTemplateFile((root / file).string().c_str()));
    }

    /// Saves each loaded template file of one tree into another one.
    static void SaveSchema(const fs::path& from, const fs::path& to) {
        for (const std::string& file : TemplateFiles(from)) {
            fs::create_directories((to / file).parent_path());
            EXPECT_TRUE(OviTemplateManager_SaveTemplateFile((from / file).string().c_str(),
                                                            (to / file).string().c_str()));
        }
    }

    static void Restart() {
        Ovi_Terminate();
        Ovi_Initialize();
        OviErrorManager_Clear();
    }

    static std::string SceneAsText() {
        std::string text;
        for (int i = 0; i < OviAssetManager_GetAssetCount(); ++i) {
            OviAsset* asset = OviAssetManager_GetAssetAt(i);
            uint32_t size = 0;
            OviInstance_WriteToXML(asset, 0, &size, nullptr);
            std::string part(size, '\0');
            OviInstance_WriteToXML(asset, 0, &size, part.data());
            text += part;
        }
        return text;
    }
};

TEST_F(SampleFiles, SchemaLoadsFileByFileWithoutAFinding) {
    ASSERT_EQ(TemplateFiles(kExamples / "schema").size(), 14u);
    LoadSchema(kExamples / "schema");
    EXPECT_EQ(Errors(), Lines{});
}

TEST_F(SampleFiles, SchemaLoadsAsPackagesToTheSameModel) {
    LoadSchema(kExamples / "schema");
    const std::string root = (kExamples / "schema").string() + "/";
    const std::string model = SchemaDump::Of(root);
    Restart();
    OviTemplateManager_AddSearchPath((kExamples / "schema").string().c_str(), true);
    EXPECT_EQ(Errors(), Lines{});
    EXPECT_EQ(SchemaDump::Of(root), model);
}

TEST_F(SampleFiles, SavedSchemaFoundThroughUsingGivesTheSameModelAndTheSameBytes) {
    const fs::path schema = kExamples / "schema";
    const fs::path first = PathOf("first/x");
    LoadSchema(schema);
    const std::string model = SchemaDump::Of(schema.string() + "/");
    SaveSchema(schema, first.parent_path());

    Restart();
    OviTemplateManager_AddSearchPath(first.parent_path().string().c_str(), true);
    EXPECT_EQ(Errors(), Lines{});
    EXPECT_EQ(SchemaDump::Of(first.parent_path().string() + "/"), model);

    // The packages were loaded under the paths that the library composed.
    for (const std::string& file : TemplateFiles(schema)) {
        std::string loaded = file;
        std::replace(loaded.begin(), loaded.end(), '/', '\\');
        loaded = first.parent_path().string() + "\\" + loaded;
        const std::string again = PathOf("second/" + file);
        ASSERT_TRUE(OviTemplateManager_SaveTemplateFile(loaded.c_str(), again.c_str()));
        EXPECT_EQ(ReadFile(again), ReadFile((first.parent_path() / file).string())) << file;
    }
}

TEST_F(SampleFiles, EachSavedFileAloneLoadsWithItsPackages) {
    const fs::path schema = kExamples / "schema";
    const std::string saved = fs::path(PathOf("saved/x")).parent_path().string();
    LoadSchema(schema);
    SaveSchema(schema, saved);
    for (const std::string& file : TemplateFiles(schema)) {
        Restart();
        OviTemplateManager_AddSearchPath(saved.c_str(), false);
        // As a host finds it: through its package, which loads those that it uses.
        std::string package = fs::path(file).parent_path().generic_string();
        std::replace(package.begin(), package.end(), '/', '.');
        EXPECT_TRUE(OviTemplateManager_LoadPackage(package.c_str())) << file;
        EXPECT_EQ(Errors(), Lines{}) << file;
    }
}

TEST_F(SampleFiles, ScenesLoadWithoutAFindingButForTheOlderVersions) {
    for (const std::string& scene : Scenes()) {
        Restart();
        LoadSchema(kExamples / "schema");
        EXPECT_TRUE(OviAssetManager_LoadScene((kExamples / "scenes" / scene).string().c_str()));
        EXPECT_EQ(Errors().size(), scene == "older-version.asset" ? 2u : 0u) << scene;
    }
}

TEST_F(SampleFiles, SavedScenesGiveTheSameAssetsAndTheSameBytes) {
    for (const std::string& scene : Scenes()) {
        Restart();
        LoadSchema(kExamples / "schema");
        EXPECT_TRUE(OviAssetManager_LoadScene((kExamples / "scenes" / scene).string().c_str()));
        const std::string assets = SceneAsText();
        const std::string first = PathOf("first/" + scene);
        ASSERT_TRUE(OviAssetManager_SaveScene(first.c_str()));

        Restart();
        LoadSchema(kExamples / "schema");
        EXPECT_TRUE(OviAssetManager_LoadScene(first.c_str()));
        EXPECT_EQ(SceneAsText(), assets) << scene;
        const std::string second = PathOf("second/" + scene);
        ASSERT_TRUE(OviAssetManager_SaveScene(second.c_str()));
        EXPECT_EQ(ReadFile(second), ReadFile(first)) << scene;
    }
}

TEST_F(SampleFiles, ScenesMeanTheSameWithTheSavedSchema) {
    const fs::path saved = fs::path(PathOf("saved/x")).parent_path();
    LoadSchema(kExamples / "schema");
    SaveSchema(kExamples / "schema", saved);
    for (const std::string& scene : Scenes()) {
        Restart();
        LoadSchema(kExamples / "schema");
        OviAssetManager_LoadScene((kExamples / "scenes" / scene).string().c_str());
        const std::string assets = SceneAsText();
        Restart();
        OviTemplateManager_AddSearchPath(saved.string().c_str(), true);
        OviAssetManager_LoadScene((kExamples / "scenes" / scene).string().c_str());
        EXPECT_EQ(SceneAsText(), assets) << scene;
    }
}

} // namespace
