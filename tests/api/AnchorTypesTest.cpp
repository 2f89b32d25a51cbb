// The registry of anchor types.

#include "api/Schema.h"

namespace {

class AnchorTypesTest : public SchemaTest {};

TEST_F(AnchorTypesTest, AnyNamedObjectServesAsAnAnchorTypeAndStaysTheCallers) {
    OviInstance* wall = OviInstance_New("Wall");
    OviAttributeProperty* floor = NewAttribute("Floor");
    EXPECT_EQ(OviTemplateManager_AddAnchorType(wall), 0);
    EXPECT_EQ(OviTemplateManager_AddAnchorType(floor), 0);
    EXPECT_EQ(OviTemplateManager_GetAnchorTypeCount(), 2);
    EXPECT_EQ(OviTemplateManager_GetAnchorTypeAt(1), wall);
    EXPECT_EQ(OviTemplateManager_GetAnchorTypeAt(2), nullptr);
    EXPECT_EQ(OviTemplateManager_GetAnchorType("Floor"), floor);
    EXPECT_EQ(OviTemplateManager_GetAnchorType("floor"), nullptr);
    OviInstance* twin = OviInstance_New("Wall");
    EXPECT_EQ(OviTemplateManager_AddAnchorType(twin), ~1);
    EXPECT_EQ(OviTemplateManager_GetAnchorType("Wall"), twin);
    EXPECT_EQ(OviTemplateManager_RemoveAnchorType(wall), 1) << "by its name";
    EXPECT_EQ(OviTemplateManager_RemoveAnchorType(wall), ~1);
    EXPECT_EQ(OviTemplateManager_AddAnchorType(nullptr), -1);
    EXPECT_EQ(OviTemplateManager_RemoveAnchorType(nullptr), -1);
    OviTemplateManager_RemoveAnchorType(floor);
    for (OviNamedObject* object :
         {static_cast<OviNamedObject*>(wall), static_cast<OviNamedObject*>(floor),
          static_cast<OviNamedObject*>(twin)})
        OviObject_Delete(object);
}

TEST_F(AnchorTypesTest, AnAnchorTypeThatDiesWithItsOwnerLeavesAllLists) {
    OviAnchorProperty* anchor = OviAnchorProperty_New("socket", 1);
    OviAsset* wall = OviAssetManager_NewAsset("Wall");
    OviTemplateManager_AddAnchorType(wall);
    OviAnchorProperty_AddAnchorType(anchor, wall);
    OviAnchorProperty_AddAnchorType(anchor, TypeNamed("INT32"));
    OviAssetManager_NewScene();
    EXPECT_EQ(OviTemplateManager_GetAnchorTypeCount(), 0);
    EXPECT_EQ(OviAnchorProperty_GetAnchorTypeCount(anchor), 1);
    EXPECT_EQ(OviAnchorProperty_GetAnchorTypeAt(anchor, 0), TypeNamed("INT32"));
    OviObject_Delete(anchor);
}

TEST_F(AnchorTypesTest, ARenamedAnchorTypeIsMovedToItsPlace) {
    OviInstance* types[3] = {};
    for (int i = 0; i < 3; ++i) {
        types[i] = OviInstance_New(std::string(1, "AMZ"[i]).c_str());
        OviTemplateManager_AddAnchorType(types[i]);
    }
    EXPECT_TRUE(OviNamedObject_SetName(types[0], "Z2"));
    EXPECT_FALSE(OviNamedObject_SetName(types[1], "no name"));
    const char* kNames[] = {"Z2", "M", "Z"};
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(OviTemplateManager_GetAnchorType(kNames[i]), types[i]);
    EXPECT_EQ(OviTemplateManager_GetAnchorType("A"), nullptr);
    EXPECT_EQ(OviTemplateManager_RemoveAnchorType(types[0]), 2);
    EXPECT_TRUE(OviNamedObject_SetName(types[0], "B"));
    EXPECT_EQ(OviTemplateManager_GetAnchorTypeCount(), 2);
    for (OviInstance* type : types)
        OviObject_Delete(type);
    EXPECT_EQ(OviTemplateManager_GetAnchorTypeCount(), 0) << "deleted ones leave the registry";
}

TEST_F(AnchorTypesTest, ATypeThatServesAsAnAnchorTypeIsFollowedToAnotherPackage) {
    OviType* wall = OviCustomType_New("Wall", 1);
    OviTemplateManager_AddType(wall);
    OviTemplateManager_AddAnchorType(wall);
    OviTemplateManager_AddAnchorType(TypeNamed("INT32"));
    OviType_SetPackageName(wall, "a");
    EXPECT_EQ(OviTemplateManager_GetAnchorType("a.Wall"), wall);
    EXPECT_EQ(OviTemplateManager_GetAnchorType("INT32"), TypeNamed("INT32"));
    EXPECT_EQ(OviTemplateManager_RemoveAnchorType(wall), 1);
}

} // namespace
