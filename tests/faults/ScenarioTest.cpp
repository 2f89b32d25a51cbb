// What hosts do all day, with memory that runs out on the way: afterwards all is whole, and it can
// be done again.

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "faults/Allocations.h"
#include "faults/FailureRuns.h"
#include "faults/FaultTables.h"

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

/// Runs a body again and again, which lets something be done by the function that it is given:
/// another allocation fails there each time, until none does. Gives how many failed.
template <class Body> long FailInTurn(Allocations::Mode mode, const Body& body) {
    bool failed = true;
    long n = 0;
    while (failed && n < 100000) {
        ++n;
        SCOPED_TRACE("allocation " + std::to_string(n));
        body([&](const auto& work) {
            Allocations::Arm(n, mode);
            work();
            Allocations::Disarm();
            failed = Allocations::HasFailed();
        });
    }
    EXPECT_FALSE(failed) << "still not enough memory";
    return n - 1;
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

bool ReloadSchema() {
    const char* path = Model::SchemaFile().c_str();
    OviTemplateManager_UnloadTemplateFile(path);
    return OviTemplateManager_LoadTemplateFile(path);
}

TEST(AllocationFailure, LeavesASchemaInUseThatCanBeDefinedAnew) {
    RunWithFailures(
        "Define a schema in use anew", Promise::kWhole,
        [](Model&) -> long { return ReloadSchema(); }, [](Model&) { EXPECT_TRUE(ReloadSchema()); });
}

/// The scene as a file.
std::string SaveTheScene() {
    const std::string path = Path("kept.asset");
    EXPECT_TRUE(OviAssetManager_SaveScene(path.c_str()));
    return ReadFile(path);
}

TEST(AllocationFailure, LosesNoValueOfASceneWhoseSchemaIsDefinedAnew) {
    const std::string wanted = [] {
        const Model model;
        return SaveTheScene();
    }();
    long tried = 0;
    for (const auto mode : {Allocations::kOnce, Allocations::kFromThenOn}) {
        tried += FailInTurn(mode, [&wanted](const auto& fail) {
            const Model model;
            fail([] { ReloadSchema(); });
            EXPECT_EQ(SaveTheScene(), wanted);
        });
    }
    FaultTables::Note(FaultTables::kAllocations, "Define a schema in use anew, the scene", tried,
                      "the scene is what it was");
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

using Edit = void (*)(Model&);

/// What a user does to a scene and its schema, one after the other.
constexpr Edit kEdits[] = {
    [](Model& m) { OviNamedObject_SetName(m.chair, "armchair_of_the_very_first_model"); },
    [](Model& m) { OviInstance_UpdateTemplate(m.screw, m.part); },
    [](Model& m) { OviInstance_AddTemplate(m.screw, m.whole); },
    [](Model& m) { OviAttributeInstance_SetValue(m.sizeOfScrew, m.value); },
    [](Model& m) { OviAttributeInstance_SetDimension(m.textsOfScrew, 3); },
    [](Model& m) { OviInstance_RemoveTemplate(m.chair, m.whole); },
    [](Model& m) { OviTemplate_AddProperty(m.whole, m.freeAttribute, 0); },
    [](Model& m) { OviAttributeProperty_SetType(m.freeAttribute, m.part); },
    [](Model&) { OviTemplateManager_CreateTemplateVersion("main.Whole", 3); },
    [](Model&) { OviTemplateManager_CreateTemplateVersion("main.Whole", 2); },
    [](Model& m) { OviNamedObject_SetName(m.base, "Ground_of_all_that_there_is"); },
    [](Model& m) { OviTemplateManager_AddTemplate(m.freeTemplate); },
    [](Model& m) { OviTemplate_AddParent(m.freeTemplate, m.whole); },
    [](Model& m) { OviTemplate_RemoveParent(m.freeTemplate, m.whole); },
    [](Model& m) { OviTemplate_AddView(m.part2, m.freeView); },
    [](Model& m) { OviGroup_AddViewItemAt(m.freeView, m.freeGroup, 0); },
};

/// All edits, without one of them when it is given.
void DoEdits(Model& model, const Edit* leftOut = nullptr) {
    for (const Edit& edit : kEdits) {
        if (&edit != leftOut)
            edit(model);
    }
}

TEST(AllocationFailure, LeavesAWholeModelWhileItIsEdited) {
    RunWithFailures("Edit a scene and its schema", Promise::kWhole, [](Model& model) -> long {
        DoEdits(model);
        return 0;
    });
}

/// Where one allocation fails, the model is what it is without one of the edits.
TEST(AllocationFailure, LeavesOutTheOneEditThatFails) {
    std::set<std::string> wanted;
    const auto describe = [](const Edit* leftOut) {
        Model model;
        DoEdits(model, leftOut);
        return model.Describe();
    };
    wanted.insert(describe(nullptr));
    for (const Edit& edit : kEdits)
        wanted.insert(describe(&edit));
    EXPECT_GT(wanted.size(), std::size(kEdits) / 2) << "most edits change something";
    const long tried = FailInTurn(Allocations::kOnce, [&wanted](const auto& fail) {
        Model model;
        fail([&model] { DoEdits(model); });
        EXPECT_EQ(wanted.count(model.Describe()), 1u);
    });
    FaultTables::Note(FaultTables::kAllocations, "Edit a scene and its schema, one failure", tried,
                      "one edit at worst is not done, and all others are");
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

// -- the library itself ---------------------------------------------------------------------------

/// Runs a step of the library's life until no allocation fails, and expects a fresh library then.
template <class Body> void LiveWithFailures(const char* row, const Body& body) {
    long tried = 0;
    for (const auto mode : {Allocations::kOnce, Allocations::kFromThenOn}) {
        tried += FailInTurn(mode, [&body](const auto& fail) {
            body(fail);
            Ovi_Initialize();
            EXPECT_EQ(OviTemplateManager_GetTemplateCount(), 1);
            EXPECT_EQ(OviTemplateManager_GetTypeCount(), 14);
            EXPECT_EQ(OviAssetManager_GetAssetCount(), 0);
            Ovi_Terminate();
        });
    }
    FaultTables::Note(FaultTables::kAllocations, row, tried, "a fresh library then begins");
}

TEST(AllocationFailure, LetsTheLibraryBeginAgain) {
    LiveWithFailures("Begin the library", [](const auto& fail) {
        fail(&Ovi_Initialize);
        Ovi_Terminate();
    });
}

TEST(AllocationFailure, LetsTheLibraryEnd) {
    LiveWithFailures("End the library", [](const auto& fail) {
        Ovi_Initialize();
        OviTemplateManager_AddSearchPath(Path("library"), false);
        OviTemplateManager_LoadTemplateFile(Model::SchemaFile().c_str());
        OviAssetManager_LoadScene(Model::SceneFile().c_str());
        fail(&Ovi_Terminate);
    });
}

} // namespace
