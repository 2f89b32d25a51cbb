// Whatever is renamed keeps every sorted list that has it in order, wherever the renaming comes
// from.

#include "api/SceneHost.h"

namespace {

class RenamingTest : public SceneTest {
protected:
    /// The names of the registered anchor types, in order; each must be found by its key.
    static Lines AnchorTypes() {
        Lines names;
        for (int i = 0; i < OviTemplateManager_GetAnchorTypeCount(); ++i)
            names.emplace_back(OviNamedObject_GetName(OviTemplateManager_GetAnchorTypeAt(i)));
        return names;
    }

    /// Another alternate for a level, in no geometry.
    static OviGeometryAlternate* AlternateOf(const char* level) {
        auto* source = static_cast<OviGeometryProperty*>(OviTemplateManager_GetProperty("S.g"));
        return static_cast<OviGeometryAlternate*>(
            OviObject_Clone(OviGeometryProperty_GetAlternate(source, level)));
    }
};

constexpr const char* kLevels =
    "<lod name='A'/><lod name='M'/><lod name='Z'/><template name='T'/><template name='S'>"
    "<geometry name='g'><alternate lod='A'/><alternate lod='M'/></geometry></template>";

} // namespace

TEST_F(RenamingTest, ALevelMovesInTheRegistryAndAmongTheAnchorTypes) {
    Schema(kLevels);
    for (const char* name : {"A", "M", "Z"})
        OviTemplateManager_AddAnchorType(OviTemplateManager_GetLOD(name));
    OviLOD* level = OviTemplateManager_GetLOD("A");
    ASSERT_TRUE(OviNamedObject_SetName(level, "P"));
    EXPECT_EQ(AnchorTypes(), (Lines{"M", "P", "Z"}));
    EXPECT_EQ(OviTemplateManager_GetAnchorType("P"), level);
    EXPECT_EQ(OviTemplateManager_GetLOD("P"), level);
    EXPECT_EQ(OviTemplateManager_GetLOD("M"), OviTemplateManager_GetLODAt(0));
}

TEST_F(RenamingTest, AnAlternateFollowsItsLevelInEveryListThatHasIt) {
    Schema(kLevels);
    OviTemplate* owner = TemplateOf("T");
    OviGeometryAlternate* first = AlternateOf("A");
    OviGeometryAlternate* second = AlternateOf("M");
    for (OviGeometryAlternate* alternate : {first, second}) {
        OviTemplate_AddProperty(owner, alternate, -1);
        OviTemplateManager_AddAnchorType(alternate);
    }
    OviGeometryProperty* geometry = OviGeometryProperty_New("g", 1);
    OviGeometryProperty_AddAlternate(geometry, first);
    OviGeometryProperty_AddAlternate(geometry, second);
    ASSERT_TRUE(OviNamedObject_SetName(OviTemplateManager_GetLOD("A"), "P"));
    EXPECT_EQ(OviTemplate_GetProperty(owner, "P"), first);
    EXPECT_EQ(OviTemplate_GetProperty(owner, "A"), nullptr);
    EXPECT_EQ(OviTemplate_GetProperty(owner, "M"), second);
    EXPECT_EQ(OviTemplateManager_GetAnchorType("P"), first);
    EXPECT_EQ(OviTemplateManager_GetAnchorTypeAt(0), second);
    EXPECT_EQ(OviGeometryProperty_GetAlternateAt(geometry, 1), first);
    OviObject_Delete(geometry);
}

TEST_F(RenamingTest, AnAlternateThatGetsAnotherLevelMovesInItsTemplate) {
    Schema(kLevels);
    OviTemplate* owner = TemplateOf("T");
    OviGeometryAlternate* first = AlternateOf("A");
    OviGeometryAlternate* second = AlternateOf("M");
    for (OviGeometryAlternate* alternate : {first, second}) {
        OviTemplate_AddProperty(owner, alternate, -1);
        OviTemplateManager_AddAnchorType(alternate);
    }
    OviGeometryAlternate_SetLOD(first, OviTemplateManager_GetLOD("Z"));
    EXPECT_EQ(OviTemplate_GetProperty(owner, "Z"), first);
    EXPECT_EQ(OviTemplate_GetProperty(owner, "M"), second);
    EXPECT_EQ(OviTemplateManager_GetAnchorType("Z"), first);
    OviObject_Delete(OviTemplateManager_GetLOD("Z")); // the own name is the key again
    EXPECT_EQ(OviTemplate_GetProperty(owner, "A"), first);
    EXPECT_EQ(OviTemplateManager_GetAnchorType("A"), first);
    EXPECT_EQ(OviTemplateManager_GetAnchorTypeAt(0), first);
}

TEST_F(RenamingTest, TypesAmongTheAnchorTypesFollowNamesAndPackages) {
    Schema("<template name='T'/><template name='U'/><enum name='E' type='INT32'/>");
    OviTemplate* first = TemplateOf("T");
    OviTemplateManager_AddAnchorType(first);
    OviTemplateManager_AddAnchorType(TemplateOf("U"));
    OviTemplateManager_AddAnchorType(OviTemplateManager_GetEnumeration("E"));
    OviType_SetPackageName(first, "z");
    EXPECT_EQ(OviTemplateManager_GetAnchorType("z.T#1"), first);
    EXPECT_EQ(OviTemplateManager_GetAnchorTypeAt(2), first);
    ASSERT_TRUE(OviNamedObject_SetName(first, "A.Q"));
    EXPECT_EQ(OviTemplateManager_GetAnchorType("A.Q#1"), first);
    EXPECT_EQ(OviTemplateManager_GetAnchorTypeAt(0), first);
}

TEST_F(RenamingTest, APropertyInstanceAmongTheAnchorTypesFollowsItsPropertysOwner) {
    Schema("<template name='T'><attribute name='x' type='INT32'/></template>"
           "<template name='A'/><template name='M'/>");
    OviPropertyInstance* member = PropertyOf(AssetOf("T", "asset"), "T.x");
    OviTemplateManager_AddAnchorType(member);
    OviTemplateManager_AddAnchorType(TemplateOf("M"));
    EXPECT_EQ(OviTemplateManager_GetAnchorTypeAt(1), member);
    OviTemplate_AddProperty(TemplateOf("A"), OviPropertyInstance_GetProperty(member), -1);
    EXPECT_EQ(OviTemplateManager_GetAnchorTypeAt(0), member);
    EXPECT_EQ(OviTemplateManager_GetAnchorType("A.x"), member);
}

TEST_F(RenamingTest, AnAssetThatACallbackRenamesStaysInOrderAmongTheAnchorTypes) {
    OviAsset* asset = OviAssetManager_NewAsset("a");
    OviAsset* other = OviAssetManager_NewAsset("m");
    OviTemplateManager_AddAnchorType(asset);
    OviTemplateManager_AddAnchorType(other);
    static char key;
    const OviCallback rename = [](void*, void* object, int event, void*) {
        if (event == OVI_EVENT_REFERENCE_CHANGED)
            OviNamedObject_SetName(static_cast<OviNamedObject*>(object), "z");
    };
    OviNotificationManager_RegisterInstanceCallback(rename, &key);
    OviAsset_SetReference(asset, "x");
    OviNotificationManager_UnregisterInstanceCallback(&key);
    EXPECT_EQ(AnchorTypes(), (Lines{"m", "z"}));
    EXPECT_EQ(OviTemplateManager_GetAnchorType("z"), asset);
}
