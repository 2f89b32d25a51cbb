// Node and anchor instances: valid once they are bound to a node of the host.

#include "api/SceneHost.h"

namespace {

class NodeInstanceTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        Schema("<template name='Mesh'><node name='body'/><anchor name='socket'/></template>");
        asset = AssetOf("Mesh", "a");
        node = static_cast<OviNodeInstance*>(PropertyOf(asset, "Mesh.body"));
        anchor = static_cast<OviAnchorInstance*>(PropertyOf(asset, "Mesh.socket"));
    }

    OviAsset* asset = nullptr;
    OviNodeInstance* node = nullptr;
    OviAnchorInstance* anchor = nullptr;
};

TEST_F(NodeInstanceTest, AreOfTheirOwnClasses) {
    EXPECT_EQ(OviObject_GetClass(node), OVI_CLASS_NODE_INSTANCE);
    EXPECT_EQ(OviObject_GetClass(anchor), OVI_CLASS_ANCHOR_INSTANCE);
    for (int id : {13, 2, 16, 31, 0}) {
        EXPECT_TRUE(OviObject_ImplementsClass(node, id)) << id;
        EXPECT_TRUE(OviObject_ImplementsClass(anchor, id)) << id;
    }
    EXPECT_FALSE(OviObject_ImplementsClass(node, OVI_CLASS_ANCHOR_INSTANCE));
    EXPECT_TRUE(OviObject_ImplementsClass(anchor, OVI_CLASS_ANCHOR_INSTANCE));
}

TEST_F(NodeInstanceTest, AreValidOnceBound) {
    for (OviNodeInstance* each : {node, static_cast<OviNodeInstance*>(anchor)}) {
        EXPECT_STREQ(OviAttributeInstance_GetBinding(each), "");
        EXPECT_FALSE(OviPropertyInstance_IsValid(each));
        OviAttributeInstance_SetBinding(each, "host|node");
        EXPECT_TRUE(OviPropertyInstance_IsValid(each));
        OviAttributeInstance_SetBinding(each, "");
        EXPECT_FALSE(OviPropertyInstance_IsValid(each));
    }
}

TEST_F(NodeInstanceTest, MakeTheirAssetValidWhenAllAreBound) {
    OviAttributeInstance_SetBinding(node, "n");
    EXPECT_FALSE(OviInstance_IsValid(asset));
    OviAttributeInstance_SetBinding(anchor, "n");
    EXPECT_TRUE(OviInstance_IsValid(asset));
}

TEST_F(NodeInstanceTest, HaveNoValueWithoutAType) {
    EXPECT_EQ(OviAttributeInstance_GetValue(node), nullptr);
    EXPECT_EQ(OviAttributeInstance_GetDimension(node), 0);
    EXPECT_FALSE(OviAttributeInstance_SetDimension(node, 2));
    int value = 3;
    OviAttributeInstance_SetValue(node, &value);
    EXPECT_EQ(OviAttributeInstance_GetValue(node), nullptr);
}

TEST_F(NodeInstanceTest, AnnounceTheirBinding) {
    StartRecording();
    OviAttributeInstance_SetBinding(anchor, "n");
    OviPropertyInstance_SetBindingLocked(node, true);
    EXPECT_EQ(TakeEvents(), (Lines{"0x3000 Mesh.socket n", "0x2000 Mesh.body true"}));
    EXPECT_TRUE(OviPropertyInstance_IsBindingLocked(node));
}

TEST_F(NodeInstanceTest, TheAttachedAnchorIsStoredInSilenceAndPlaysNoPartInValidity) {
    StartRecording();
    EXPECT_STREQ(OviAnchorInstance_GetAttachedAnchor(anchor), "");
    std::string text = "other.plug";
    OviAnchorInstance_SetAttachedAnchor(anchor, text.c_str());
    text.assign(text.size(), '-');
    EXPECT_STREQ(OviAnchorInstance_GetAttachedAnchor(anchor), "other.plug");
    EXPECT_EQ(Events(), Lines{});
    EXPECT_FALSE(OviPropertyInstance_IsValid(anchor));
    OviAnchorInstance_SetAttachedAnchor(anchor, OviAnchorInstance_GetAttachedAnchor(anchor));
    EXPECT_STREQ(OviAnchorInstance_GetAttachedAnchor(anchor), "other.plug");
    OviAnchorInstance_SetAttachedAnchor(anchor, nullptr);
    EXPECT_STREQ(OviAnchorInstance_GetAttachedAnchor(anchor), "");
}

// Files keep the binding of an anchor, not that of another node.
TEST_F(NodeInstanceTest, AreWrittenAsTheirOwnElements) {
    OviAttributeInstance_SetBinding(node, "n");
    OviAttributeInstance_SetBinding(anchor, "<m>");
    OviAnchorInstance_SetAttachedAnchor(anchor, "x");
    const std::string xml = XMLOf(asset);
    EXPECT_NE(xml.find("<node property='Mesh.body'/>"), std::string::npos) << xml;
    EXPECT_NE(xml.find("<anchor property='Mesh.socket' binding='&lt;m&gt;' attachedAnchor='x'/>"),
              std::string::npos)
        << xml;
}

TEST_F(NodeInstanceTest, ACopyInsideAValueHasBindingLocksAndAttachedAnchor) {
    Schema("<template name='Box'><attribute name='content' type='Mesh'/></template>", "box");
    OviAttributeInstance_SetBinding(node, "n");
    OviAttributeInstance_SetBinding(anchor, "m");
    OviPropertyInstance_SetValueLocked(anchor, true);
    OviAnchorInstance_SetAttachedAnchor(anchor, "x");
    OviAttributeInstance* content = AttributeOf(AssetOf("Box", "b"), "Box.content");
    OviInstance* source = asset;
    OviAttributeInstance_SetValue(content, &source);
    OviInstance* copy = ValueOf<OviInstance*>(content);
    ASSERT_NE(copy, nullptr);
    ASSERT_NE(copy, source);
    EXPECT_STREQ(OviAttributeInstance_GetBinding(AttributeOf(copy, "Mesh.body")), "n");
    auto* copied = static_cast<OviAnchorInstance*>(PropertyOf(copy, "Mesh.socket"));
    EXPECT_STREQ(OviAttributeInstance_GetBinding(copied), "m");
    EXPECT_STREQ(OviAnchorInstance_GetAttachedAnchor(copied), "x");
    EXPECT_TRUE(OviPropertyInstance_IsValueLocked(copied));
    EXPECT_FALSE(OviPropertyInstance_IsBindingLocked(copied));
}

TEST_F(NodeInstanceTest, ANodeWithAnOwnFullNameIsPackedLikeAnAttribute) {
    OviNodeProperty* spot = OviNodeProperty_New("spot", 9); // another version: no owner
    OviAttributeProperty_SetType(spot, OviTemplateManager_GetType("INT32"));
    OviTemplate* mesh = TemplateOf("Mesh");
    OviTemplate_AddProperty(mesh, spot, -1);
    OviAsset* packed = AssetOf("Mesh", "b");
    int value = 77;
    OviAttributeInstance_SetValue(AttributeOf(packed, "spot"), &value);
    alignas(16) int block[4] = {-1, -1, -1, -1};
    EXPECT_EQ(OviInstance_WriteToBinary(packed, block, sizeof block), 4u);
    EXPECT_EQ(block[0], 77);
    EXPECT_EQ(block[1], -1);
    OviObject_Delete(packed);
    OviTemplate_RemoveProperty(mesh, spot);
    OviObject_Delete(spot);
}

} // namespace
