// The search for anchors in the scene that an anchor could attach to.

#include "api/SceneHost.h"

namespace {

constexpr const char* kSchema =
    "<template name='Thing'><node name='AssetNode'/></template>"
    "<template name='Wall'><extends template='Thing'/>"
    "<anchor name='left'/><anchor name='right'/><anchor name='plug' child='true'/></template>"
    "<template name='Plain'><anchor name='spot'/></template>";

class CompatibleAnchorsTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        Schema(kSchema);
    }

    void TearDown() override {
        for (OviAnchorProperty* anchor : made_)
            OviObject_Delete(anchor);
        SceneTest::TearDown();
    }

    OviAnchorProperty* Anchor(bool child) {
        made_.push_back(OviAnchorProperty_New("seeker", 1));
        OviAnchorProperty_SetChild(made_.back(), child);
        return made_.back();
    }

    static void Bind(OviAsset* asset, const char* property = "Thing.AssetNode") {
        OviAttributeInstance_SetBinding(AttributeOf(asset, property), "host");
    }

    static OviAsset* Bound(const char* templateName, const char* name) {
        OviAsset* asset = AssetOf(templateName, name);
        Bind(asset);
        return asset;
    }

    /// "count: names" of what the search stores in an array of the given capacity.
    static std::string Search(OviAnchorProperty* anchor, int capacity = 20) {
        std::vector<OviPropertyInstance*> found(static_cast<size_t>(capacity) + 1, kUntouched);
        const int count = OviAnchorProperty_GetCompatibleAnchors(anchor, capacity, found.data());
        std::string text = std::to_string(count) + ":";
        for (OviPropertyInstance* each : found) {
            if (each != kUntouched)
                text += " " + Describe(each);
        }
        EXPECT_EQ(found.back(), kUntouched);
        return text;
    }

    /// L0 with an anchor, and diamonds one on top of the other up to J<count>: each doubles the
    /// paths that lead to L0.
    static std::string Diamonds(int count, const char* content = "<anchor name='spot'/>") {
        std::string text = Heir("L0", {}, content);
        std::string below = "L0";
        for (int i = 1; i <= count; ++i) {
            const std::string n = std::to_string(i);
            text += Heir("L" + n, {below}) + Heir("R" + n, {below});
            below = "J" + n;
            text += Heir(below, {"L" + n, "R" + n});
        }
        return text;
    }

    /// A template that assets can implement, over another one.
    static std::string Over(const std::string& below, const std::string& name = "Top",
                            const char* content = "") {
        return Heir(name, {below, "Thing"}, content);
    }

    static std::string Heir(const std::string& name, const std::vector<std::string>& parents,
                            const std::string& content = "") {
        std::string text = "<template name='" + name + "'>";
        for (const std::string& parent : parents)
            text += "<extends template='" + parent + "'/>";
        return text + content + "</template>";
    }

    static inline OviPropertyInstance* const kUntouched =
        reinterpret_cast<OviPropertyInstance*>(&ReadFile);

    std::vector<OviAnchorProperty*> made_;
};

TEST_F(CompatibleAnchorsTest, WithoutABoundAssetNothingIsFoundOrWritten) {
    EXPECT_EQ(Search(Anchor(true)), "0:");
    AssetOf("Wall", "a");
    AssetOf("Plain", "b");
    EXPECT_EQ(Search(Anchor(true)), "0:");
}

TEST_F(CompatibleAnchorsTest, AChildFindsParentsAndAParentFindsChildren) {
    Bound("Wall", "a");
    EXPECT_EQ(Search(Anchor(true)), "2: Wall.right Wall.left");
    EXPECT_EQ(Search(Anchor(false)), "1: Wall.plug");
}

TEST_F(CompatibleAnchorsTest, AnchorTypesPlayNoPart) {
    Bound("Wall", "a");
    OviGroup* type = OviGroup_New("Hook");
    OviAnchorProperty* seeker = Anchor(true);
    OviAnchorProperty_AddAnchorType(seeker, type);
    EXPECT_EQ(Search(seeker), "2: Wall.right Wall.left");
    OviObject_Delete(type);
}

TEST_F(CompatibleAnchorsTest, TakesTheAssetsFromTheLastToTheFirst) {
    OviAsset* first = Bound("Wall", "a");
    OviAsset* last = Bound("Wall", "b");
    OviPropertyInstance* found[2] = {};
    EXPECT_EQ(OviAnchorProperty_GetCompatibleAnchors(Anchor(false), 2, found), 2);
    EXPECT_EQ(found[0], PropertyOf(last, "Wall.plug"));
    EXPECT_EQ(found[1], PropertyOf(first, "Wall.plug"));
}

TEST_F(CompatibleAnchorsTest, CountsOnPastTheCapacity) {
    OviAsset* asset = Bound("Wall", "a");
    OviInstance_AddTemplate(asset, TemplateOf("Plain"));
    EXPECT_EQ(Search(Anchor(true), 1), "3: Wall.right");
    EXPECT_EQ(Search(Anchor(true), 0), "3:");
    EXPECT_EQ(OviAnchorProperty_GetCompatibleAnchors(Anchor(true), -1, nullptr), 3);
    EXPECT_EQ(OviAnchorProperty_GetCompatibleAnchors(Anchor(true), 5, nullptr), 3);
}

TEST_F(CompatibleAnchorsTest, TakesTemplatesFromTheLastAndParentsBeforeTheirChildren) {
    Schema("<template name='Aisle'><extends template='Thing'/><anchor name='a'/></template>"
           "<template name='Zone'><extends template='Aisle'/><extends template='Plain'/>"
           "<anchor name='m'/><anchor name='n'/></template>",
           "more");
    OviAsset* asset = Bound("Wall", "a");
    OviInstance_AddTemplate(asset, TemplateOf("Zone"));
    EXPECT_EQ(Search(Anchor(true)), "6: Plain.spot Aisle.a Zone.n Zone.m Wall.right Wall.left");
}

TEST_F(CompatibleAnchorsTest, AnAnchorInheritedThroughTwoParentsCountsTwice) {
    Schema("<template name='Left'><extends template='Plain'/></template>"
           "<template name='Right'><extends template='Plain'/></template>"
           "<template name='Both'><extends template='Left'/><extends template='Right'/>"
           "<extends template='Thing'/></template>",
           "more");
    Bound("Both", "a");
    EXPECT_EQ(Search(Anchor(true)), "2: Plain.spot Plain.spot");
}

TEST_F(CompatibleAnchorsTest, ManyPathsOfInheritanceAreCountedWithoutWalkingThemAll) {
    Schema(Diamonds(40) + Over("J40"), "more");
    Bound("Top", "a");
    EXPECT_EQ(Search(Anchor(true), 2), "2147483647: L0.spot L0.spot");
}

TEST_F(CompatibleAnchorsTest, TheCountIsExactUpToTheLargestNumberThereIs) {
    Schema(Diamonds(31) + Over("J30"), "more");
    Bound("Top", "a");
    EXPECT_EQ(Search(Anchor(true), 1), "1073741824: L0.spot");
    Schema(Over("J31", "Higher"), "higher");
    OviObject_Delete(OviAssetManager_GetAssetAt(0));
    Bound("Higher", "b");
    EXPECT_EQ(Search(Anchor(true), 1), "2147483647: L0.spot");
}

TEST_F(CompatibleAnchorsTest, PathsThatLeadToNoAnchorAreNotWalked) {
    Schema(Diamonds(40, "") + Over("J40", "Top", "<anchor name='own'/>"), "more");
    Bound("Top", "a");
    EXPECT_EQ(Search(Anchor(true)), "1: Top.own");
}

TEST_F(CompatibleAnchorsTest, PropertyInstancesThatAreMissingAreMade) {
    OviAsset* asset = Bound("Wall", "a");
    OviPropertyInstance* made = PropertyOf(asset, "Wall.plug");
    OviObject_Delete(made);
    ASSERT_EQ(PropertyOf(asset, "Wall.plug"), nullptr);
    StartRecording();
    EXPECT_EQ(Search(Anchor(false)), "1: Wall.plug");
    EXPECT_EQ(Events(), Lines{});
    EXPECT_NE(PropertyOf(asset, "Wall.plug"), nullptr);
}

TEST_F(CompatibleAnchorsTest, WhereNoPropertyInstanceCanBeHadTheSlotIsNull) {
    Schema("</templates><templates package='p'><template name='Far'><anchor name='spot'/>"
           "</template>",
           "more");
    OviAsset* asset = Bound("Wall", "a");
    OviInstance_AddTemplate(asset, TemplateOf("p.Far"));
    OviObject_Delete(PropertyOf(asset, "Far.spot"));
    EXPECT_EQ(Search(Anchor(true)), "3: null Wall.right Wall.left");
}

TEST_F(CompatibleAnchorsTest, APropertyNamedAssetNodeOfAnotherKindSkipsTheAsset) {
    Schema("<template name='Odd'><attribute name='AssetNode' type='INT32'/><anchor name='spot'/>"
           "</template>",
           "more");
    OviAsset* asset = AssetOf("Odd", "a");
    Bind(asset, "Odd.AssetNode");
    EXPECT_EQ(Search(Anchor(true)), "0:");
}

TEST_F(CompatibleAnchorsTest, AnAttributeOfTheFullNameAssetNodeSkipsTheAsset) {
    OviAttributeProperty* own = OviAttributeProperty_New("AssetNode", 7); // no owner
    OviAttributeProperty_SetType(own, OviTemplateManager_GetType("INT32"));
    OviTemplate* wall = TemplateOf("Wall");
    OviTemplate_AddProperty(wall, own, -1);
    ASSERT_STREQ(OviProperty_GetFullName(own), "AssetNode");
    OviAsset* asset = AssetOf("Wall", "a");
    Bind(asset);
    Bind(asset, "AssetNode");
    EXPECT_EQ(Search(Anchor(false)), "0:");
    OviObject_Delete(asset);
    OviTemplate_RemoveProperty(wall, own);
    OviObject_Delete(own);
}

TEST_F(CompatibleAnchorsTest, TheFullNameAssetNodeComesFirst) {
    OviNodeProperty* own = OviNodeProperty_New("AssetNode", 7); // another version: no owner
    OviTemplate* wall = TemplateOf("Wall");
    OviTemplate_AddProperty(wall, own, -1);
    ASSERT_STREQ(OviProperty_GetFullName(own), "AssetNode");
    OviAsset* asset = AssetOf("Wall", "a");
    Bind(asset);
    EXPECT_EQ(Search(Anchor(false)), "0:") << "the unbound one decides";
    Bind(asset, "AssetNode");
    EXPECT_EQ(Search(Anchor(false)), "1: Wall.plug");
    OviObject_Delete(asset);
    OviTemplate_RemoveProperty(wall, own);
    OviObject_Delete(own);
}

} // namespace
