#include "instances/AssetManager.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "core/ByteStreams.h"
#include "core/ErrorManager.h"
#include "manager/TemplateManager.h"
#include "notify/NotificationManager.h"

using namespace Kor;

namespace {

class AssetManagerClassTest : public ::testing::Test {
protected:
    void SetUp() override {
        ErrorManager::Get()->Initialize();
        NotificationManager::Get()->Initialize();
        TemplateManager::Get()->Initialize();
        Scene().Initialize();
    }
    void TearDown() override {
        Scene().Terminate();
        TemplateManager::Get()->Terminate();
        NotificationManager::Get()->Terminate();
        ErrorManager::Get()->Terminate();
    }

    static AssetManager& Scene() { return *AssetManager::Get(); }
};

/// A sink that takes so many bytes and then fails.
class NarrowSink : public ByteSink {
public:
    explicit NarrowSink(size_t room) : room_(room) {}
    bool Write(std::string_view bytes) override {
        const bool fits = bytes.size() <= room_;
        room_ -= fits ? bytes.size() : room_;
        return fits;
    }

private:
    size_t room_;
};

} // namespace

TEST(AssetContainer, MakesAssetsUnderFreeValidNamesOnly) {
    AssetContainer container;
    EXPECT_EQ(container.CreateAsset("b"), 0);
    EXPECT_EQ(container.CreateAsset("a"), 0);
    EXPECT_TRUE(container.IsDirty());
    container.SetDirty(false);
    for (const char* name : {"a", "", "a b"})
        EXPECT_EQ(container.CreateAsset(name), -1) << name;
    EXPECT_EQ(container.CreateAsset(nullptr), -1);
    EXPECT_FALSE(container.IsDirty());
    EXPECT_EQ(container.GetAssetCount(), 2);
    EXPECT_STREQ(container.GetAssetAt(1)->GetName(), "b");
    EXPECT_EQ(container.GetAsset("b"), container.GetAssetAt(1));
}

TEST(AssetContainer, OffersNothingBeyondItsInterface) {
    AssetContainer container;
    IAssetContainer& face = container;
    EXPECT_EQ(face.GetExtension(), nullptr);
    EXPECT_FALSE(face.IsDirty());
}

TEST(AssetContainer, ClearsWithoutTouchingTheDirtyFlag) {
    AssetContainer container;
    container.CreateAsset("a");
    container.Clear();
    EXPECT_EQ(container.GetAssetCount(), 0);
    EXPECT_TRUE(container.IsDirty());
}

TEST(ForceSceneExtension, ReplacesWhatFollowsTheLastDot) {
    EXPECT_EQ(ForceSceneExtension("level1.xml"), "level1.asset");
    EXPECT_EQ(ForceSceneExtension("level1"), "level1.asset");
    EXPECT_EQ(ForceSceneExtension("a.b.c"), "a.b.asset");
    EXPECT_EQ(ForceSceneExtension("levels.old\\scene"), "levels.asset");
    EXPECT_EQ(ForceSceneExtension(".hidden"), ".hidden.asset");
    EXPECT_EQ(ForceSceneExtension("."), "..asset");
    EXPECT_EQ(ForceSceneExtension(".."), "..asset");
    EXPECT_EQ(ForceSceneExtension(""), ".asset");
    EXPECT_EQ(ForceSceneExtension(nullptr), ".asset");
}

TEST_F(AssetManagerClassTest, CountsTheReferencesToAFile) {
    Asset asset("a");
    EXPECT_FALSE(Scene().UnreferenceFile(asset, "file"));
    EXPECT_TRUE(Scene().ReferenceFile(asset, "file"));
    EXPECT_FALSE(Scene().ReferenceFile(asset, "file"));
    EXPECT_TRUE(Scene().ReferenceFile(asset, "FILE"));
    EXPECT_FALSE(Scene().UnreferenceFile(asset, "file"));
    EXPECT_TRUE(Scene().UnreferenceFile(asset, "file"));
    EXPECT_FALSE(Scene().ReferenceFile(asset, "file")); // it stays in the table
    EXPECT_TRUE(Scene().UnreferenceFile(asset, "file"));
}

TEST_F(AssetManagerClassTest, CountsNoReferenceThatIsSetSilently) {
    Asset asset("a");
    asset.SetReference("file", false);
    EXPECT_STREQ(asset.GetReference(), "file");
    EXPECT_TRUE(Scene().ReferenceFile(asset, "file"));
}

TEST_F(AssetManagerClassTest, LivesAsLongAsItIsUsed) {
    Scene().NewAsset("kept");
    Scene().Initialize();
    Scene().Terminate();
    EXPECT_EQ(Scene().GetAssetCount(), 1);
    Scene().Terminate();
    EXPECT_FALSE(AssetManager::Exists());
    EXPECT_EQ(Scene().GetAssetCount(), 0);
    Scene().Initialize();
}

TEST_F(AssetManagerClassTest, ReadsAndWritesAnyStream) {
    MemorySource source("<?xml version='1.0'?><assets><asset name='b'/><asset name='a'/></assets>");
    EXPECT_TRUE(Scene().ReadScene("memory", source));
    StringSink sink;
    EXPECT_TRUE(Scene().WriteScene(sink));
    EXPECT_EQ(sink.GetText(), "<?xml version='1.0' encoding='UTF-8'?>\n<assets>"
                              "\n\t<asset name='a'/>\n\t<asset name='b'/>\n</assets>");
}

TEST_F(AssetManagerClassTest, TellsWhenAStreamDoesNotTakeTheWholeScene) {
    for (int i = 0; i < 5000; ++i)
        Scene().NewAsset(nullptr);
    StringSink whole;
    ASSERT_TRUE(Scene().WriteScene(whole));
    const size_t size = whole.GetText().size();
    for (size_t room : {size_t(0), size_t(1), size / 2, size - 1}) {
        NarrowSink narrow(room);
        EXPECT_FALSE(Scene().WriteScene(narrow)) << room;
    }
    NarrowSink wide(size);
    EXPECT_TRUE(Scene().WriteScene(wide));
}
