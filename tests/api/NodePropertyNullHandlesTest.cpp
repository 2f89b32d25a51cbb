// Whatever a host hands in for nodes, geometry and views, no call crashes or changes anything.

#include "api/CallTableNodes.h"
#include "api/SceneHost.h"

namespace {

class NodeNullHandlesTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        Schema("<lod name='High'/><template name='Figure'><node name='node'/>"
               "<anchor name='anchor'/><geometry name='shape'><alternate lod='High'/></geometry>"
               "</template><view name='main' template='Figure'><property name='node'/></view>");
        person = AssetOf("Figure", "Person");
    }

    void TearDown() override {
        badHandle() = nullptr;
        SceneTest::TearDown();
    }

    /// Runs the table; afterwards all is as it was.
    void RunAll() const {
        for (const Call& call : NodeCalls())
            EXPECT_TRUE(call.run()) << call.text;
        auto* shape = static_cast<OviGeometryInstance*>(PropertyOf(person, "Figure.shape"));
        EXPECT_NE(OviGeometryInstance_GetNodeInstanceAt(shape, 0), nullptr);
        OviView* view = OviTemplate_GetView(TemplateOf("Figure"), "main", false);
        EXPECT_EQ(OviGroup_GetViewItemCount(view), 1);
        EXPECT_EQ(OviLOD_GetType(OviTemplateManager_GetLOD("High")), OVI_LOD_SURFACE);
        EXPECT_EQ(OviTemplate_GetPropertyCount(TemplateOf("Figure")), 3);
    }

    OviAsset* person = nullptr;
};

TEST_F(NodeNullHandlesTest, NullAndIndicesOutOfRangeAreHarmless) {
    RunAll();
}

TEST_F(NodeNullHandlesTest, ObjectsOfAnotherClassAreHarmless) {
    OviErrorManager_AddErrorItem(1, "", 1, "");
    badHandle() = OviErrorManager_GetErrorItemAt(0);
    RunAll();
}

TEST_F(NodeNullHandlesTest, ANodeInstanceOfAnotherClassIsNotTaken) {
    auto* shape = static_cast<OviGeometryInstance*>(PropertyOf(person, "Figure.shape"));
    OviNodeInstance* before = OviGeometryInstance_GetNodeInstanceAt(shape, 0);
    OviErrorManager_AddErrorItem(1, "", 1, "");
    badHandle() = OviErrorManager_GetErrorItemAt(0);
    OviGeometryInstance_SetNodeInstanceAt(shape, 0, bad);
    EXPECT_EQ(OviGeometryInstance_GetNodeInstanceAt(shape, 0), before);
}

} // namespace
