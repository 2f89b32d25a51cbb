// What the host deletes while it is used leaves its owner, all lists and registries at once; what
// instances have of it goes as when it is removed; what others still use of it goes with the last
// of them.

#include "api/SceneHost.h"

namespace {

class DeletionInUseTest : public SceneTest {
protected:
    static OviAttributeProperty* Attribute(const char* fullName) {
        return static_cast<OviAttributeProperty*>(OviTemplateManager_GetProperty(fullName));
    }

    static OviGeometryProperty* Geometry(const char* fullName) {
        return static_cast<OviGeometryProperty*>(OviTemplateManager_GetProperty(fullName));
    }
};

} // namespace

// -- templates ------------------------------------------------------------------------------------

TEST_F(DeletionInUseTest, InstancesLoseATemplateWithTheEventsOfARemoval) {
    Schema(
        "<template name='B'><attribute name='b' type='INT32'/></template>"
        "<template name='T'><extends template='B'/><attribute name='x' type='INT32'/></template>");
    OviAsset* asset = AssetOf("T", "a");
    StartRecording();
    OviObject_Delete(TemplateOf("T"));
    EXPECT_EQ(Events(), (Lines{"0x2006 a T.x", "0x1002 a T#1"}));
    EXPECT_EQ(TemplateOf("T"), nullptr);
    EXPECT_EQ(OviInstance_GetTemplateCount(asset), 0);
    EXPECT_EQ(PropertiesOf(asset), (Lines{"B.b"})); // inherited ones stay, as in a removal
}

TEST_F(DeletionInUseTest, ATemplateStaysATypeForThePropertyThatHasIt) {
    Schema("<template name='In'><attribute name='x' type='INT32'/></template>"
           "<template name='Out'><attribute name='v' type='In'/></template>");
    OviAsset* asset = AssetOf("Out", "a");
    OviInstance* nested = NestedIn(asset, "Out.v");
    OviObject_Delete(TemplateOf("In"));
    EXPECT_EQ(OviInstance_GetTemplateCount(nested), 0);
    EXPECT_TRUE(PropertiesOf(nested).empty());
    EXPECT_STREQ(OviType_GetFullName(OviAttributeProperty_GetType(Attribute("Out.v"))), "In");
    OviInstance* made = NestedIn(AssetOf("Out", "b"), "Out.v");
    ASSERT_NE(made, nullptr);
    EXPECT_TRUE(PropertiesOf(made).empty());
}

TEST_F(DeletionInUseTest, LaterVersionsForgetTheOneThatTheyWereMadeFrom) {
    Schema("<template name='T'><attribute name='x' type='INT32'/>"
           "<attribute name='y' type='INT32' version='2'/></template>");
    OviAsset* asset = OviAssetManager_NewAsset("a");
    OviInstance_AddTemplate(asset, OviTemplateManager_GetTemplateVersion("T", 1));
    OviInstance_AddTemplate(asset, OviTemplateManager_GetTemplateVersion("T", 2));
    OviObject_Delete(OviTemplateManager_GetTemplateVersion("T", 1));
    OviTemplate* second = OviTemplateManager_GetTemplateVersion("T", 2);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(OviInstance_GetTemplateCount(asset), 1);
    EXPECT_EQ(OviTemplate_GetPropertyCount(second), 2);
    OviObject_Delete(second);
    EXPECT_TRUE(PropertiesOf(asset).empty());
}

TEST_F(DeletionInUseTest, WhatAnInstanceStillShowsAfterTheEndCanBeDeleted) {
    Schema("<template name='B'/><template name='T'><extends template='B'/>"
           "<attribute name='x' type='INT32'/></template>");
    OviInstance* instance = OviInstance_New("i");
    OviInstance_AddTemplate(instance, TemplateOf("T"));
    Ovi_Terminate();
    OviTemplate* left = OviInstance_GetTemplateAt(instance, 0);
    ASSERT_NE(left, nullptr);
    OviObject_Delete(OviPropertyInstance_GetProperty(PropertyOf(instance, "T.x")));
    EXPECT_TRUE(PropertiesOf(instance).empty());
    OviObject_Delete(left);
    EXPECT_EQ(OviInstance_GetTemplateCount(instance), 0);
    OviObject_Delete(instance); // and with it the rest of the schema
    Ovi_Initialize();
}

// -- properties -----------------------------------------------------------------------------------

TEST_F(DeletionInUseTest, InstancesLoseAProperty) {
    Schema("<template name='T'><attribute name='x' type='INT32'/>"
           "<attribute name='y' type='INT32'/></template>");
    OviAsset* first = AssetOf("T", "a");
    OviAsset* second = AssetOf("T", "b");
    StartRecording();
    OviObject_Delete(Attribute("T.x"));
    EXPECT_EQ(Events(), (Lines{"0x2006 a T.x", "0x2006 b T.x"}));
    EXPECT_EQ(PropertiesOf(first), (Lines{"T.y"}));
    EXPECT_EQ(PropertiesOf(second), (Lines{"T.y"}));
    EXPECT_EQ(OviTemplateManager_GetProperty("T.x"), nullptr);
}

TEST_F(DeletionInUseTest, APropertyStaysForANodeInstanceThatTheHostTookOut) {
    Schema("<lod name='L'/><template name='T'><geometry name='g'><alternate lod='L'/></geometry>"
           "</template>");
    auto* geometry = static_cast<OviGeometryInstance*>(PropertyOf(AssetOf("T", "a"), "T.g"));
    OviNodeInstance* node = OviGeometryInstance_GetNodeInstanceAt(geometry, 0);
    OviGeometryInstance_SetNodeInstanceAt(geometry, 0, nullptr);
    OviGeometryAlternate* alternate = OviGeometryProperty_GetAlternateAt(Geometry("T.g"), 0);
    OviObject_Delete(alternate);
    EXPECT_EQ(OviGeometryProperty_GetAlternateCount(Geometry("T.g")), 0);
    OviAttributeInstance_SetBinding(node, "bound"); // which asks the property for its commands
    EXPECT_STREQ(OviAttributeInstance_GetBinding(node), "bound");
    OviObject_Delete(node); // the last user
}

// -- geometry -------------------------------------------------------------------------------------

TEST_F(DeletionInUseTest, GeometriesLoseTheNodeOfAnAlternate) {
    Schema("<lod name='A'/><lod name='B'/><lod name='C'/><template name='T'><geometry name='g'>"
           "<alternate lod='A'/><alternate lod='B'/><alternate lod='C'/></geometry></template>");
    auto* geometry = static_cast<OviGeometryInstance*>(PropertyOf(AssetOf("T", "a"), "T.g"));
    OviNodeInstance* last = OviGeometryInstance_GetNodeInstanceAt(geometry, 2);
    OviObject_Delete(OviGeometryProperty_GetAlternate(Geometry("T.g"), "B"));
    EXPECT_EQ(OviGeometryProperty_GetAlternateCount(Geometry("T.g")), 2);
    EXPECT_EQ(OviGeometryInstance_GetNodeInstanceAt(geometry, 1), last);
    EXPECT_EQ(OviGeometryInstance_GetNodeInstanceAt(geometry, 2), nullptr);
}

TEST_F(DeletionInUseTest, AlternatesForgetTheirLevel) {
    Schema("<lod name='A'/><template name='T'><geometry name='g'><alternate lod='A'/></geometry>"
           "</template>");
    OviAsset* asset = AssetOf("T", "a");
    OviObject_Delete(OviTemplateManager_GetLOD("A"));
    EXPECT_EQ(OviTemplateManager_GetLOD("A"), nullptr);
    OviGeometryAlternate* alternate = OviGeometryProperty_GetAlternateAt(Geometry("T.g"), 0);
    EXPECT_EQ(OviGeometryAlternate_GetLOD(alternate), nullptr);
    EXPECT_FALSE(XMLOf(asset).empty());
}

// -- types ----------------------------------------------------------------------------------------

TEST_F(DeletionInUseTest, ATypeStaysForTheValuesThatItMade) {
    Schema("<enum name='E' type='INT32'><item name='One' value='1'/></enum>"
           "<type name='V' type='FLOAT' dim='3'/><template name='T'>"
           "<attribute name='e' type='E'/><attribute name='v' type='V'/></template>");
    OviAsset* asset = AssetOf("T", "a");
    const float values[] = {1, 2, 3};
    OviAttributeInstance_SetValue(AttributeOf(asset, "T.v"), values);
    OviObject_Delete(OviTemplateManager_ResolveType("V"));
    OviObject_Delete(OviTemplateManager_GetEnumeration("E"));
    EXPECT_EQ(OviTemplateManager_ResolveType("V"), nullptr);
    EXPECT_EQ(ValueOf<float>(AttributeOf(asset, "T.v"), 2), 3.0F);
    const int one = 1;
    OviAttributeInstance_SetValue(AttributeOf(asset, "T.e"), &one);
    EXPECT_TRUE(OviPropertyInstance_IsValid(AttributeOf(asset, "T.e")));
}

TEST_F(DeletionInUseTest, ATypeIsNoLongerOneOfItsFile) {
    Schema("<enum name='E' type='INT32'><item name='One' value='1'/></enum>"
           "<type name='V' type='FLOAT' dim='3'/><template name='T'/>",
           "types");
    Schema("<template name='U'><attribute name='e' type='E'/><attribute name='v' type='V'/>"
           "</template>",
           "users");
    const std::string file = PathOf("types.template");
    EXPECT_EQ(OviTemplateManager_GetTypesByFileName(file.c_str(), nullptr, 0), 3);
    OviObject_Delete(OviTemplateManager_GetType("V"));
    OviObject_Delete(OviTemplateManager_GetEnumeration("E"));
    EXPECT_EQ(OviTemplateManager_GetTypesByFileName(file.c_str(), nullptr, 0), 1);
    EXPECT_TRUE(OviTemplateManager_SaveTemplateFile(file.c_str(), nullptr));
    EXPECT_EQ(ReadFile(file), std::string(kHeader) + "<templates>\n\t<template name='T'/>\n"
                                                     "</templates>");
}

// -- instances inside of values -------------------------------------------------------------------

TEST_F(DeletionInUseTest, AnInstanceInAValueStaysOnlyWhereTheHostMayKnowIt) {
    Schema("<template name='In'/><template name='Out'><attribute name='v' type='In'/></template>");
    ASSERT_TRUE(Load("<asset name='seen'><implements template='Out'/><attribute property='Out.v'>"
                     "<asset name='n'><implements template='In'/></asset></attribute></asset>"));
    OviInstance* seen = NestedIn(OviAssetManager_GetAsset("seen"), "Out.v");
    OviAssetManager_NewScene();
    EXPECT_STREQ(OviNamedObject_GetName(seen), "n");
    EXPECT_EQ(OviInstance_GetParentPropertyInstance(seen), nullptr);
    OviObject_Delete(seen);
}
