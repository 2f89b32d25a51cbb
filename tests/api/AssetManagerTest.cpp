#include "api/SceneHost.h"

#include <algorithm>

namespace {

class AssetManagerTest : public SceneTest {
protected:
    /// The names of the scene's assets, in order.
    static Lines Names() {
        Lines names;
        for (int i = 0; i < OviAssetManager_GetAssetCount(); ++i)
            names.push_back(OviNamedObject_GetName(OviAssetManager_GetAssetAt(i)));
        return names;
    }

    static std::string NewName() {
        return OviNamedObject_GetName(OviAssetManager_NewAsset(nullptr));
    }
};

} // namespace

TEST_F(AssetManagerTest, StartsWithAnEmptyCleanScene) {
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 0);
    EXPECT_EQ(OviAssetManager_GetAssetAt(0), nullptr);
    EXPECT_EQ(OviAssetManager_GetAssetAt(-1), nullptr);
    EXPECT_FALSE(OviAssetManager_IsDirty());
}

TEST_F(AssetManagerTest, KeepsAssetsInNameOrderAndAnnouncesTheirPlaces) {
    StartRecording();
    for (const char* name : {"m", "b", "z", "Z", "ba"})
        EXPECT_STREQ(OviNamedObject_GetName(OviAssetManager_NewAsset(name)), name);
    EXPECT_EQ(Names(), (Lines{"Z", "b", "ba", "m", "z"}));
    EXPECT_EQ(Events(),
              (Lines{"0x1005 m 0", "0x1005 b 0", "0x1005 z 2", "0x1005 Z 0", "0x1005 ba 2"}));
}

TEST_F(AssetManagerTest, AnnouncesPlacesAmongAssetsThatWereMadeBeforeAnybodyListened) {
    for (int i = 0; i < 100; ++i)
        OviAssetManager_NewAsset(("n" + std::to_string(100 + i * 7 % 100)).c_str());
    StartRecording();
    OviAssetManager_NewAsset("n142_");
    OviAsset* removed = OviAssetManager_GetAsset("n150");
    OviAssetManager_RemoveAsset(removed);
    OviObject_Delete(removed);
    EXPECT_EQ(Events(), (Lines{"0x1005 n142_ 43", "0x1006 n150 51"}));
    const Lines names = Names();
    EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
    EXPECT_EQ(names.size(), 100U);
}

TEST_F(AssetManagerTest, FindsAssetsByTheirExactNames) {
    OviAsset* asset = OviAssetManager_NewAsset("Thing");
    EXPECT_EQ(OviAssetManager_GetAsset("Thing"), asset);
    for (const char* name : {"thing", "Thin", "Thing ", ""})
        EXPECT_EQ(OviAssetManager_GetAsset(name), nullptr) << name;
    EXPECT_EQ(OviAssetManager_GetAsset(nullptr), nullptr);
}

TEST_F(AssetManagerTest, MakesNoSecondAssetOfOneName) {
    OviAssetManager_NewAsset("taken");
    StartRecording();
    EXPECT_EQ(OviAssetManager_NewAsset("taken"), nullptr);
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 1);
    EXPECT_TRUE(Events().empty());
}

TEST_F(AssetManagerTest, MakesNothingForAnInvalidName) {
    StartRecording();
    for (const char* name : {"", "a b", "a.b", "\xC3\xA4", "a\n"})
        EXPECT_EQ(OviAssetManager_NewAsset(name), nullptr) << name;
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 0);
    EXPECT_FALSE(OviAssetManager_IsDirty());
    EXPECT_TRUE(Events().empty());
}

TEST_F(AssetManagerTest, NamesAssetsWithTheFirstFreeNumber) {
    StartRecording();
    EXPECT_EQ(NewName(), "Asset1");
    EXPECT_EQ(NewName(), "Asset2");
    EXPECT_EQ(NewName(), "Asset3");
    EXPECT_EQ(Events(), (Lines{"0x1005 Asset1 0", "0x1005 Asset2 1", "0x1005 Asset3 2"}));
}

TEST_F(AssetManagerTest, PassesOverNumbersThatNamesGivenByTheHostUse) {
    for (const char* name : {"Asset2", "Asset3", "Asset03", "asset1", "Asset", "Asset5x"})
        OviAssetManager_NewAsset(name);
    EXPECT_EQ(NewName(), "Asset1");
    EXPECT_EQ(NewName(), "Asset4");
    EXPECT_EQ(NewName(), "Asset5");
}

TEST_F(AssetManagerTest, UsesNumbersThatBecameFreeAgain) {
    for (int i = 0; i < 9; ++i)
        NewName();
    OviAsset* second = OviAssetManager_GetAsset("Asset2");
    OviAssetManager_RemoveAsset(second);
    OviObject_Delete(second);
    OviObject_Delete(OviAssetManager_GetAsset("Asset4"));
    OviNamedObject_SetName(OviAssetManager_GetAsset("Asset7"), "Renamed");
    EXPECT_EQ(NewName(), "Asset2");
    EXPECT_EQ(NewName(), "Asset4");
    EXPECT_EQ(NewName(), "Asset7");
    EXPECT_EQ(NewName(), "Asset10");
    OviAssetManager_NewScene();
    EXPECT_EQ(NewName(), "Asset1");
}

TEST_F(AssetManagerTest, KeepsANumberThatARenamedAssetTookOver) {
    NewName();
    OviAsset* other = OviAssetManager_NewAsset("other");
    OviNamedObject_SetName(other, "Asset2");
    EXPECT_EQ(NewName(), "Asset3");
    OviNamedObject_SetName(other, "Asset1"); // both stay
    EXPECT_EQ(Names(), (Lines{"Asset1", "Asset1", "Asset3"}));
    EXPECT_EQ(NewName(), "Asset2");
    OviObject_Delete(other);
    EXPECT_NE(OviAssetManager_GetAsset("Asset1"), nullptr);
    EXPECT_EQ(NewName(), "Asset4");
}

TEST_F(AssetManagerTest, NamesManyAssetsWithoutSearchingFromTheStart) {
    constexpr int kCount = 5000;
    for (int i = 0; i < kCount; ++i)
        OviAssetManager_NewAsset(nullptr);
    EXPECT_EQ(OviAssetManager_GetAssetCount(), kCount);
    EXPECT_NE(OviAssetManager_GetAsset("Asset5000"), nullptr);
}

TEST_F(AssetManagerTest, OrdersManyAssetsAlikeWhetherOrNotAnybodyListens) {
    const auto makeMany = [] {
        for (int i = 0; i < 1000; ++i)
            OviAssetManager_NewAsset(("thing_" + std::to_string(i * 337 % 1000)).c_str());
        return Names();
    };
    const Lines unheard = makeMany();
    EXPECT_EQ(unheard.size(), 1000U);
    EXPECT_TRUE(std::is_sorted(unheard.begin(), unheard.end()));
    OviAssetManager_NewScene();
    StartRecording();
    EXPECT_EQ(makeMany(), unheard);
}

TEST_F(AssetManagerTest, RenamesAndDeletesAssetsAmongManyThatAreNew) {
    std::vector<OviAsset*> made;
    for (int i = 0; i < 500; ++i)
        made.push_back(OviAssetManager_NewAsset(("t" + std::to_string(i * 337 % 500)).c_str()));
    EXPECT_TRUE(OviNamedObject_SetName(made[100], "a_first"));
    EXPECT_EQ(OviAssetManager_GetAssetAt(0), made[100]);
    OviAssetManager_NewAsset("b_new");
    OviObject_Delete(made[200]);
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 500);
    EXPECT_EQ(OviAssetManager_RemoveAsset(made[100]), 0);
    OviObject_Delete(made[100]);
    const Lines names = Names();
    EXPECT_EQ(names.front(), "b_new");
    EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
}

TEST_F(AssetManagerTest, MovesRenamedAssetsToTheirNewPlace) {
    OviAsset* asset = OviAssetManager_NewAsset("a");
    OviAssetManager_NewAsset("b");
    StartRecording();
    EXPECT_TRUE(OviNamedObject_SetName(asset, "c"));
    EXPECT_EQ(Names(), (Lines{"b", "c"}));
    EXPECT_EQ(OviAssetManager_GetAsset("a"), nullptr);
    EXPECT_EQ(OviAssetManager_GetAsset("c"), asset);
    EXPECT_EQ(Events(), Lines{"0x1007 a c"});
}

TEST_F(AssetManagerTest, HandsRemovedAssetsToTheHost) {
    OviAssetManager_NewAsset("a");
    OviAsset* asset = OviAssetManager_NewAsset("b");
    StartRecording();
    EXPECT_EQ(OviAssetManager_RemoveAsset(asset), 1);
    EXPECT_EQ(OviAssetManager_GetAsset("b"), nullptr);
    EXPECT_EQ(OviAssetManager_RemoveAsset(asset), ~1); // announced all the same
    EXPECT_EQ(Events(), (Lines{"0x1006 b 1", "0x1006 b -2"}));
    EXPECT_EQ(OviAssetManager_AddAsset(asset), 1);
    EXPECT_EQ(OviAssetManager_GetAsset("b"), asset);
    EXPECT_EQ(Events().back(), "0x1005 b 1");
}

TEST_F(AssetManagerTest, OverwritesAnAssetOfTheSameNameWithoutDeletingIt) {
    OviAsset* first = OviAssetManager_NewAsset("twin");
    OviAssetManager_RemoveAsset(first);
    OviAsset* second = OviAssetManager_NewAsset("twin");
    StartRecording();
    EXPECT_EQ(OviAssetManager_AddAsset(first), ~0);
    EXPECT_EQ(Events(), Lines{"0x1005 twin -1"});
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 1);
    EXPECT_EQ(OviAssetManager_GetAsset("twin"), first);
    EXPECT_STREQ(OviNamedObject_GetName(second), "twin");
    OviNamedObject_SetName(second, "other"); // no longer the scene's: not listed anew
    EXPECT_EQ(OviAssetManager_GetAsset("other"), nullptr);
    OviObject_Delete(second);
    EXPECT_EQ(OviAssetManager_GetAsset("twin"), first);
}

TEST_F(AssetManagerTest, KeepsOneEntryForAnAssetAddedTwice) {
    OviAsset* asset = OviAssetManager_NewAsset("a");
    EXPECT_EQ(OviAssetManager_AddAsset(asset), ~0);
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 1);
    EXPECT_EQ(OviAssetManager_RemoveAsset(asset), 0);
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 0);
    OviObject_Delete(asset);
}

TEST_F(AssetManagerTest, RemovesANamesakeByItsName) {
    OviAsset* removed = OviAssetManager_NewAsset("twin");
    OviAssetManager_RemoveAsset(removed);
    OviAsset* listed = OviAssetManager_NewAsset("twin");
    EXPECT_EQ(OviAssetManager_RemoveAsset(removed), 0);
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 0);
    OviObject_Delete(removed);
    OviObject_Delete(listed);
}

TEST_F(AssetManagerTest, RemovesTheVeryAssetWhereTwoShareAName) {
    OviAsset* first = OviAssetManager_NewAsset("one");
    OviAsset* second = OviAssetManager_NewAsset("two");
    OviNamedObject_SetName(second, "one");
    OviAssetManager_RemoveAsset(second);
    EXPECT_EQ(OviAssetManager_GetAsset("one"), first);
    OviObject_Delete(second);
}

TEST_F(AssetManagerTest, KeepsOneEntryForAnAssetAddedAgainBesideItsNamesake) {
    OviAsset* first = OviAssetManager_NewAsset("one");
    OviAsset* second = OviAssetManager_NewAsset("two");
    OviNamedObject_SetName(second, "one");
    EXPECT_EQ(OviAssetManager_AddAsset(second), ~1);
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 2);
    EXPECT_EQ(OviAssetManager_GetAssetAt(0), first);
    EXPECT_EQ(OviAssetManager_GetAssetAt(1), second);
    EXPECT_TRUE(OviAssetManager_NewScene());
}

TEST_F(AssetManagerTest, TakesADeletedAssetOutOfTheSceneWithoutAnEvent) {
    OviAsset* asset = OviAssetManager_NewAsset("a");
    StartRecording();
    OviObject_Delete(asset);
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 0);
    EXPECT_TRUE(Events().empty());
}

TEST_F(AssetManagerTest, BecomesDirtyWithEveryAddAndRemove) {
    OviAsset* asset = OviAssetManager_NewAsset("a");
    EXPECT_TRUE(OviAssetManager_IsDirty());
    EXPECT_TRUE(OviAssetManager_NewScene());
    EXPECT_FALSE(OviAssetManager_IsDirty());
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 0);
    asset = OviAssetManager_NewAsset("a");
    OviAssetManager_RemoveAsset(asset);
    OviAssetManager_NewScene();
    OviAssetManager_RemoveAsset(asset); // not there: dirty all the same
    EXPECT_TRUE(OviAssetManager_IsDirty());
    OviAssetManager_NewScene();
    OviAssetManager_AddAsset(asset);
    EXPECT_TRUE(OviAssetManager_IsDirty());
}

TEST_F(AssetManagerTest, DoesNotCountOtherChangesAsDirt) {
    Schema("<template name='T'><attribute name='x' type='INT32'/></template>");
    OviAssetManager_NewAsset("kept");
    OviAsset* asset = OviAssetManager_NewAsset("a");
    OviAssetManager_RemoveAsset(asset);
    OviAssetManager_NewScene();
    OviInstance_AddTemplate(asset, TemplateOf("T"));
    OviNamedObject_SetName(asset, "b");
    OviAsset_SetReference(asset, "file");
    OviAttributeInstance_SetBinding(AttributeOf(asset, "T.x"), "node");
    EXPECT_FALSE(OviAssetManager_IsDirty());
    OviObject_Delete(asset);
}

TEST_F(AssetManagerTest, ClearsTheSceneWithoutEvents) {
    Schema("<template name='T'><attribute name='x' type='STRING' default='text'/></template>");
    for (int i = 0; i < 1000; ++i)
        OviAttributeInstance_GetValue(AttributeOf(AssetOf("T"), "T.x"));
    StartRecording();
    EXPECT_TRUE(OviAssetManager_NewScene());
    EXPECT_TRUE(OviAssetManager_NewScene());
    EXPECT_TRUE(Events().empty());
}

TEST_F(AssetManagerTest, LetsCallbacksAddAssets) {
    const Reaction add([](OviObject*, int event, void*) {
        if (event == OVI_EVENT_ASSET_ADDED)
            OviAssetManager_NewAsset(nullptr);
    });
    OviAsset* asset = OviAssetManager_NewAsset("wanted");
    EXPECT_STREQ(OviNamedObject_GetName(asset), "wanted");
    EXPECT_EQ(Names(), (Lines{"Asset1", "wanted"}));
}

TEST_F(AssetManagerTest, LetsCallbacksRenameTheNewAsset) {
    const Reaction rename([](OviObject* object, int event, void*) {
        if (event == OVI_EVENT_ASSET_ADDED)
            OviNamedObject_SetName(static_cast<OviAsset*>(object), "renamed");
    });
    OviAsset* asset = OviAssetManager_NewAsset(nullptr);
    EXPECT_EQ(OviAssetManager_GetAsset("renamed"), asset);
    EXPECT_STREQ(OviNamedObject_GetName(OviAssetManager_NewAsset(nullptr)), "renamed");
    EXPECT_EQ(Names(), (Lines{"renamed", "renamed"}));
}

TEST_F(AssetManagerTest, TakesNoHandlesThatAreNoAssets) {
    OviInstance* instance = OviInstance_New("free");
    EXPECT_EQ(OviAssetManager_AddAsset(nullptr), -1);
    EXPECT_EQ(OviAssetManager_RemoveAsset(nullptr), -1);
    EXPECT_EQ(OviAssetManager_AddAsset(reinterpret_cast<OviAsset*>(instance)), -1);
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 0);
    OviObject_Delete(instance);
}
