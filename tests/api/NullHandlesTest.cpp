// Whatever a host hands in, no call crashes, and each gives the result that means "nothing".

#include <filesystem>
#include <set>
#include <sstream>

#include "api/CallTable.h"
#include "api/CallTableNodes.h"
#include "api/Host.h"
#include "api/Values.h"

namespace {

class NullHandlesTest : public HostTest {
protected:
    void SetUp() override {
        HostTest::SetUp();
        const std::string path =
            WriteFile("schema.template",
                      TemplateFile("<enum name='Colour' type='INT32'><item name='Red' value='1'/>"
                                   "</enum><template name='Mesh'>"
                                   "<attribute name='size' type='INT32'/></template>"));
        ASSERT_TRUE(OviTemplateManager_LoadTemplateFile(path.c_str()));
        OviInstance_AddTemplate(OviAssetManager_NewAsset("Thing"),
                                OviTemplateManager_GetTemplate("Mesh"));
        // A file name made from a null path must land in the test's own directory.
        before_ = std::filesystem::current_path();
        std::filesystem::current_path(Directory());
    }

    void TearDown() override {
        badHandle() = nullptr;
        std::filesystem::current_path(before_);
        HostTest::TearDown();
    }

    static void RunAll(const Calls& calls) {
        for (const Call& call : calls)
            EXPECT_TRUE(call.run()) << call.text;
    }

    /// An object of a class that no row of the tables asks for.
    static void UseAnObjectOfAnotherClass() {
        OviErrorManager_AddErrorItem(1, "", 1, "");
        badHandle() = OviErrorManager_GetErrorItemAt(0);
    }

    std::filesystem::path before_;
};

TEST_F(NullHandlesTest, ObjectsAndTypesTakeNull) {
    RunAll(ObjectCalls());
}

TEST_F(NullHandlesTest, SchemaObjectsTakeNullAndIndicesOutOfRange) {
    RunAll(SchemaCalls());
}

TEST_F(NullHandlesTest, InstancesTakeNullAndIndicesOutOfRange) {
    RunAll(InstanceCalls());
}

TEST_F(NullHandlesTest, ManagersTakeNullAndIndicesOutOfRange) {
    RunAll(ManagerCalls());
}

TEST_F(NullHandlesTest, ObjectsAndTypesTakeObjectsOfAnotherClass) {
    UseAnObjectOfAnotherClass();
    RunAll(ObjectCalls());
}

TEST_F(NullHandlesTest, SchemaObjectsTakeObjectsOfAnotherClass) {
    UseAnObjectOfAnotherClass();
    RunAll(SchemaCalls());
}

TEST_F(NullHandlesTest, InstancesTakeObjectsOfAnotherClass) {
    UseAnObjectOfAnotherClass();
    RunAll(InstanceCalls());
}

TEST_F(NullHandlesTest, NothingChangesByBadCalls) {
    for (const Calls& calls : {ObjectCalls(), SchemaCalls(), InstanceCalls()})
        RunAll(calls);
    EXPECT_EQ(OviTemplateManager_GetTypeCount(), 14);
    EXPECT_EQ(OviTemplateManager_GetTemplateCount(), 2);
    EXPECT_EQ(OviEnumeration_GetItemCount(OviTemplateManager_GetEnumeration("Colour")), 1);
    EXPECT_EQ(OviTemplate_GetPropertyCount(OviTemplateManager_GetTemplate("Mesh")), 1);
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 1);
}

TEST_F(NullHandlesTest, UnloadingTheNullFileLeavesWhatHasNoFile) {
    OviTemplateManager_CreateTemplate("Mine");
    OviTemplateManager_UnloadTemplateFile(nullptr);
    EXPECT_EQ(OviTemplateManager_GetTypeCount(), 14);
    EXPECT_NE(OviTemplateManager_GetTemplate("Mine"), nullptr);
    EXPECT_NE(OviTemplateManager_GetRoot(), nullptr);
}

TEST_F(NullHandlesTest, EveryExportedFunctionIsCalled) {
    std::set<std::string> called;
    for (const Calls& calls :
         {ObjectCalls(), SchemaCalls(), InstanceCalls(), ManagerCalls(), NodeCalls()}) {
        for (const Call& call : calls) {
            const std::string text = call.text; // a call may stand in the argument of another
            for (size_t at = text.find("Ovi"); at != std::string::npos;
                 at = text.find("Ovi", at + 1))
                called.insert(text.substr(at, text.find('(', at) - at));
        }
    }
    std::istringstream exported(ReadFile(OVI_SOURCE_DIR "/src/api/exported-symbols.txt"));
    int count = 0;
    for (std::string function; exported >> function; ++count)
        EXPECT_EQ(called.count(function), 1u) << function;
    EXPECT_GT(count, 100);
}

} // namespace
