#include "instances/AssetManager.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "core/ByteStreams.h"
#include "support/WithManagers.h"

using namespace Kor;

namespace {

class AssetManagerClassTest : public WithManagers {};

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
