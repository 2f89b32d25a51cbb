// Memory that runs out while a file is read: a host that was not told would take the half that was
// read for the whole, and save it over the file.

#include <fstream>
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "faults/Allocations.h"
#include "faults/Model.h"
#include "ovi/ovi.h"

namespace {

constexpr int kAnyLevel = 1 | 2 | 4 | 8;

/// How often "out of memory" was reported with that source.
int CountReports(const std::string& source) {
    int count = 0;
    for (int i = 0; i < OviErrorManager_GetErrorItemCount(kAnyLevel); ++i) {
        OviErrorItem* item = OviErrorManager_GetErrorItemAt(i);
        if (item && OviErrorItem_GetSourceName(item) == source &&
            std::string(OviErrorItem_GetMessage(item)) == "Out of memory while reading the file" &&
            OviErrorItem_GetErrorLevel(item) == OVI_LEVEL_ERROR &&
            OviErrorItem_GetLineNumber(item) == -1)
            ++count;
    }
    return count;
}

class ReadingFault : public ::testing::TestWithParam<Allocations::Mode> {
protected:
    using Load = std::function<bool()>;

    /// Loads over and over, each time with another allocation that fails, until none does.
    static void ExpectReports(const std::string& source, const Load& prepare, const Load& load,
                              const Load& isWhole) {
        bool failed = true;
        for (long n = 1; failed && !HasFailure(); ++n) {
            SCOPED_TRACE(n);
            Ovi_Initialize();
            EXPECT_TRUE(prepare());
            OviErrorManager_Clear();
            Allocations::Arm(n, GetParam());
            const bool loaded = load();
            Allocations::Disarm();
            failed = Allocations::HasFailed();
            EXPECT_TRUE(loaded || failed);
            EXPECT_EQ(CountReports(source), loaded ? 0 : 1);
            EXPECT_TRUE(!loaded || isWhole());
            Ovi_Terminate();
        }
    }

    static bool LoadSchema() {
        return OviTemplateManager_LoadTemplateFile(Model::SchemaFile().c_str());
    }
};

TEST_P(ReadingFault, OfASceneIsReported) {
    const std::string path = Model::SceneFile();
    Ovi_Initialize();
    ASSERT_TRUE(LoadSchema() && OviAssetManager_LoadScene(path.c_str()));
    const int count = OviAssetManager_GetAssetCount();
    Ovi_Terminate();
    ExpectReports(
        path, &LoadSchema, [&] { return OviAssetManager_LoadScene(path.c_str()); },
        [=] { return OviAssetManager_GetAssetCount() == count; });
}

TEST_P(ReadingFault, OfATemplateFileIsReported) {
    const std::string path = Model::SchemaFile();
    Ovi_Initialize();
    ASSERT_TRUE(LoadSchema());
    const int count = OviTemplateManager_GetTemplateCount();
    Ovi_Terminate();
    ExpectReports(
        path, [] { return true; }, &LoadSchema,
        [=] { return OviTemplateManager_GetTemplateCount() == count; });
}

INSTANTIATE_TEST_SUITE_P(Memory, ReadingFault,
                         ::testing::Values(Allocations::kOnce, Allocations::kFromThenOn),
                         [](const auto& test) {
                             return test.param == Allocations::kOnce ? "Once" : "FromThenOn";
                         });

TEST(ReadingFault, OfAPackageNamesItsFile) {
    const std::string file = Model::Path("library") + "\\more\\more.template";
    Ovi_Initialize();
    OviTemplateManager_AddSearchPath(Model::Path("library").c_str(), false);
    bool named = false;
    bool failed = true;
    for (long n = 1; failed; ++n) {
        OviErrorManager_Clear();
        Allocations::Arm(n, Allocations::kFromThenOn);
        const bool loaded = OviTemplateManager_LoadPackage("more");
        Allocations::Disarm();
        failed = Allocations::HasFailed();
        EXPECT_EQ(loaded, OviErrorManager_GetErrorItemCount(OVI_LEVEL_ERROR) == 0) << n;
        EXPECT_NE(loaded, CountReports(file) + CountReports("more") == 1) << n;
        named = named || CountReports(file) == 1;
    }
    EXPECT_TRUE(named);
    Ovi_Terminate();
}

} // namespace
