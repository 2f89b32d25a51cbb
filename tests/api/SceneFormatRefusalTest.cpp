// What a scene file's elements do not do: those that are refused, and assets that callbacks change.

#include "api/SceneHost.h"

namespace {

class SceneFormatRefusals : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        Schema("<type name='V' type='INT32' dim='3'/>"
               "<template name='N'><attribute name='n' type='INT32'/></template>"
               "<type name='N2' type='N' dim='2'/>"
               "<template name='T'><attribute name='a' type='INT32'/><attribute name='v' type='V'/>"
               "<attribute name='m' type='N2'/></template>");
        ASSERT_EQ(Errors(), Lines{});
    }

    /// The numbers of an attribute's value.
    static std::vector<int> Numbers(OviAsset* asset, const char* fullName) {
        OviAttributeInstance* attribute = AttributeOf(asset, fullName);
        std::vector<int> numbers;
        for (int i = 0; i < OviAttributeInstance_GetDimension(attribute); ++i)
            numbers.push_back(ValueOf<int>(attribute, i));
        return numbers;
    }
};

using Ints = std::vector<int>;

// -- elements that are refused ----------------------------------------------------------------

TEST_F(SceneFormatRefusals, ARefusedElementClosesNothing) {
    Load("<asset name='x'><implements template='T'/><attribute property='T.v'><value>1</value>"
         "<geometry property='T.a'/></geometry><attribute></attribute><attribute "
         "property='T.gone'><value>7</value><asset name='w'/></attribute><node/><anchor></anchor>"
         "<node property='none'></node><value>2</value></attribute><asset></asset>"
         "<attribute property='T.a' value='3'/></asset><attribute property='T.a'>"
         "<asset name='w'/></attribute>");
    OviAsset* asset = OviAssetManager_GetAsset("x");
    EXPECT_EQ(Numbers(asset, "T.v"), (Ints{1, 2, 0}));
    EXPECT_EQ(Numbers(asset, "T.a"), Ints{3});
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 1)
        << "what stands in a refused attribute is skipped";
}

TEST_F(SceneFormatRefusals, ARefusedElementInAnotherOfItsKindEndsAlone) {
    Load("<asset name='x'><implements template='T'/><attribute property='T.m'><asset name='p'/>"
         "<attribute><asset name='w'/></attribute><asset name='q'/></attribute></asset>");
    OviAsset* asset = OviAssetManager_GetAsset("x");
    EXPECT_STREQ(OviNamedObject_GetName(NestedIn(asset, "T.m", 0)), "p");
    EXPECT_STREQ(OviNamedObject_GetName(NestedIn(asset, "T.m", 1)), "q");
    EXPECT_EQ(OviAssetManager_GetAsset("w"), nullptr);
}

TEST_F(SceneFormatRefusals, AnAssetRefInASkippedAttributeIsReadAsAnywhere) {
    Load("<asset name='x'><implements template='T'/><attribute property='T.gone'>"
         "<assetRef name='w'/></attribute></asset>");
    EXPECT_NE(OviAssetManager_GetAsset("w"), nullptr);
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 2);
}

// Only attributes have values, of which the assets in them would be elements.
TEST_F(SceneFormatRefusals, AnAssetInARefusedNodeOrGeometryIsOneOfTheScene) {
    for (const char* refused : {"node", "anchor", "geometry"}) {
        OviAssetManager_NewScene();
        const std::string element(refused);
        Load("<asset name='x'><implements template='T'/><" + element + " property='T.gone'>" +
             "<asset name='w'><implements template='T'/><attribute property='T.a' value='5'/>" +
             "</asset></" + element + "><attribute property='T.a' value='3'/></asset>");
        EXPECT_EQ(Numbers(OviAssetManager_GetAsset("w"), "T.a"), Ints{5}) << refused;
        EXPECT_EQ(Numbers(OviAssetManager_GetAsset("x"), "T.a"), Ints{3}) << refused;
    }
}

TEST_F(SceneFormatRefusals, AnEndTagEndsWhatStandsInItsElementToo) {
    Load("<asset name='x'><implements template='T'/><attribute property='T.m'><asset name='p'>"
         "</attribute><attribute property='T.a' value='4'/></asset></asset><asset name='y'/>");
    EXPECT_EQ(Numbers(OviAssetManager_GetAsset("x"), "T.a"), Ints{4});
    EXPECT_NE(OviAssetManager_GetAsset("y"), nullptr);
}

// -- callbacks that rename --------------------------------------------------------------------

TEST_F(SceneFormatRefusals, AnAssetThatACallbackRenamesGetsWhatTheFileSays) {
    const Reaction rename([](OviObject* object, int event, void*) {
        if (event == OVI_EVENT_ASSET_ADDED)
            OviNamedObject_SetName(static_cast<OviAsset*>(object), "other");
    });
    EXPECT_TRUE(Load("<asset name='x' reference='f.asset'><implements template='T'/>"
                     "<attribute property='T.a' value='3'/></asset>"));
    OviAsset* asset = OviAssetManager_GetAsset("other");
    ASSERT_NE(asset, nullptr);
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 1);
    EXPECT_STREQ(OviAsset_GetReference(asset), "f.asset");
    EXPECT_EQ(OviInstance_GetTemplateCount(asset), 1);
    EXPECT_EQ(Numbers(asset, "T.a"), Ints{3});
}

TEST_F(SceneFormatRefusals, AnAssetThatACallbackRemovesIsSkipped) {
    OviAsset* removed = nullptr;
    const Reaction remove([&removed](OviObject* object, int event, void*) {
        if (event == OVI_EVENT_ASSET_ADDED && !removed) {
            removed = static_cast<OviAsset*>(object);
            OviAssetManager_RemoveAsset(removed);
        }
    });
    EXPECT_TRUE(Load("<asset name='x'><implements template='T'/><asset name='y'/></asset>"
                     "<asset name='z'/>"));
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 1);
    EXPECT_EQ(OviInstance_GetTemplateCount(removed), 0);
    OviObject_Delete(removed);
}

TEST_F(SceneFormatRefusals, AnAssetThatACallbackDeletesIsNotHandedOut) {
    const Reaction remove([](OviObject* object, int event, void*) {
        if (event == OVI_EVENT_ASSET_ADDED)
            OviObject_Delete(object);
    });
    EXPECT_EQ(OviAssetManager_NewAsset("x"), nullptr);
    EXPECT_TRUE(Load("<asset name='y'><implements template='T'/></asset>"));
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 0);
}

} // namespace
