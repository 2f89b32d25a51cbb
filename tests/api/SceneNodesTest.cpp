// Nodes, anchors and geometry in scene files.

#include "api/SceneHost.h"

namespace {

class SceneNodesTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        Schema("<lod name='High'/><lod name='Low'/><template name='Mesh'><node name='body'/>"
               "<anchor name='socket'/><attribute name='size' type='INT32'/>"
               "<geometry name='shape'><alternate lod='High'/><alternate lod='Low'/></geometry>"
               "<geometry name='trim'><alternate lod='Low'/></geometry></template>");
    }

    /// Loads an asset "a" that implements Mesh, its elements from line 2 on.
    Lines LoadMesh(const std::string& elements) {
        EXPECT_TRUE(Load("<asset name='a'><implements template='Mesh'/>" + elements + "</asset>"));
        return Errors();
    }

    static OviAsset* A() { return OviAssetManager_GetAsset("a"); }

    static std::string BindingOf(const char* property) {
        return OviAttributeInstance_GetBinding(AttributeOf(A(), property));
    }

    static OviNodeInstance* NodeOf(const char* geometry, int index) {
        return OviGeometryInstance_GetNodeInstanceAt(
            static_cast<OviGeometryInstance*>(PropertyOf(A(), geometry)), index);
    }

    static std::string AlternateBinding(const char* geometry, int index) {
        return OviAttributeInstance_GetBinding(NodeOf(geometry, index));
    }
};

TEST_F(SceneNodesTest, ANodeHasBindingAndLocks) {
    EXPECT_EQ(LoadMesh("<NODE property='Mesh.body' binding='n' lockBinding='Full' lockValue='0'/>"),
              Lines{});
    EXPECT_EQ(BindingOf("Mesh.body"), "n");
    EXPECT_TRUE(OviPropertyInstance_IsBindingLocked(PropertyOf(A(), "Mesh.body")));
    EXPECT_FALSE(OviPropertyInstance_IsValueLocked(PropertyOf(A(), "Mesh.body")));
}

TEST_F(SceneNodesTest, AnAnchorHasItsAttachedAnchorToo) {
    EXPECT_EQ(LoadMesh("<anchor property='Mesh.socket' binding='n' attachedAnchor='b.plug' "
                       "lockValue='true'/>"),
              Lines{});
    EXPECT_EQ(BindingOf("Mesh.socket"), "n");
    auto* anchor = static_cast<OviAnchorInstance*>(PropertyOf(A(), "Mesh.socket"));
    EXPECT_STREQ(OviAnchorInstance_GetAttachedAnchor(anchor), "b.plug");
    EXPECT_TRUE(OviPropertyInstance_IsValueLocked(anchor));
    EXPECT_FALSE(OviPropertyInstance_IsBindingLocked(anchor));
}

TEST_F(SceneNodesTest, AnnouncesBindingThenLocksAndNothingForTheAttachedAnchor) {
    StartRecording();
    LoadMesh("<anchor attachedAnchor='x' lockValue='1' lockBinding='1' binding='n' "
             "property='Mesh.socket'/>");
    Lines events = TakeEvents();
    ASSERT_GE(events.size(), 3u);
    events.erase(events.begin(), events.end() - 3);
    EXPECT_EQ(events, (Lines{"0x3000 Mesh.socket n", "0x2000 Mesh.socket true",
                             "0x2001 Mesh.socket true"}));
}

TEST_F(SceneNodesTest, WithoutAttributesNothingIsAnnounced) {
    LoadMesh("");
    StartRecording();
    LoadMesh("<node property='Mesh.body'/><anchor property='Mesh.socket'/>"
             "<geometry property='Mesh.shape'/>");
    for (const std::string& event : Events())
        EXPECT_NE(event.substr(0, 3), "0x3") << event;
}

TEST_F(SceneNodesTest, AlternatesAreFoundByLevelWhateverTheCase) {
    EXPECT_EQ(LoadMesh("<geometry property='Mesh.shape'><alternate lod='LOW' binding='l'/>"
                       "<alternate lod='High' binding='h'/></geometry>"
                       "<geometry property='Mesh.trim'><Alternate lod='low' binding='t'/>"
                       "</geometry>"),
              Lines{});
    EXPECT_EQ(AlternateBinding("Mesh.shape", 0), "h");
    EXPECT_EQ(AlternateBinding("Mesh.shape", 1), "l");
    EXPECT_EQ(AlternateBinding("Mesh.trim", 0), "t");
}

TEST_F(SceneNodesTest, OfLevelsThatDifferOnlyInCaseTheFirstGetsTheBinding) {
    Schema("<lod name='low'/><template name='Both'><geometry name='g'><alternate lod='low'/>"
           "<alternate lod='Low'/></geometry></template>",
           "both");
    std::string levels;
    std::string alternates;
    for (int i = 10; i < 30; ++i) {
        levels += "<lod name='L" + std::to_string(i) + "'/>";
        alternates += "<alternate lod='L" + std::to_string(i) + "'/>";
    }
    Schema(levels + "<template name='Many'><geometry name='g'>" + alternates +
               "<alternate lod='low'/><alternate lod='Low'/></geometry></template>",
           "many");
    EXPECT_TRUE(Load("<asset name='a'><implements template='Both'/><implements template='Many'/>"
                     "<geometry property='Both.g'><alternate lod='low' binding='b'/></geometry>"
                     "<geometry property='Many.g'><alternate lod='low' binding='b'/>"
                     "<alternate lod='l17' binding='c'/></geometry></asset>"));
    EXPECT_EQ(Errors(), Lines{});
    EXPECT_EQ(AlternateBinding("Both.g", 0), "b");
    EXPECT_EQ(AlternateBinding("Both.g", 1), "");
    // In byte order: L10 to L29, Low, low.
    EXPECT_EQ(AlternateBinding("Many.g", 7), "c");
    EXPECT_EQ(AlternateBinding("Many.g", 20), "b");
    EXPECT_EQ(AlternateBinding("Many.g", 21), "");
}

TEST_F(SceneNodesTest, AnUnknownLevelIsReportedAmongManyToo) {
    std::string text;
    for (int i = 10; i < 30; ++i)
        text += "<lod name='L" + std::to_string(i) + "'/>";
    text += "<template name='Many'><geometry name='g'>";
    for (int i = 10; i < 30; ++i)
        text += "<alternate lod='L" + std::to_string(i) + "'/>";
    Schema(text + "</geometry></template>", "many");
    EXPECT_TRUE(Load("<asset name='a'><geometry property='Many.g'><alternate lod='L9' "
                     "binding='b'/><alternate lod='' binding='b'/></geometry></asset>"));
    EXPECT_EQ(Errors(),
              (Lines{"1 2 Unknown level of detail: 'L9'", "1 2 Unknown level of detail: ''"}));
}

TEST_F(SceneNodesTest, TheSceneKeepsAnchorsAndGeometryButNoNodeBindings) {
    LoadMesh("<node property='Mesh.body' binding='n'/>"
             "<anchor property='Mesh.socket' binding='&lt;m' attachedAnchor='x'/>"
             "<geometry property='Mesh.shape'><alternate lod='Low' binding='l'/></geometry>");
    const std::string path = PathOf("saved.asset");
    ASSERT_TRUE(OviAssetManager_SaveScene(path.c_str()));
    const std::string text = ReadFile(path);
    EXPECT_NE(text.find("<node property='Mesh.body'/>"), std::string::npos) << text;
    OviObject_Delete(A());
    ASSERT_TRUE(OviAssetManager_LoadScene(path.c_str()));
    EXPECT_EQ(Errors(), Lines{});
    EXPECT_EQ(BindingOf("Mesh.body"), "");
    EXPECT_EQ(BindingOf("Mesh.socket"), "<m");
    EXPECT_STREQ(OviAnchorInstance_GetAttachedAnchor(
                     static_cast<OviAnchorInstance*>(PropertyOf(A(), "Mesh.socket"))),
                 "x");
    EXPECT_EQ(AlternateBinding("Mesh.shape", 0), "");
    EXPECT_EQ(AlternateBinding("Mesh.shape", 1), "l");
}

TEST_F(SceneNodesTest, FaultsAreReported) {
    EXPECT_EQ(LoadMesh("\n<node/>\n<anchor name='Mesh.socket'/>\n<geometry/>\n"
                       "<node property='Mesh.no'/>\n<anchor property='no'/>\n"
                       "<geometry property=''/>\n<attribute property='Mesh.shape'/>\n"
                       "<alternate lod='Low' binding='x'/>\n"
                       "<geometry property='Mesh.shape'><alternate binding='x'/>\n"
                       "<alternate lod='Low' nodeName='x'/>\n"
                       "<alternate lod='Middle' binding='x'/></geometry>"),
              (Lines{"1 3 <node> element must have an 'property' attribute",
                     "1 4 <anchor> element must have an 'property' attribute",
                     "1 5 <geometry> element must have an 'property' attribute",
                     "1 6 Unknown property: 'Mesh.no'", "1 7 Unknown property: 'no'",
                     "1 8 Unknown property: ''",
                     "1 9 Property is not an attribute property: 'Mesh.shape'",
                     "1 10 <alternate> must occur inside a <geometry> element",
                     "1 11 <alternate> element must have an 'lod' attribute",
                     "1 12 <alternate> element must have a 'nodeName' attribute",
                     "1 13 Unknown level of detail: 'Middle'"}));
}

TEST_F(SceneNodesTest, OutsideAnAssetElementsAreRefused) {
    EXPECT_TRUE(Load("\n<node property='Mesh.body'/>\n<anchor/>\n<geometry/>\n<alternate/>"));
    EXPECT_EQ(Errors(), (Lines{"1 3 <node> must occur inside a <asset> element",
                               "1 4 <anchor> must occur inside a <asset> element",
                               "1 5 <geometry> must occur inside a <asset> element",
                               "1 6 <alternate> must occur inside a <geometry> element"}));
}

TEST_F(SceneNodesTest, ASecondGeometryInsideAnOpenPropertyIsRefused) {
    EXPECT_EQ(LoadMesh("\n<geometry property='Mesh.shape'><geometry property='Mesh.trim'>"
                       "<alternate lod='High' binding='h'/></geometry></geometry>\n"
                       "<node property='Mesh.body'><geometry property='Mesh.trim'/></node>"),
              (Lines{"1 3 Unexpected nested <geometry> element",
                     "1 4 Unexpected nested <geometry> element"}));
    EXPECT_EQ(AlternateBinding("Mesh.shape", 0), "h") << "the first one stays open";
    EXPECT_EQ(AlternateBinding("Mesh.trim", 0), "");
}

TEST_F(SceneNodesTest, ElementsThatNameAPropertyOfAnotherKindAreHarmless) {
    EXPECT_EQ(LoadMesh("<node property='Mesh.shape' binding='x' lockValue='1'/>"
                       "<anchor property='Mesh.body' binding='b' attachedAnchor='y'/>"
                       "<geometry property='Mesh.size'></geometry>"
                       "<node property='Mesh.socket' binding='s'/>"
                       "<attribute property='Mesh.body' value='3' lockBinding='1'/>"),
              Lines{});
    EXPECT_EQ(BindingOf("Mesh.body"), "b");
    EXPECT_EQ(BindingOf("Mesh.socket"), "s");
    EXPECT_TRUE(OviPropertyInstance_IsValueLocked(PropertyOf(A(), "Mesh.shape")));
    EXPECT_TRUE(OviPropertyInstance_IsBindingLocked(PropertyOf(A(), "Mesh.body")));
    EXPECT_EQ(AttributeOf(A(), "Mesh.shape"), nullptr);
}

TEST_F(SceneNodesTest, AnAlternateWhoseNodeIsGoneIsPassedOver) {
    LoadMesh("");
    OviObject_Delete(NodeOf("Mesh.shape", 0));
    EXPECT_EQ(LoadMesh("<geometry property='Mesh.shape'><alternate lod='High' binding='h'/>"
                       "<alternate lod='Low' binding='l'/></geometry>"),
              Lines{});
    EXPECT_EQ(AlternateBinding("Mesh.shape", 1), "l");
}

} // namespace
