// What hosts do all day, with memory that runs out on the way: afterwards all is whole, and it can
// be done again.

#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

#include "faults/Allocations.h"
#include "faults/FailureRuns.h"

namespace {

std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// A path that is composed before memory runs out.
const char* Path(const char* name) {
    static std::string path;
    path = Model::Path(name);
    return path.c_str();
}

TEST(AllocationFailure, LeavesASchemaThatCanBeLoadedAgain) {
    const char* path = Path("next.template");
    RunWithFailures(
        "Load a schema", Promise::kInParts,
        [path](Model&) -> long { return OviTemplateManager_LoadTemplateFile(path); },
        [path](Model&) {
            OviTemplateManager_UnloadTemplateFile(path);
            EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(path));
        });
}

TEST(AllocationFailure, LeavesASchemaInUseThatCanBeDefinedAnew) {
    const char* path = Model::SchemaFile().c_str();
    const auto reload = [path](Model&) -> long {
        OviTemplateManager_UnloadTemplateFile(path);
        return OviTemplateManager_LoadTemplateFile(path);
    };
    RunWithFailures("Define a schema in use anew", Promise::kWhole, reload,
                    [&](Model& model) { EXPECT_EQ(reload(model), 1); });
}

TEST(AllocationFailure, LeavesWhatWasBuiltBefore) {
    RunWithFailures("Build a scene", Promise::kInParts, [](Model& model) -> long {
        OviAsset* table = OviAssetManager_NewAsset("table_with_a_long_name");
        OviInstance_AddTemplate(table, model.whole);
        OviNamedObject_SetLabel(table, "en", "A table that is described at some length");
        OviAsset_SetReference(table, "tables/the_file_of_the_table.asset");
        OviPropertyInstance* part = OviInstance_GetPropertyInstance(table, "Whole.part", false);
        OviAttributeInstance_GetValue(static_cast<OviAttributeInstance*>(part));
        for (int i = 0; i < 4; ++i) {
            OviAsset* asset = OviAssetManager_NewAsset(nullptr);
            OviInstance_AddTemplate(asset, model.part);
            OviPropertyInstance* size = OviInstance_GetPropertyInstance(asset, "Base.size", false);
            OviAttributeInstance_SetBinding(static_cast<OviAttributeInstance*>(size),
                                            "|a|path|that|is|longer|than|a|few|bytes");
            OviPropertyInstance_SetValueLocked(size, true);
        }
        return 0;
    });
}

TEST(AllocationFailure, LeavesAWholeModelWhileItIsEdited) {
    RunWithFailures("Edit a scene and its schema", Promise::kWhole, [](Model& model) -> long {
        OviNamedObject_SetName(model.chair, "armchair_of_the_very_first_model");
        OviInstance_UpdateTemplate(model.screw, model.part);
        OviInstance_AddTemplate(model.screw, model.whole);
        OviAttributeInstance_SetValue(model.sizeOfScrew, model.value);
        OviAttributeInstance_SetDimension(model.textsOfScrew, 3);
        OviInstance_RemoveTemplate(model.chair, model.whole);
        OviTemplate_AddProperty(model.whole, model.freeAttribute, 0);
        OviAttributeProperty_SetType(model.freeAttribute, model.part);
        OviTemplateManager_CreateTemplateVersion("main.Whole", 3);
        OviTemplateManager_CreateTemplateVersion("main.Whole", 2);
        OviNamedObject_SetName(model.base, "Ground_of_all_that_there_is");
        OviTemplateManager_AddTemplate(model.freeTemplate);
        OviTemplate_AddParent(model.freeTemplate, model.whole);
        OviTemplate_RemoveParent(model.freeTemplate, model.whole);
        OviTemplate_AddView(model.part2, model.freeView);
        OviGroup_AddViewItemAt(model.freeView, model.freeGroup, 0);
        return 0;
    });
}

TEST(AllocationFailure, LeavesTheChildrenOfADeletedTemplate) {
    RunWithFailures("Delete a template with children", Promise::kWhole, [](Model& model) -> long {
        OviTemplateManager_AddTemplate(model.freeTemplate);
        OviTemplate* child = OviTemplateManager_CreateTemplate("host.Child");
        OviTemplate_AddParent(child, model.freeTemplate);
        OviTemplate_AddParent(OviTemplateManager_CreateTemplate("host.Second_child_of_the_same"),
                              model.freeTemplate);
        const int before = OviTemplateManager_GetTemplateCount();
        OviTemplate* registered = OviTemplateManager_GetTemplate("host.Own");
        OviObject_Delete(registered);
        if (registered && OviTemplateManager_GetTemplateCount() < before)
            model.freeTemplate = nullptr;
        return 0;
    });
}

/// A save either replaces the file by the new text or leaves it, and its result says which.
void ExpectOldOrNew(const std::string& path, const std::string& old, const std::string& fresh,
                    bool saved) {
    EXPECT_TRUE(ReadFile(path) == (saved ? fresh : old)) << (saved ? "not new" : "not old");
    const auto directory = std::filesystem::path(path).parent_path();
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(directory),
                            std::filesystem::directory_iterator()),
              1)
        << "a file is left over";
}

/// Saves over and over to a directory of its own, by a function that says whether it did.
void SaveWithFailures(const char* name, const char* file, bool (*save)(const char* path)) {
    const std::string path = Path(file);
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    {
        Model model;
        ASSERT_TRUE(save(path.c_str()));
    }
    const std::string fresh = ReadFile(path);
    const auto putOld = [&path] { std::ofstream(path, std::ios::binary) << "old text"; };
    putOld();
    bool saved = false;
    RunWithFailures(
        name, Promise::kAllOrNothing,
        [&](Model&) -> long {
            saved = save(path.c_str());
            return 0;
        },
        [&](Model&) {
            ExpectOldOrNew(path, "old text", fresh, saved);
            putOld();
        });
}

TEST(AllocationFailure, LeavesTheOldSceneFileOrTheNewOne) {
    SaveWithFailures("Save a scene", "scenes/saved.asset", &OviAssetManager_SaveScene);
}

TEST(AllocationFailure, LeavesTheOldTemplateFileOrTheNewOne) {
    SaveWithFailures("Save a schema", "schemas/saved.template", [](const char* path) {
        return OviTemplateManager_SaveTemplateFile(Model::SchemaFile().c_str(), path);
    });
}

TEST(AllocationFailure, LeavesASceneThatCanBeLoadedAgain) {
    const char* path = Path("other.asset");
    RunWithFailures(
        "Load a scene", Promise::kInParts,
        [path](Model&) -> long { return OviAssetManager_LoadScene(path); },
        [path](Model&) { EXPECT_TRUE(OviAssetManager_LoadScene(path)); });
}

TEST(AllocationFailure, LeavesTheValuesThatArePacked) {
    RunWithFailures("Pack", Promise::kInParts, [](Model& model) -> long {
        OviInstance_GetSize(model.chair);
        OviInstance_GetSize(model.screw);
        OviInstance_WriteToBinary(model.chair, model.buffer, sizeof model.buffer);
        return OviInstance_WriteToBinary(model.screw, model.buffer, sizeof model.buffer);
    });
}

// -- the library itself
// -----------------------------------------------------------------------------

/// Runs a step of the library's life until no allocation fails, and expects a fresh library then.
template <class Body> void LiveWithFailures(const Body& body) {
    for (const auto mode : {Allocations::kOnce, Allocations::kFromThenOn}) {
        bool failed = true;
        for (long n = 1; failed && n < 100000; ++n) {
            SCOPED_TRACE(n);
            failed = body(n, mode);
            Ovi_Initialize();
            EXPECT_EQ(OviTemplateManager_GetTemplateCount(), 1);
            EXPECT_EQ(OviTemplateManager_GetTypeCount(), 14);
            EXPECT_EQ(OviAssetManager_GetAssetCount(), 0);
            Ovi_Terminate();
        }
    }
}

TEST(AllocationFailure, LetsTheLibraryBeginAgain) {
    LiveWithFailures([](long n, Allocations::Mode mode) {
        Allocations::Arm(n, mode);
        Ovi_Initialize();
        Allocations::Disarm();
        const bool failed = Allocations::HasFailed();
        Ovi_Terminate();
        return failed;
    });
}

TEST(AllocationFailure, LetsTheLibraryEnd) {
    LiveWithFailures([](long n, Allocations::Mode mode) {
        Ovi_Initialize();
        OviTemplateManager_AddSearchPath(Path("library"), false);
        OviTemplateManager_LoadTemplateFile(Model::SchemaFile().c_str());
        OviAssetManager_LoadScene(Model::SceneFile().c_str());
        Allocations::Arm(n, mode);
        Ovi_Terminate();
        Allocations::Disarm();
        return Allocations::HasFailed();
    });
}

} // namespace
