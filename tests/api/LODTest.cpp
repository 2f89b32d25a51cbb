// Levels of detail.

#include "api/SceneHost.h"

namespace {

class LODTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        Schema("<lod name='High'/>");
        lod = OviTemplateManager_GetLOD("High");
        ASSERT_NE(lod, nullptr);
    }

    void TearDown() override {
        OviTemplateManager_RemoveLOD(lod);
        OviObject_Delete(lod);
        SceneTest::TearDown();
    }

    std::string Shapes() const { return OviLOD_GetAllowedShapeNames(lod); }

    OviLOD* lod = nullptr;
};

TEST_F(LODTest, StartsAsASurfaceWithoutShapes) {
    EXPECT_EQ(OviObject_GetClass(lod), OVI_CLASS_LOD);
    for (int id : {12, 31, 0})
        EXPECT_TRUE(OviObject_ImplementsClass(lod, id)) << id;
    EXPECT_FALSE(OviObject_ImplementsClass(lod, OVI_CLASS_PROPERTY));
    EXPECT_EQ(OviLOD_GetType(lod), OVI_LOD_SURFACE);
    EXPECT_STREQ(OviLOD_GetTypeName(lod), "Surface");
    EXPECT_EQ(OviLOD_GetThreshold(lod), 0);
    EXPECT_EQ(OviLOD_GetMaxShapes(lod), 0);
    EXPECT_EQ(Shapes(), "");
}

TEST_F(LODTest, NamesItsTypes) {
    const std::pair<int, const char*> kNames[] = {
        {0, "Bounding Volume"}, {1, "Collision"}, {2, "Surface"}, {3, ""}, {-1, ""}, {1 << 30, ""}};
    for (const auto& [type, name] : kNames) {
        OviLOD_SetType(lod, type);
        EXPECT_EQ(OviLOD_GetType(lod), type);
        EXPECT_STREQ(OviLOD_GetTypeName(lod), name);
    }
}

TEST_F(LODTest, StoresItsNumbersAsTheyAreGiven) {
    for (int number : {100, -1, 2147483647}) {
        OviLOD_SetThreshold(lod, number);
        OviLOD_SetMaxShapes(lod, number - 1);
        EXPECT_EQ(OviLOD_GetThreshold(lod), number);
        EXPECT_EQ(OviLOD_GetMaxShapes(lod), number - 1);
    }
}

TEST_F(LODTest, ListsAllowedShapesInBitOrder) {
    OviLOD_AllowShape(lod, OVI_SHAPE_PYRAMID);
    EXPECT_EQ(Shapes(), "Pyramid");
    OviLOD_AllowShape(lod, OVI_SHAPE_POLYGONS);
    EXPECT_EQ(Shapes(), "Polygons, Pyramid");
    OviLOD_DisallowShape(lod, OVI_SHAPE_POLYGONS);
    EXPECT_EQ(Shapes(), "Pyramid");
    OviLOD_AllowShape(lod, 63);
    EXPECT_EQ(Shapes(), "Polygons, Cube, Sphere, Cylinder, Cone, Pyramid");
    OviLOD_DisallowShape(lod, OVI_SHAPE_CUBE | OVI_SHAPE_CONE);
    EXPECT_EQ(Shapes(), "Polygons, Sphere, Cylinder, Pyramid");
    OviLOD_DisallowShape(lod, -1);
    EXPECT_EQ(Shapes(), "");
}

TEST_F(LODTest, NamesEachShapeByItsBit) {
    const std::pair<int, const char*> kNames[] = {
        {OVI_SHAPE_POLYGONS, "Polygons"}, {OVI_SHAPE_CUBE, "Cube"}, {OVI_SHAPE_SPHERE, "Sphere"},
        {OVI_SHAPE_CYLINDER, "Cylinder"}, {OVI_SHAPE_CONE, "Cone"}, {OVI_SHAPE_PYRAMID, "Pyramid"}};
    for (const auto& [shape, name] : kNames) {
        OviLOD_AllowShape(lod, shape);
        EXPECT_EQ(Shapes(), name);
        OviLOD_DisallowShape(lod, shape);
    }
}

TEST_F(LODTest, BitsWithoutAShapeHaveNoName) {
    OviLOD_AllowShape(lod, 64 | 4);
    EXPECT_EQ(Shapes(), "Sphere");
}

// The bits are looked for in the maximum number of shapes, not among the allowed ones.
TEST_F(LODTest, AsksTheMaximumNumberWhetherAShapeIsAllowed) {
    OviLOD_AllowShape(lod, OVI_SHAPE_SPHERE);
    EXPECT_FALSE(OviLOD_IsShapeAllowed(lod, OVI_SHAPE_SPHERE));
    OviLOD_SetMaxShapes(lod, 4);
    EXPECT_TRUE(OviLOD_IsShapeAllowed(lod, OVI_SHAPE_SPHERE));
    EXPECT_FALSE(OviLOD_IsShapeAllowed(lod, OVI_SHAPE_SPHERE | OVI_SHAPE_CUBE));
    OviLOD_DisallowShape(lod, OVI_SHAPE_SPHERE);
    EXPECT_TRUE(OviLOD_IsShapeAllowed(lod, OVI_SHAPE_SPHERE));
}

TEST_F(LODTest, NoShapeAtAllIsAlwaysAllowed) {
    EXPECT_TRUE(OviLOD_IsShapeAllowed(lod, 0));
    OviLOD_SetMaxShapes(lod, 5);
    EXPECT_TRUE(OviLOD_IsShapeAllowed(lod, 0));
}

TEST_F(LODTest, ACopyHasEverything) {
    OviLOD_SetType(lod, OVI_LOD_COLLISION);
    OviLOD_SetThreshold(lod, 3);
    OviLOD_SetMaxShapes(lod, 4);
    OviLOD_AllowShape(lod, OVI_SHAPE_CUBE);
    auto* copy = static_cast<OviLOD*>(OviObject_Clone(lod));
    OviLOD_AllowShape(lod, OVI_SHAPE_CONE);
    EXPECT_EQ(OviObject_GetClass(copy), OVI_CLASS_LOD);
    EXPECT_STREQ(OviNamedObject_GetName(copy), "High");
    EXPECT_EQ(OviLOD_GetType(copy), OVI_LOD_COLLISION);
    EXPECT_EQ(OviLOD_GetThreshold(copy), 3);
    EXPECT_EQ(OviLOD_GetMaxShapes(copy), 4);
    EXPECT_STREQ(OviLOD_GetAllowedShapeNames(copy), "Cube");
    OviObject_Delete(copy);
}

TEST_F(LODTest, TheRegistryListsLevelsByName) {
    auto* low = static_cast<OviLOD*>(OviObject_Clone(lod));
    OviNamedObject_SetName(low, "Low");
    EXPECT_EQ(OviTemplateManager_AddLOD(low), 1);
    EXPECT_EQ(OviTemplateManager_GetLODCount(), 2);
    EXPECT_EQ(OviTemplateManager_GetLODAt(0), lod);
    EXPECT_EQ(OviTemplateManager_GetLODAt(1), low);
    EXPECT_EQ(OviTemplateManager_GetLODAt(2), nullptr);
    EXPECT_EQ(OviTemplateManager_GetLOD("low"), nullptr);
    auto* other = static_cast<OviLOD*>(OviObject_Clone(low));
    EXPECT_EQ(OviTemplateManager_AddLOD(other), ~1);
    EXPECT_EQ(OviTemplateManager_GetLOD("Low"), other);
    EXPECT_EQ(OviTemplateManager_RemoveLOD(other), 1);
    EXPECT_LT(OviTemplateManager_RemoveLOD(other), 0);
    OviObject_Delete(low);
    OviObject_Delete(other);
}

TEST_F(LODTest, ARenamedLevelIsMovedToItsPlaceInTheRegistry) {
    OviTemplateManager_RemoveLOD(lod);
    OviLOD* levels[3] = {};
    for (int i = 0; i < 3; ++i) {
        levels[i] = static_cast<OviLOD*>(OviObject_Clone(lod));
        OviNamedObject_SetName(levels[i], std::string(1, "AMZ"[i]).c_str());
        EXPECT_EQ(OviTemplateManager_AddLOD(levels[i]), i);
    }
    EXPECT_TRUE(OviNamedObject_SetName(levels[0], "Z2"));
    EXPECT_EQ(OviTemplateManager_GetLODCount(), 3);
    EXPECT_EQ(OviTemplateManager_GetLOD("A"), nullptr);
    EXPECT_EQ(OviTemplateManager_GetLOD("Z2"), levels[0]);
    EXPECT_EQ(OviTemplateManager_GetLOD("M"), levels[1]);
    EXPECT_EQ(OviTemplateManager_GetLOD("Z"), levels[2]);
    EXPECT_FALSE(OviNamedObject_SetName(levels[0], "no name"));
    EXPECT_FALSE(OviNamedObject_SetName(levels[0], nullptr));
    EXPECT_EQ(OviTemplateManager_GetLOD("Z2"), levels[0]);
    EXPECT_EQ(OviTemplateManager_RemoveLOD(levels[0]), 2);
    EXPECT_TRUE(OviNamedObject_SetName(levels[0], "B"));
    EXPECT_EQ(OviTemplateManager_GetLODCount(), 2) << "it does not come back";
    for (OviLOD* level : levels)
        OviObject_Delete(level);
    EXPECT_EQ(OviTemplateManager_GetLODCount(), 0) << "deleted ones leave the registry";
}

TEST_F(LODTest, ARenamedLevelMayTakeTheNameOfAnother) {
    auto* low = static_cast<OviLOD*>(OviObject_Clone(lod));
    OviNamedObject_SetName(low, "Low");
    OviTemplateManager_AddLOD(low);
    EXPECT_TRUE(OviNamedObject_SetName(low, "High"));
    EXPECT_EQ(OviTemplateManager_GetLODCount(), 2) << "both stay";
    EXPECT_EQ(OviTemplateManager_GetLOD("High"), lod);
    OviObject_Delete(low);
    EXPECT_EQ(OviTemplateManager_GetLOD("High"), lod);
}

} // namespace
