// Geometry instances: one node instance for each alternate.

#include "api/SceneHost.h"

namespace {

class GeometryInstanceTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        Schema("<lod name='High'/><lod name='Low'/><template name='Mesh'><geometry name='shape'>"
               "<alternate lod='Low'/><alternate lod='High'/></geometry></template>"
               "<template name='Bare'><geometry name='none'/></template>");
        asset = AssetOf("Mesh", "a");
        shape = ShapeOf(asset);
    }

    static OviGeometryInstance* ShapeOf(OviInstance* instance) {
        return static_cast<OviGeometryInstance*>(PropertyOf(instance, "Mesh.shape"));
    }

    static OviNodeInstance* NodeAt(OviGeometryInstance* geometry, int index) {
        return OviGeometryInstance_GetNodeInstanceAt(geometry, index);
    }

    static std::string BindingAt(OviGeometryInstance* geometry, int index) {
        OviNodeInstance* node = NodeAt(geometry, index);
        return node ? OviAttributeInstance_GetBinding(node) : "null";
    }

    /// The bindings of the asset's shape once it was saved, deleted and loaded.
    Lines BindingsAfterReload() {
        const std::string path = PathOf("saved.asset");
        EXPECT_TRUE(OviAssetManager_SaveScene(path.c_str()));
        OviAssetManager_NewScene();
        EXPECT_TRUE(OviAssetManager_LoadScene(path.c_str()));
        EXPECT_EQ(Errors(), Lines{});
        asset = OviAssetManager_GetAsset("a");
        shape = ShapeOf(asset);
        return {BindingAt(shape, 0), BindingAt(shape, 1)};
    }

    OviAsset* asset = nullptr;
    OviGeometryInstance* shape = nullptr;
};

TEST_F(GeometryInstanceTest, IsNoAttributeInstance) {
    EXPECT_EQ(OviObject_GetClass(shape), OVI_CLASS_GEOMETRY_INSTANCE);
    for (int id : {8, 16, 31, 0})
        EXPECT_TRUE(OviObject_ImplementsClass(shape, id)) << id;
    for (int id : {2, 13, 30})
        EXPECT_FALSE(OviObject_ImplementsClass(shape, id)) << id;
}

TEST_F(GeometryInstanceTest, HasANodeInstanceForEachAlternateInTheirOrder) {
    EXPECT_EQ(Describe(NodeAt(shape, 0)), "High.High");
    EXPECT_EQ(Describe(NodeAt(shape, 1)), "Low.Low");
    EXPECT_EQ(NodeAt(shape, 2), nullptr);
    EXPECT_EQ(NodeAt(shape, -1), nullptr);
    EXPECT_EQ(OviObject_GetClass(NodeAt(shape, 0)), OVI_CLASS_NODE_INSTANCE);
    EXPECT_EQ(PropertyOf(asset, "High.High"), nullptr) << "the instance itself does not list them";
}

TEST_F(GeometryInstanceTest, IsValidOnceAllNodesAreBound) {
    EXPECT_FALSE(OviPropertyInstance_IsValid(shape));
    OviAttributeInstance_SetBinding(NodeAt(shape, 0), "n");
    EXPECT_FALSE(OviPropertyInstance_IsValid(shape));
    OviAttributeInstance_SetBinding(NodeAt(shape, 1), "m");
    EXPECT_TRUE(OviPropertyInstance_IsValid(shape));
    EXPECT_TRUE(OviInstance_IsValid(asset));
}

TEST_F(GeometryInstanceTest, WithoutAlternatesItIsValid) {
    OviAsset* bare = AssetOf("Bare", "b");
    OviPropertyInstance* none = PropertyOf(bare, "Bare.none");
    EXPECT_TRUE(OviPropertyInstance_IsValid(none));
    EXPECT_EQ(NodeAt(static_cast<OviGeometryInstance*>(none), 0), nullptr);
    EXPECT_EQ(OviInstance_GetSize(bare), 0u);
}

TEST_F(GeometryInstanceTest, NodesAnnounceTheirBinding) {
    StartRecording();
    OviAttributeInstance_SetBinding(NodeAt(shape, 1), "n");
    EXPECT_EQ(Events(), Lines{"0x3000 Low.Low n"});
}

TEST_F(GeometryInstanceTest, AReplacedNodeInstanceBelongsToTheCaller) {
    OviGeometryInstance* other = ShapeOf(AssetOf("Mesh", "b"));
    OviNodeInstance* old = NodeAt(shape, 0);
    OviNodeInstance* replacement = NodeAt(other, 0);
    OviAttributeInstance_SetBinding(old, "old");
    OviAttributeInstance_SetBinding(replacement, "new");
    OviGeometryInstance_SetNodeInstanceAt(other, 0, nullptr);
    StartRecording();
    OviGeometryInstance_SetNodeInstanceAt(shape, 0, replacement);
    EXPECT_EQ(Events(), Lines{});
    EXPECT_EQ(NodeAt(shape, 0), replacement);
    EXPECT_STREQ(OviAttributeInstance_GetBinding(old), "old");
    OviObject_Delete(old);
    OviObject_Delete(asset);
}

TEST_F(GeometryInstanceTest, ANodeInstanceStandsInOnePlaceOnly) {
    OviGeometryInstance* other = ShapeOf(AssetOf("Mesh", "b"));
    OviNodeInstance* moved = NodeAt(other, 1);
    OviNodeInstance* old = NodeAt(shape, 0);
    OviGeometryInstance_SetNodeInstanceAt(shape, 0, moved);
    EXPECT_EQ(NodeAt(other, 1), nullptr) << "it moved out of the other geometry";
    OviObject_Delete(old);
    OviNodeInstance* second = NodeAt(shape, 1);
    OviGeometryInstance_SetNodeInstanceAt(shape, 1, moved);
    EXPECT_EQ(NodeAt(shape, 0), nullptr);
    EXPECT_EQ(NodeAt(shape, 1), moved);
    OviObject_Delete(second);
    EXPECT_FALSE(OviPropertyInstance_IsValid(shape));
    OviObject_Delete(OviAssetManager_GetAsset("b"));
    EXPECT_EQ(Describe(NodeAt(shape, 1)), "Low.Low");
}

TEST_F(GeometryInstanceTest, ANodeInstanceOfAnInstanceMovesOutOfItsList) {
    Schema("<template name='Thing'><node name='body'/></template>", "thing");
    OviAsset* thing = AssetOf("Thing", "t");
    auto* body = static_cast<OviNodeInstance*>(PropertyOf(thing, "Thing.body"));
    OviNodeInstance* old = NodeAt(shape, 0);
    OviGeometryInstance_SetNodeInstanceAt(shape, 0, body);
    EXPECT_EQ(PropertyOf(thing, "Thing.body"), nullptr);
    OviObject_Delete(thing);
    OviObject_Delete(old);
    EXPECT_EQ(Describe(NodeAt(shape, 0)), "Thing.body");
    OviAttributeInstance_SetBinding(body, "b");
    OviAttributeInstance_SetBinding(NodeAt(shape, 1), "l");
    EXPECT_NE(XMLOf(asset).find("<alternate lod='High' binding='b'/>"), std::string::npos);
    EXPECT_EQ(BindingsAfterReload(), (Lines{"b", "l"}));
}

TEST_F(GeometryInstanceTest, TheBindingsOfTwoNodesOfOneLevelKeepTheirPlaces) {
    OviNodeInstance* low = NodeAt(ShapeOf(AssetOf("Mesh", "b")), 1);
    OviNodeInstance* old = NodeAt(shape, 0);
    OviGeometryInstance_SetNodeInstanceAt(shape, 0, low);
    OviObject_Delete(old);
    OviAttributeInstance_SetBinding(low, "first");
    OviAttributeInstance_SetBinding(NodeAt(shape, 1), "second");
    EXPECT_EQ(BindingsAfterReload(), (Lines{"first", "second"}));
}

TEST_F(GeometryInstanceTest, ANodeIsWrittenWithItsLevelWhateverThatIsCalledNow) {
    OviAttributeInstance_SetBinding(NodeAt(shape, 0), "h");
    OviAttributeInstance_SetBinding(NodeAt(shape, 1), "l");
    auto* property = static_cast<OviGeometryProperty*>(OviPropertyInstance_GetProperty(shape));
    OviNamedObject_SetName(
        OviGeometryAlternate_GetLOD(OviGeometryProperty_GetAlternate(property, "High")), "Zoom");
    EXPECT_NE(XMLOf(asset).find("<alternate lod='Zoom' binding='h'/>"), std::string::npos);
    EXPECT_NE(XMLOf(asset).find("<alternate lod='Low' binding='l'/>"), std::string::npos);
}

TEST_F(GeometryInstanceTest, WhereAnAlternateIsMissingNodesGoByTheirOwn) {
    auto* property = static_cast<OviGeometryProperty*>(OviPropertyInstance_GetProperty(shape));
    OviGeometryAlternate* high = OviGeometryProperty_GetAlternate(property, "High");
    OviAttributeInstance_SetBinding(NodeAt(shape, 0), "h");
    OviAttributeInstance_SetBinding(NodeAt(shape, 1), "l");
    OviGeometryProperty_RemoveAlternate(property, high);
    EXPECT_NE(XMLOf(asset).find("<alternate lod='High' binding='h'/>"), std::string::npos);
    EXPECT_NE(XMLOf(asset).find("<alternate lod='Low' binding='l'/>"), std::string::npos);
    OviGeometryProperty_AddAlternate(property, high);
}

TEST_F(GeometryInstanceTest, ADeletedNodeInstanceLeavesItsPlaceEmpty) {
    OviObject_Delete(NodeAt(shape, 0));
    EXPECT_EQ(NodeAt(shape, 0), nullptr);
    EXPECT_FALSE(OviPropertyInstance_IsValid(shape));
    EXPECT_EQ(XMLOf(asset).find("lod='High'"), std::string::npos);
}

TEST_F(GeometryInstanceTest, TakesNoNodeInstanceWhoseValueItStandsInsideOf) {
    Schema("<template name='I'><geometry name='g'><alternate lod='High'/></geometry></template>"
           "<template name='X'><node name='n'/></template>",
           "circle");
    OviAsset* holder = AssetOf("X", "holder");
    auto* node = static_cast<OviNodeInstance*>(PropertyOf(holder, "X.n"));
    OviAttributeProperty_SetType(
        static_cast<OviAttributeProperty*>(OviPropertyInstance_GetProperty(node)), TemplateOf("I"));
    OviAttributeInstance_SetDimension(node, 1);
    OviInstance* nested = NestedIn(holder, "X.n");
    ASSERT_NE(nested, nullptr);
    auto* inner = static_cast<OviGeometryInstance*>(PropertyOf(nested, "I.g"));
    OviNodeInstance* before = NodeAt(inner, 0);
    OviGeometryInstance_SetNodeInstanceAt(inner, 0, node);
    EXPECT_EQ(NodeAt(inner, 0), before);
    EXPECT_EQ(PropertyOf(holder, "X.n"), node);
    EXPECT_EQ(OviInstance_GetParentAsset(nested), holder);
}

TEST_F(GeometryInstanceTest, AnIndexOutOfRangeChangesNothing) {
    OviNodeInstance* first = NodeAt(shape, 0);
    OviGeometryInstance_SetNodeInstanceAt(shape, 2, first);
    OviGeometryInstance_SetNodeInstanceAt(shape, -1, first);
    OviGeometryInstance_SetNodeInstanceAt(shape, 0, first);
    EXPECT_EQ(NodeAt(shape, 0), first);
    EXPECT_EQ(Describe(NodeAt(shape, 1)), "Low.Low");
}

TEST_F(GeometryInstanceTest, IsWrittenWithItsAlternates) {
    OviAttributeInstance_SetBinding(NodeAt(shape, 0), "host|n");
    const std::string xml = XMLOf(asset);
    const size_t high = xml.find("<alternate lod='High' binding='host|n'/>");
    const size_t low = xml.find("<alternate lod='Low' binding=''/>");
    EXPECT_LT(xml.find("<geometry property='Mesh.shape'>"), high) << xml;
    EXPECT_LT(high, low) << xml;
    EXPECT_NE(low, std::string::npos) << xml;
}

TEST_F(GeometryInstanceTest, ACopyInsideAValueHasCopiesOfTheNodes) {
    Schema("<template name='Box'><attribute name='content' type='Mesh'/></template>", "box");
    auto* property =
        static_cast<OviAttributeProperty*>(OviPropertyInstance_GetProperty(NodeAt(shape, 1)));
    OviAttributeProperty_SetType(property, OviTemplateManager_GetType("INT32"));
    OviAsset* filled = AssetOf("Mesh", "filled");
    OviAttributeInstance_SetBinding(NodeAt(ShapeOf(filled), 0), "n");
    OviPropertyInstance_SetBindingLocked(NodeAt(ShapeOf(filled), 0), true);
    int value = 42;
    OviAttributeInstance_SetValue(NodeAt(ShapeOf(filled), 1), &value);
    OviAttributeInstance* content = AttributeOf(AssetOf("Box", "b"), "Box.content");
    OviInstance* source = filled;
    OviAttributeInstance_SetValue(content, &source);
    OviInstance* copy = ValueOf<OviInstance*>(content);
    ASSERT_NE(copy, nullptr);
    EXPECT_NE(NodeAt(ShapeOf(copy), 0), NodeAt(ShapeOf(filled), 0));
    EXPECT_EQ(BindingAt(ShapeOf(copy), 0), "n");
    EXPECT_TRUE(OviPropertyInstance_IsBindingLocked(NodeAt(ShapeOf(copy), 0)));
    EXPECT_EQ(ValueOf<int>(NodeAt(ShapeOf(copy), 1)), 42);
}

TEST_F(GeometryInstanceTest, ItsValuesAreSizedButNotPacked) {
    for (int i = 0; i < 2; ++i)
        OviAttributeProperty_SetType(
            static_cast<OviAttributeProperty*>(OviPropertyInstance_GetProperty(NodeAt(shape, i))),
            OviTemplateManager_GetType("INT32"));
    EXPECT_EQ(OviInstance_GetSize(asset), 8u);
    alignas(16) char block[16] = {};
    EXPECT_EQ(OviInstance_WriteToBinary(asset, block, sizeof block), 0u);
}

TEST_F(GeometryInstanceTest, ItsSizeIsThatOfItsNodesWhateverBecameOfTheAlternates) {
    auto* property = static_cast<OviGeometryProperty*>(OviPropertyInstance_GetProperty(shape));
    const auto setType = [](OviGeometryAlternate* alternate) {
        OviAttributeProperty_SetType(alternate, OviTemplateManager_GetType("INT32"));
    };
    for (int i = 0; i < 2; ++i)
        setType(OviGeometryProperty_GetAlternateAt(property, i));
    EXPECT_EQ(OviInstance_GetSize(asset), 8u);
    OviGeometryAlternate* low = OviGeometryProperty_GetAlternate(property, "Low");
    OviGeometryProperty_RemoveAlternate(property, low);
    EXPECT_EQ(OviInstance_GetSize(asset), 8u);
    OviNodeInstance* removed = NodeAt(shape, 0);
    OviGeometryInstance_SetNodeInstanceAt(shape, 0, nullptr);
    EXPECT_EQ(OviInstance_GetSize(asset), 0u);
    OviObject_Delete(removed);
    EXPECT_EQ(OviInstance_GetSize(AssetOf("Mesh", "b")), 4u);
    EXPECT_EQ(OviInstance_GetSize(AssetOf("Bare", "c")), 0u);
}

} // namespace
