// What still shows an object that has ended, or could keep a place for one: nobody lists it any
// more, and nobody ends it twice.

#include <cstdlib>

#include "api/SceneHost.h"

namespace {

class EndedObjectsTest : public SceneTest {
protected:
    static OviAttributeProperty* Attribute(const char* fullName) {
        return static_cast<OviAttributeProperty*>(OviTemplateManager_GetProperty(fullName));
    }

    /// A block with one new instance, as hosts make it.
    static OviInstance** BlockOf(const char* templateName) {
        return static_cast<OviInstance**>(OviType_NewValue(TemplateOf(templateName), nullptr, 1));
    }
};

} // namespace

TEST_F(EndedObjectsTest, ATypeThatACallbackDeletedIsNotRegisteredAgain) {
    Schema("<type name='V' type='FLOAT' dim='3'/>"
           "<template name='T'><attribute name='v' type='V'/></template>");
    OviAttributeProperty* property = Attribute("T.v");
    int result = 0;
    {
        const Reaction reaction([&](OviObject*, int, void*) {
            OviObject_Delete(OviTemplateManager_ResolveType("V"));
            result = OviTemplateManager_AddType(OviAttributeProperty_GetType(property));
        });
        OviAssetManager_NewAsset("a");
    }
    EXPECT_EQ(result, -1);
    EXPECT_EQ(OviTemplateManager_ResolveType("V"), nullptr);
}

TEST_F(EndedObjectsTest, ATypeThatACallbackDeletedIsAsOneDeletedElsewhereOnceTheCallReturned) {
    Schema("<type name='V' type='FLOAT' dim='3'/>"
           "<template name='T'><attribute name='v' type='V'/></template>");
    {
        const Reaction reaction(
            [&](OviObject*, int, void*) { OviObject_Delete(OviTemplateManager_ResolveType("V")); });
        OviAssetManager_NewAsset("a");
    }
    OviType* left = OviAttributeProperty_GetType(Attribute("T.v"));
    OviTemplateManager_AddType(left);
    EXPECT_EQ(OviTemplateManager_ResolveType("V"), left);
    OviObject_Delete(left);
    EXPECT_EQ(OviTemplateManager_ResolveType("V"), nullptr);
}

TEST_F(EndedObjectsTest, ATemplateThatACallbackDeletedBecomesNobodysParent) {
    Schema("<template name='B'/><template name='T'/>");
    OviTemplate* child = TemplateOf("T");
    {
        const Reaction reaction([&](OviObject*, int, void*) {
            OviTemplate* ended = TemplateOf("B");
            OviObject_Delete(ended);
            OviTemplate_AddParent(child, ended);
        });
        OviAssetManager_NewAsset("a");
    }
    ASSERT_EQ(OviTemplate_GetParentCount(child), 1);
    EXPECT_EQ(OviTemplate_GetParentAt(child, 0), OviTemplateManager_GetRoot());
}

TEST_F(EndedObjectsTest, AnEnumerationOfAnEndedLibraryHasOneOwnerInTheNext) {
    Schema("<enum name='E' type='INT32'><item name='One' value='1'/></enum>"
           "<template name='T'><attribute name='e' type='E'/></template>");
    OviInstance* kept = OviInstance_New("kept");
    OviInstance_AddTemplate(kept, TemplateOf("T"));
    Ovi_Terminate();
    Ovi_Initialize();
    auto* property = static_cast<OviAttributeProperty*>(
        OviPropertyInstance_GetProperty(PropertyOf(kept, "T.e")));
    auto* left = static_cast<OviEnumeration*>(OviAttributeProperty_GetType(property));
    OviTemplateManager_AddEnumeration(left);
    OviObject_Delete(kept); // and with it the rest of the former schema
    EXPECT_EQ(OviTemplateManager_GetEnumeration("E"), left);
    EXPECT_STREQ(OviNamedObject_GetName(OviEnumeration_GetItemAt(left, 0)), "One");
}

TEST_F(EndedObjectsTest, AnInstanceLeavesTheDefaultValueThatItStandsIn) {
    Schema("<template name='In'/><template name='Out'><attribute name='v' type='In'/></template>");
    OviInstance** block = BlockOf("In");
    OviAttributeProperty_SetDefaultValue(Attribute("Out.v"), block);
    OviObject_Delete(block[0]);
    EXPECT_EQ(block[0], nullptr);
    OviAttributeProperty_SetDefaultValue(Attribute("Out.v"), nullptr);
    std::free(block);
}

TEST_F(EndedObjectsTest, AnInstanceThatACallbackDeletesLeavesTheDefaultValueThatItStandsIn) {
    Schema("<template name='In'><attribute name='x' type='INT32'/></template>"
           "<template name='Out'><attribute name='v' type='In'/></template>");
    OviInstance** block = BlockOf("In");
    OviAttributeProperty_SetMaxValue(Attribute("Out.v"), block);
    {
        const Reaction reaction([](OviObject* object, int, void*) { OviObject_Delete(object); });
        OviObject_Delete(OviTemplateManager_GetProperty("In.x"));
    }
    EXPECT_EQ(block[0], nullptr);
    OviAttributeProperty_SetMaxValue(Attribute("Out.v"), nullptr);
    std::free(block);
}

TEST_F(EndedObjectsTest, AnInstanceThatACallbackDeletesNeverGetsIntoTheValueItWasMadeFor) {
    Schema("<template name='In'/>");
    OviInstance** block = BlockOf("In");
    {
        const Reaction reaction([](OviObject* object, int, void*) { OviObject_Delete(object); });
        OviType_GetValueFromString(TemplateOf("In"), "In", block, 0);
    }
    EXPECT_EQ(block[0], nullptr);
    std::free(block);
}

TEST_F(EndedObjectsTest, ASceneIsReadNoFurtherOnceACallbackEndedTheLibrary) {
    int told = 0;
    bool read = true;
    {
        const Reaction reaction([&](OviObject*, int, void*) {
            ++told;
            Ovi_Terminate();
            Ovi_Initialize();
        });
        read = Load("<asset name='a'/><asset name='b'/><asset name='c'/>");
    }
    EXPECT_FALSE(read);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 0);
}

TEST_F(EndedObjectsTest, APropertyThatWasLeftToItsUsersAndIsAddedAgainBelongsToTheTemplate) {
    Schema("<lod name='L'/><template name='T'><geometry name='g'><alternate lod='L'/></geometry>"
           "</template><template name='U'/>");
    auto* geometry = static_cast<OviGeometryInstance*>(PropertyOf(AssetOf("T", "a"), "T.g"));
    OviNodeInstance* node = OviGeometryInstance_GetNodeInstanceAt(geometry, 0);
    OviGeometryInstance_SetNodeInstanceAt(geometry, 0, nullptr);
    OviProperty* left = OviPropertyInstance_GetProperty(node);
    OviObject_Delete(left);
    OviTemplate_AddProperty(TemplateOf("U"), left, -1);
    ASSERT_EQ(OviTemplate_GetPropertyCount(TemplateOf("U")), 1);
    OviObject_Delete(node); // the last user
    EXPECT_EQ(OviTemplate_GetPropertyCount(TemplateOf("U")), 1);
}

// The sanitizers look at this.
TEST_F(EndedObjectsTest, APropertyOfATypeThatGoesWithItsLastUserMayBeListedBesideThatUser) {
    Schema("<template name='In'/><template name='Out'><attribute name='a' type='In'/></template>");
    auto* left = static_cast<OviTemplate*>(OviAttributeProperty_GetType(Attribute("Out.a")));
    OviObject_Delete(left);
    OviAttributeProperty* shared = OviAttributeProperty_New("Z", 1);
    OviTemplate* out = TemplateOf("Out");
    OviTemplate_AddProperty(out, shared, -1);
    OviTemplate_AddProperty(left, shared, -1); // which now owns it
    OviAttributeProperty* other = OviAttributeProperty_New("A", 1);
    OviTemplate_AddProperty(out, other, -1);
    OviTemplate_AddProperty(left, other, -1);
    OviObject_Delete(out);
    EXPECT_EQ(TemplateOf("Out"), nullptr);
}

// What instances have of a definition that was unloaded goes with them. The sanitizers look at
// this.
TEST_F(EndedObjectsTest, AFormerPropertyOfADeletedTemplateGoesWithTheLastInstanceThatHasIt) {
    const auto path = WriteFile(
        "t.template", std::string(kHeader) +
                          "<templates><template name='T'><attribute name='b' type='INT32'/>"
                          "</template><template name='U'><attribute name='x' type='T' default='0'/>"
                          "</template></templates>");
    OviTemplateManager_LoadTemplateFile(path.c_str());
    OviInstance* known = NestedIn(AssetOf("U"), "U.x");
    OviAttributeProperty_GetDefaultValue(Attribute("U.x"));
    OviTemplateManager_UnloadTemplateFile(path.c_str());
    OviTemplateManager_LoadTemplateFile(path.c_str());
    OviObject_Delete(TemplateOf("T"));
    OviObject_Delete(TemplateOf("U"));
    OviAssetManager_NewScene(); // which leaves the instance of the value to those who know it
    Ovi_Terminate();
    EXPECT_EQ(OviInstance_GetTemplateCount(known), 0);
    EXPECT_TRUE(PropertiesOf(known).empty());
    OviObject_Delete(known);
    Ovi_Initialize();
}
