// The properties of templates: adding, looking up, removing.

#include "api/Schema.h"

namespace {

class TemplatePropertiesTest : public SchemaTest {
protected:
    void SetUp() override {
        SchemaTest::SetUp();
        mesh = Make("Mesh");
    }

    /// A second version of the template, which has copies of what the first one has so far.
    static OviTemplate* MakeVersion(const char* name, int version) {
        return OviTemplateManager_CreateTemplateVersion(name, version);
    }

    OviTemplate* mesh = nullptr;
};

TEST_F(TemplatePropertiesTest, AddGivesThePlaceByName) {
    EXPECT_EQ(OviTemplate_AddProperty(mesh, NewAttribute("m"), -1), 0);
    EXPECT_EQ(OviTemplate_AddProperty(mesh, NewAttribute("z"), -1), 1);
    EXPECT_EQ(OviTemplate_AddProperty(mesh, NewAttribute("n"), -1), 1);
    EXPECT_EQ(OviTemplate_AddProperty(mesh, NewAttribute("A"), -1), 0);
    EXPECT_EQ(OviTemplate_GetPropertyCount(mesh), 4);
    EXPECT_EQ(PropertiesByName(mesh), (Names{"Mesh.A", "Mesh.m", "Mesh.n", "Mesh.z"}));
    EXPECT_EQ(PropertiesAsDeclared(mesh), (Names{"Mesh.m", "Mesh.z", "Mesh.n", "Mesh.A"}));
}

TEST_F(TemplatePropertiesTest, APositionInsertsIntoTheDeclarationOrder) {
    OviTemplate_AddProperty(mesh, NewAttribute("a"), -1);
    OviTemplate_AddProperty(mesh, NewAttribute("b"), 0);
    OviTemplate_AddProperty(mesh, NewAttribute("c"), 1);
    OviTemplate_AddProperty(mesh, NewAttribute("d"), 1000);
    EXPECT_EQ(PropertiesAsDeclared(mesh), (Names{"Mesh.b", "Mesh.c", "Mesh.a", "Mesh.d"}));
}

TEST_F(TemplatePropertiesTest, TheTemplateOwnsPropertiesOfItsVersion) {
    OviAttributeProperty* own = NewAttribute("own");
    OviTemplate_AddProperty(mesh, own, -1);
    EXPECT_EQ(OviProperty_GetTemplate(own), mesh);
    EXPECT_STREQ(OviProperty_GetFullName(own), "Mesh.own");

    OviAttributeProperty* later = NewAttribute("later", 2);
    EXPECT_EQ(OviTemplate_AddProperty(mesh, later, -1), 0);
    EXPECT_EQ(OviProperty_GetTemplate(later), nullptr);
    EXPECT_STREQ(OviProperty_GetFullName(later), "later");
    OviObject_Delete(later);
    EXPECT_EQ(PropertiesByName(mesh), Names{"Mesh.own"});
}

TEST_F(TemplatePropertiesTest, ANameOfTheSameVersionIsRefused) {
    OviAttributeProperty* first = AddAttribute(mesh, "points");
    OviAttributeProperty* second = NewAttribute("points");
    EXPECT_EQ(OviTemplate_AddProperty(mesh, second, -1), -1);
    EXPECT_EQ(OviTemplate_AddProperty(mesh, first, -1), -1);
    EXPECT_EQ(OviTemplate_GetProperty(mesh, "points"), first);
    EXPECT_EQ(PropertiesAsDeclared(mesh), Names{"Mesh.points"});
    EXPECT_EQ(OviProperty_GetTemplate(second), nullptr);
    OviObject_Delete(second);
}

TEST_F(TemplatePropertiesTest, ARedefinitionTakesTheNameAndTheOlderOneStaysDeclared) {
    AddAttribute(mesh, "points");
    OviTemplate* second = MakeVersion("Mesh", 2);
    OviProperty* older = OviTemplate_GetProperty(second, "points");
    OviAttributeProperty* newer = NewAttribute("points", 2);
    EXPECT_EQ(OviTemplate_AddProperty(second, newer, -1), ~0);
    EXPECT_EQ(OviTemplate_GetPropertyCount(second), 1);
    EXPECT_EQ(OviTemplate_GetProperty(second, "points"), newer);
    EXPECT_EQ(OviTemplate_GetPropertyAt(second, 0, true), newer);
    EXPECT_EQ(OviTemplate_GetPropertyAt(second, 0, false), older);
    EXPECT_EQ(OviTemplate_GetPropertyAt(second, 1, false), newer);
    EXPECT_EQ(OviTemplate_GetPropertyAt(second, 2, false), nullptr);
    EXPECT_EQ(OviProperty_GetTemplate(newer), second);
    EXPECT_NE(OviTemplate_GetProperty(mesh, "points"), newer);
}

TEST_F(TemplatePropertiesTest, AnOlderDefinitionCanBeAddedBelowANewerOne) {
    OviAttributeProperty* newer = NewAttribute("points", 3);
    OviTemplate_AddProperty(mesh, newer, -1);
    OviAttributeProperty* older = NewAttribute("points", 1);
    EXPECT_EQ(OviTemplate_AddProperty(mesh, older, 0), ~0);
    EXPECT_EQ(OviTemplate_GetProperty(mesh, "points"), older);
    EXPECT_EQ(OviProperty_GetTemplate(older), mesh);
    OviObject_Delete(newer);
    EXPECT_EQ(PropertiesAsDeclared(mesh), Names{"Mesh.points"});
}

TEST_F(TemplatePropertiesTest, InheritedPropertiesAreFoundDepthFirstInKeyOrder) {
    OviTemplate* base = Make("Base");
    OviTemplate* a = Make("A", {base});
    OviTemplate* b = Make("B");
    OviTemplate* heir = Make("Heir", {b, a});
    OviProperty* ofBase = AddAttribute(base, "x");
    OviProperty* ofB = AddAttribute(b, "x");
    EXPECT_EQ(OviTemplate_GetProperty(heir, "x"), ofBase);
    OviProperty* ofA = AddAttribute(a, "x");
    EXPECT_EQ(OviTemplate_GetProperty(heir, "x"), ofA);
    OviProperty* own = AddAttribute(heir, "x");
    EXPECT_EQ(OviTemplate_GetProperty(heir, "x"), own);
    EXPECT_EQ(OviTemplate_GetProperty(b, "x"), ofB);
    EXPECT_EQ(OviTemplate_GetPropertyCount(heir), 1);
}

TEST_F(TemplatePropertiesTest, NamesAreExact) {
    AddAttribute(mesh, "points");
    for (const char* wrong : {"Points", "point", "Mesh.points", "", " points"})
        EXPECT_EQ(OviTemplate_GetProperty(mesh, wrong), nullptr) << wrong;
    EXPECT_EQ(OviTemplate_GetProperty(mesh, nullptr), nullptr);
}

TEST_F(TemplatePropertiesTest, ATemplateDoesNotContainItself) {
    OviTemplate* heir = Make("Heir", {mesh});
    OviTemplate* holder = Make("Holder");
    AddAttribute(holder, "mesh", mesh);
    OviType* alias = OviCustomType_New("Alias", 1);
    OviType_SetBaseType(alias, mesh);
    OviTemplateManager_AddType(alias);
    for (OviType* type : {static_cast<OviType*>(mesh), static_cast<OviType*>(heir),
                          static_cast<OviType*>(holder), alias}) {
        OviAttributeProperty* refused = NewAttribute("self", 1, type);
        EXPECT_EQ(OviTemplate_AddProperty(mesh, refused, -1), -1) << OviType_GetFullName(type);
        OviAttributeProperty_SetReference(refused, true);
        EXPECT_EQ(OviTemplate_AddProperty(mesh, refused, -1), 0);
        OviTemplate_RemoveProperty(mesh, refused);
        OviObject_Delete(refused);
    }
}

TEST_F(TemplatePropertiesTest, RemoveGivesThePlaceInTheDeclarationOrder) {
    OviProperty* z = AddAttribute(mesh, "z");
    OviProperty* a = AddAttribute(mesh, "a");
    EXPECT_EQ(OviTemplate_RemoveProperty(mesh, a), 1);
    EXPECT_EQ(OviTemplate_RemoveProperty(mesh, a), -1);
    EXPECT_EQ(OviTemplate_RemoveProperty(mesh, z), 0);
    EXPECT_EQ(OviTemplate_GetPropertyCount(mesh), 0);
    EXPECT_EQ(OviProperty_GetTemplate(a), mesh);
    OviObject_Delete(a);
    OviObject_Delete(z);
}

TEST_F(TemplatePropertiesTest, RemoveTakesTheNameFromWhateverCarriesIt) {
    AddAttribute(mesh, "points");
    OviTemplate* second = MakeVersion("Mesh", 2);
    OviProperty* older = OviTemplate_GetProperty(second, "points");
    OviProperty* newer = NewAttribute("points", 2);
    OviTemplate_AddProperty(second, newer, -1);
    EXPECT_EQ(OviTemplate_RemoveProperty(second, older), 0);
    EXPECT_EQ(OviTemplate_GetPropertyCount(second), 0);
    EXPECT_EQ(OviTemplate_GetPropertyAt(second, 0, false), newer);
    OviAttributeProperty* stranger = NewAttribute("points");
    EXPECT_EQ(OviTemplate_RemoveProperty(mesh, stranger), -1);
    EXPECT_EQ(OviTemplate_GetPropertyCount(mesh), 0);
    EXPECT_NE(OviTemplate_GetPropertyAt(mesh, 0, false), nullptr);
    OviObject_Delete(stranger);
    OviObject_Delete(older);
}

TEST_F(TemplatePropertiesTest, NullAndIndicesOutOfRangeAreHarmless) {
    OviProperty* property = AddAttribute(mesh, "points");
    EXPECT_EQ(OviTemplate_AddProperty(nullptr, property, -1), -1);
    EXPECT_EQ(OviTemplate_AddProperty(mesh, nullptr, -1), -1);
    EXPECT_EQ(OviTemplate_RemoveProperty(mesh, nullptr), -1);
    EXPECT_EQ(OviTemplate_GetPropertyCount(nullptr), 0);
    for (const bool byName : {false, true}) {
        EXPECT_EQ(OviTemplate_GetPropertyAt(mesh, -1, byName), nullptr);
        EXPECT_EQ(OviTemplate_GetPropertyAt(mesh, 1, byName), nullptr);
        EXPECT_EQ(OviTemplate_GetPropertyAt(nullptr, 0, byName), nullptr);
    }
    EXPECT_EQ(OviTemplate_GetProperty(nullptr, "points"), nullptr);
}

// -- names that change ----------------------------------------------------------------------------

TEST_F(TemplatePropertiesTest, ARenamedPropertyIsFoundUnderItsNewNameAndKeepsItsFullName) {
    OviProperty* points = AddAttribute(mesh, "points");
    AddAttribute(mesh, "a");
    OviTemplate* other = Make("Other");
    OviTemplate_AddProperty(other, points, -1);
    EXPECT_TRUE(OviNamedObject_SetName(points, "Vertices"));
    for (OviTemplate* lister : {mesh, other}) {
        EXPECT_EQ(OviTemplate_GetProperty(lister, "Vertices"), points);
        EXPECT_EQ(OviTemplate_GetProperty(lister, "points"), nullptr);
    }
    EXPECT_EQ(OviTemplate_GetPropertyAt(mesh, 0, true), points);
    EXPECT_STREQ(OviProperty_GetFullName(points), "Other.points");
    EXPECT_FALSE(OviNamedObject_SetName(points, "not valid"));
    EXPECT_EQ(OviTemplate_GetProperty(mesh, "Vertices"), points);
}

TEST_F(TemplatePropertiesTest, BothStayWhenTheNewNameIsTaken) {
    OviProperty* a = AddAttribute(mesh, "a");
    OviProperty* b = AddAttribute(mesh, "b");
    EXPECT_TRUE(OviNamedObject_SetName(b, "a"));
    EXPECT_EQ(OviTemplate_GetPropertyCount(mesh), 2);
    EXPECT_EQ(OviTemplate_GetProperty(mesh, "a"), a);
    EXPECT_EQ(OviTemplate_RemoveProperty(mesh, b), 1);
    EXPECT_EQ(OviTemplate_GetProperty(mesh, "a"), a);
    OviObject_Delete(b);
}

TEST_F(TemplatePropertiesTest, AnOlderDefinitionThatIsRenamedStaysOutOfTheLookup) {
    AddAttribute(mesh, "points");
    OviTemplate* second = MakeVersion("Mesh", 2);
    OviProperty* older = OviTemplate_GetProperty(second, "points");
    OviTemplate_AddProperty(second, NewAttribute("points", 2), -1);
    OviNamedObject_SetName(older, "oldPoints");
    EXPECT_EQ(OviTemplate_GetPropertyCount(second), 1);
    EXPECT_EQ(OviTemplate_GetProperty(second, "oldPoints"), nullptr);
}

// -- odd orders of deletion -----------------------------------------------------------------------

TEST_F(TemplatePropertiesTest, APropertyDeletedByHandLeavesAllTemplatesThatListIt) {
    OviTemplate* second = MakeVersion("Mesh", 2);
    OviTemplate* third = MakeVersion("Mesh", 3);
    OviAttributeProperty* points = NewAttribute("points");
    for (OviTemplate* version : {mesh, second, third})
        EXPECT_EQ(OviTemplate_AddProperty(version, points, -1), 0);
    EXPECT_EQ(OviProperty_GetTemplate(points), mesh);
    OviObject_Delete(points);
    for (OviTemplate* version : {mesh, second, third}) {
        EXPECT_EQ(OviTemplate_GetProperty(version, "points"), nullptr);
        EXPECT_EQ(PropertiesAsDeclared(version), Names{});
    }
}

TEST_F(TemplatePropertiesTest, APropertyGoesWithItsOwnerWhereverItIsListed) {
    OviTemplate* second = MakeVersion("Mesh", 2);
    OviAttributeProperty* points = NewAttribute("points");
    OviTemplate_AddProperty(second, points, -1);
    OviTemplate_AddProperty(mesh, points, -1);
    OviObject_Delete(mesh);
    EXPECT_EQ(OviTemplate_GetProperty(second, "points"), nullptr);
    EXPECT_EQ(PropertiesAsDeclared(second), Names{});
}

TEST_F(TemplatePropertiesTest, ARedefinitionDeletedByHandLeavesTheNameFree) {
    AddAttribute(mesh, "points");
    OviTemplate* second = MakeVersion("Mesh", 2);
    OviAttributeProperty* newer = NewAttribute("points", 2);
    OviTemplate_AddProperty(second, newer, -1);
    OviObject_Delete(newer);
    EXPECT_EQ(OviTemplate_GetPropertyCount(second), 0);
    EXPECT_EQ(PropertiesAsDeclared(second), Names{"Mesh.points"});
}

TEST_F(TemplatePropertiesTest, APropertyThatWasTakenOutOutlivesItsOwner) {
    OviAttributeProperty* points = AddAttribute(mesh, "points");
    OviTemplate_RemoveProperty(mesh, points);
    EXPECT_EQ(OviProperty_GetTemplate(points), mesh);
    OviObject_Delete(mesh);
    EXPECT_EQ(OviProperty_GetTemplate(points), nullptr);
    EXPECT_STREQ(OviProperty_GetFullName(points), "Mesh.points");
    OviTemplate* other = Make("Other");
    EXPECT_EQ(OviTemplate_AddProperty(other, points, -1), 0);
    EXPECT_STREQ(OviProperty_GetFullName(points), "Other.points");
}

TEST_F(TemplatePropertiesTest, APropertyThatWasPutBackGoesWithItsOwnerOnce) {
    OviAttributeProperty* points = AddAttribute(mesh, "points");
    OviTemplate_RemoveProperty(mesh, points);
    EXPECT_EQ(OviTemplate_AddProperty(mesh, points, -1), 0);
    OviObject_Delete(mesh);
    EXPECT_EQ(OviTemplateManager_GetTemplate("Mesh"), nullptr);
}

// Taking out a namesake frees the name, so that the same object can be declared once more.
TEST_F(TemplatePropertiesTest, APropertyThatIsDeclaredTwiceIsDeletedOnce) {
    OviAttributeProperty* points = AddAttribute(mesh, "points");
    OviAttributeProperty* namesake = NewAttribute("points");
    OviTemplate_RemoveProperty(mesh, namesake);
    EXPECT_EQ(OviTemplate_AddProperty(mesh, points, -1), 0);
    EXPECT_EQ(PropertiesAsDeclared(mesh), (Names{"Mesh.points", "Mesh.points"}));
    OviObject_Delete(namesake);
    OviObject_Delete(mesh);
}

TEST_F(TemplatePropertiesTest, APropertyMovedToAnotherTemplateBelongsToThatOne) {
    OviAttributeProperty* points = AddAttribute(mesh, "points");
    OviTemplate* other = Make("Other");
    OviTemplate_AddProperty(other, points, -1);
    EXPECT_EQ(OviProperty_GetTemplate(points), other);
    OviObject_Delete(mesh);
    EXPECT_EQ(OviTemplate_GetProperty(other, "points"), points);
    EXPECT_EQ(OviProperty_GetTemplate(points), other);
}

} // namespace
