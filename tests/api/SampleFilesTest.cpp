// The sample files: they load without a finding, and saving loses nothing.

#include <set>
#include <sstream>

#include "api/Samples.h"
#include "api/SceneKinds.h"
#include "api/SchemaDump.h"

namespace {

class SampleFiles : public SampleTest {
protected:
    static Path Scene(const std::string& file) { return Examples() / "scenes" / file; }

    static std::string Model(const Path& root) {
        return SchemaDump::Of(root.generic_string() + "/");
    }

    /// The path under which the library found a file of a library's package.
    static std::string LoadedPath(const Path& root, const std::string& file) {
        const size_t slash = file.find('/');
        std::string below = file.substr(slash);
        std::replace(below.begin(), below.end(), '/', '\\');
        return (root / file.substr(0, slash)).generic_string() + below;
    }

    /// Saves every loaded template file of one tree into a directory of this test.
    Path SaveSchema(const Path& from, const std::string& to) {
        const Path root = Path(Directory()) / to;
        for (const std::string& file : Files(Schema(), ".template")) {
            EXPECT_TRUE(OviTemplateManager_SaveTemplateFile(LoadedPath(from, file).c_str(),
                                                            PathOf(to + "/" + file).c_str()));
        }
        return root;
    }

    static void LoadScene(const Path& path) {
        EXPECT_TRUE(OviAssetManager_LoadScene(path.string().c_str())) << path;
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

// -- the schema -----------------------------------------------------------------------------------

TEST_F(SampleFiles, SchemaLoadsToTheSameModelWhateverPackageComesFirst) {
    LoadSchema();
    const std::string model = Model(Schema());
    const Lines packages = Packages();
    ASSERT_GE(packages.size(), 10u);
    for (const std::string& first : packages) {
        Restart();
        AddLibraries(Schema(), false);
        EXPECT_TRUE(OviTemplateManager_LoadPackage(first.c_str()));
        EXPECT_EQ(Errors(), Lines{}) << first;
        for (const std::string& package : packages)
            EXPECT_TRUE(OviTemplateManager_LoadPackage(package.c_str()));
        EXPECT_EQ(Errors(), Lines{}) << first;
        EXPECT_EQ(Model(Schema()), model) << first;
    }
}

TEST_F(SampleFiles, EachLibraryNeedsOnlyThoseInFrontOfIt) {
    for (const std::string& library : Libraries()) {
        OviTemplateManager_AddSearchPath((Schema() / library).string().c_str(), true);
        EXPECT_EQ(Errors(), Lines{}) << library;
    }
}

TEST_F(SampleFiles, SchemaHoldsEveryKindOfDefinition) {
    LoadSchema();
    const std::string model = Model(Schema());
    for (const char* part : {"\ntype ",          "\nenumeration ",
                             "\ntemplate ",      "\nlevel of detail ",
                             " by reference",    " bind 'translate'",
                             "  minimum ",       "  maximum ",
                             "  command ",       "  node below 'AssetNode' at",
                             "  child anchor",   "  parent anchor",
                             "  alternate ",     "item of class 39",
                             "item of class 36", "   item of class 36",
                             "item of class 38", " asset of '",
                             "  comment ",       "  label ja",
                             "  description de", " dimension 0",
                             " dimension 16",    "Polygons, Cube"})
        EXPECT_NE(("\n" + model).find(part), std::string::npos) << part;
}

// A comment stays for what follows when nothing ends it, which is easily overlooked in a file.
TEST_F(SampleFiles, NoCommentOfTheSchemaServesTwice) {
    LoadSchema();
    std::set<std::string> seen;
    for (int i = 0; i < OviTemplateManager_GetTemplateCount(); ++i) {
        OviTemplate* type = OviTemplateManager_GetTemplateAt(i);
        for (int j = 0; j < OviTemplate_GetPropertyCount(type); ++j) {
            OviProperty* property = OviTemplate_GetPropertyAt(type, j, true);
            const std::string comment = OviNamedObject_GetComment(property);
            const bool isOwn = OviProperty_GetTemplate(property) == type &&
                               OviTemplate_GetLatestVersion(type) == OviTemplate_GetVersion(type);
            EXPECT_TRUE(comment.empty() || !isOwn || seen.insert(comment).second)
                << OviProperty_GetFullName(property) << ": " << comment;
        }
    }
    EXPECT_GT(seen.size(), 50u);
}

TEST_F(SampleFiles, SavedSchemaGivesTheSameModelAndTheSameBytes) {
    LoadSchema();
    const std::string model = Model(Schema());
    const Path first = SaveSchema(Schema(), "first");
    Restart();
    AddLibraries(first, true);
    EXPECT_EQ(Errors(), Lines{});
    EXPECT_EQ(Model(first), model);
    const Path second = SaveSchema(first, "second");
    for (const std::string& file : Files(Schema(), ".template"))
        EXPECT_EQ(ReadFile((second / file).string()), ReadFile((first / file).string())) << file;
}

TEST_F(SampleFiles, SavedSchemaLoadsWhateverPackageComesFirst) {
    LoadSchema();
    const Lines packages = Packages();
    const Path saved = SaveSchema(Schema(), "saved");
    for (const std::string& first : packages) {
        Restart();
        AddLibraries(saved, false);
        EXPECT_TRUE(OviTemplateManager_LoadPackage(first.c_str()));
        EXPECT_EQ(Errors(), Lines{}) << first;
    }
}

// -- the scenes -----------------------------------------------------------------------------------

TEST_F(SampleFiles, ScenesLoadWithoutAFindingButForTheOlderVersions) {
    for (const std::string& scene : Files(Scene(""), ".asset")) {
        Restart();
        LoadSchema();
        LoadScene(Scene(scene));
        EXPECT_EQ(Errors().size(), scene == "older-version.asset" ? 2u : 0u) << scene;
    }
}

TEST_F(SampleFiles, OneSavedSceneHoldsEveryKindOfPropertyAndValue) {
    LoadSchema();
    const Path scene = Scene("saved/every_kind.asset");
    LoadScene(scene);
    const std::set<std::string> kinds = SceneKinds::Collect();
    // Bindings of nodes are read but not written, and 8-bit numbers do not read back.
    std::istringstream expected(
        "node, child anchor, bound parent anchor, bound child anchor, attached parent anchor, "
        "attached child anchor, geometry, alternate, bound alternate, attribute, bound "
        "attribute, bound reference, instance, BOOL, INT16, UINT16, INT32, UINT32, INT64, "
        "UINT64, FLOAT, DOUBLE, STRING, REFERENCE, enumeration of INT32, enumeration of STRING, "
        "several BOOL, several INT32, several FLOAT, several DOUBLE, several STRING");
    for (std::string kind; std::getline(expected >> std::ws, kind, ',');)
        EXPECT_EQ(kinds.count(kind), 1u) << kind;
    EXPECT_EQ(kinds.count("unknown"), 0u);
    const std::string text = ReadFile(scene.string());
    for (const char* part :
         {"&amp;", "&lt;", "&gt;", "&quot;", "&apos;", u8"\u00D6", u8"\u6CF3", "<value></value>"})
        EXPECT_NE(text.find(part), std::string::npos) << part;
}

TEST_F(SampleFiles, ScenesThatTheLibrarySavedAreSavedAgainWithTheSameBytes) {
    const Lines scenes = Files(Scene("saved"), ".asset");
    ASSERT_GE(scenes.size(), 3u);
    for (const std::string& scene : scenes) {
        Restart();
        LoadSchema();
        LoadScene(Scene("saved/" + scene));
        EXPECT_EQ(Errors(), Lines{}) << scene;
        const std::string again = PathOf("again/" + scene);
        ASSERT_TRUE(OviAssetManager_SaveScene(again.c_str()));
        EXPECT_EQ(ReadFile(again), ReadFile(Scene("saved/" + scene).string())) << scene;
    }
}

TEST_F(SampleFiles, SavedScenesGiveTheSameAssetsAndTheSameBytes) {
    for (const std::string& scene : Files(Scene(""), ".asset")) {
        Restart();
        LoadSchema();
        LoadScene(Scene(scene));
        const std::string assets = SceneAsText();
        const std::string first = PathOf("first/" + scene);
        ASSERT_TRUE(OviAssetManager_SaveScene(first.c_str()));

        Restart();
        LoadSchema();
        LoadScene(first);
        EXPECT_EQ(SceneAsText(), assets) << scene;
        const std::string second = PathOf("second/" + scene);
        ASSERT_TRUE(OviAssetManager_SaveScene(second.c_str()));
        EXPECT_EQ(ReadFile(second), ReadFile(first)) << scene;
    }
}

TEST_F(SampleFiles, ScenesMeanTheSameWithTheSavedSchema) {
    LoadSchema();
    const Path saved = SaveSchema(Schema(), "saved");
    for (const std::string& scene : Files(Scene(""), ".asset")) {
        Restart();
        LoadSchema();
        LoadScene(Scene(scene));
        const std::string assets = SceneAsText();
        Restart();
        AddLibraries(saved, true);
        LoadScene(Scene(scene));
        EXPECT_EQ(SceneAsText(), assets) << scene;
    }
}

} // namespace
