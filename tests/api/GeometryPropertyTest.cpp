// Geometry properties and their alternates.

#include "api/SceneHost.h"

namespace {

class GeometryPropertyTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        Schema("<lod name='High'/><lod name='Low'/><template name='Mesh'><geometry name='shape'>"
               "<alternate lod='Low'/><alternate lod='High' version='3'/></geometry></template>");
        shape = Shape(TemplateOf("Mesh"));
        ASSERT_NE(shape, nullptr);
    }

    static OviGeometryProperty* Shape(OviTemplate* owner) {
        return static_cast<OviGeometryProperty*>(OviTemplate_GetProperty(owner, "shape"));
    }

    template <class Handle> static Handle* CloneOf(Handle* source) {
        return static_cast<Handle*>(OviObject_Clone(source));
    }

    static std::string Alternates(OviGeometryProperty* geometry) {
        std::string text;
        for (int i = 0; i < OviGeometryProperty_GetAlternateCount(geometry); ++i)
            text += std::string(
                        OviProperty_GetFullName(OviGeometryProperty_GetAlternateAt(geometry, i))) +
                    " ";
        return text;
    }

    OviGeometryAlternate* High() const { return OviGeometryProperty_GetAlternate(shape, "High"); }

    OviGeometryProperty* shape = nullptr;
};

TEST_F(GeometryPropertyTest, IsAPropertyButNoAttribute) {
    EXPECT_EQ(OviObject_GetClass(shape), OVI_CLASS_GEOMETRY_PROPERTY);
    for (int id : {9, 15, 31, 0})
        EXPECT_TRUE(OviObject_ImplementsClass(shape, id)) << id;
    for (int id : {3, 14, 7})
        EXPECT_FALSE(OviObject_ImplementsClass(shape, id)) << id;
}

TEST_F(GeometryPropertyTest, AnAlternateIsANodeProperty) {
    EXPECT_EQ(OviObject_GetClass(High()), OVI_CLASS_GEOMETRY_ALTERNATE);
    for (int id : {7, 14, 3, 15, 31, 0})
        EXPECT_TRUE(OviObject_ImplementsClass(High(), id)) << id;
    EXPECT_FALSE(OviObject_ImplementsClass(High(), OVI_CLASS_ANCHOR_PROPERTY));
    EXPECT_EQ(OviNodeProperty_GetAncestorDistance(High()), -1);
    EXPECT_STREQ(OviNamedObject_GetName(High()), "High");
    EXPECT_EQ(OviGeometryAlternate_GetLOD(High()), OviTemplateManager_GetLOD("High"));
}

// The level's name comes twice: as the key, and once more behind it.
TEST_F(GeometryPropertyTest, ListsAlternatesByLevel) {
    EXPECT_EQ(Alternates(shape), "High.High Low.Low ");
    EXPECT_EQ(OviGeometryProperty_GetAlternateAt(shape, 2), nullptr);
    EXPECT_EQ(OviGeometryProperty_GetAlternateAt(shape, -1), nullptr);
    EXPECT_EQ(OviGeometryProperty_GetAlternate(shape, "high"), nullptr);
    EXPECT_EQ(OviGeometryProperty_GetAlternate(shape, nullptr), nullptr);
}

TEST_F(GeometryPropertyTest, ANewOneIsEmpty) {
    OviGeometryProperty* made = OviGeometryProperty_New("made", 2);
    EXPECT_STREQ(OviNamedObject_GetName(made), "made");
    EXPECT_EQ(OviGeometryProperty_GetAlternateCount(made), 0);
    OviObject_Delete(made);
}

TEST_F(GeometryPropertyTest, ASecondAlternateOfALevelTakesThePlace) {
    OviGeometryAlternate* older = High();
    OviGeometryAlternate* newer = CloneOf(older);
    EXPECT_EQ(OviGeometryProperty_AddAlternate(shape, newer), ~0);
    EXPECT_EQ(OviGeometryProperty_GetAlternateCount(shape), 2);
    EXPECT_EQ(High(), newer);
    OviObject_Delete(older);
    OviGeometryProperty_RemoveAlternate(shape, newer);
    OviObject_Delete(newer);
}

TEST_F(GeometryPropertyTest, ARemovedAlternateLives) {
    OviGeometryAlternate* high = High();
    EXPECT_EQ(OviGeometryProperty_RemoveAlternate(shape, high), 0);
    EXPECT_LT(OviGeometryProperty_RemoveAlternate(shape, high), 0);
    EXPECT_EQ(Alternates(shape), "Low.Low ");
    EXPECT_STREQ(OviNamedObject_GetName(high), "High");
    EXPECT_EQ(OviGeometryProperty_AddAlternate(shape, high), 0);
    EXPECT_EQ(Alternates(shape), "High.High Low.Low ");
}

TEST_F(GeometryPropertyTest, AnotherLevelChangesTheFullNameButNotTheName) {
    OviGeometryAlternate* alternate = CloneOf(High());
    OviGeometryAlternate_SetLOD(alternate, OviTemplateManager_GetLOD("Low"));
    EXPECT_STREQ(OviProperty_GetFullName(alternate), "Low.Low");
    EXPECT_STREQ(OviNamedObject_GetName(alternate), "High");
    OviGeometryAlternate_SetLOD(alternate, nullptr);
    EXPECT_EQ(OviGeometryAlternate_GetLOD(alternate), nullptr);
    EXPECT_STREQ(OviProperty_GetFullName(alternate), "High");
    OviObject_Delete(alternate);
}

TEST_F(GeometryPropertyTest, AListedAlternateKeepsItsPlaceWithAnotherLevel) {
    Schema("<lod name='Zero'/>", "more");
    OviGeometryAlternate* alternate = High();
    OviGeometryAlternate_SetLOD(alternate, OviTemplateManager_GetLOD("Zero"));
    EXPECT_EQ(OviGeometryProperty_GetAlternateAt(shape, 0), alternate);
    EXPECT_EQ(OviGeometryProperty_GetAlternateCount(shape), 2);
}

TEST_F(GeometryPropertyTest, AnAlternateFollowsItsLevelsName) {
    OviGeometryProperty* made = OviGeometryProperty_New("made", 1);
    OviLOD* level = CloneOf(OviTemplateManager_GetLOD("High"));
    OviGeometryAlternate* alternate = CloneOf(High());
    OviGeometryAlternate_SetLOD(alternate, level);
    OviGeometryProperty_AddAlternate(made, alternate);
    OviNamedObject_SetName(level, "Middle");
    EXPECT_EQ(OviGeometryProperty_GetAlternate(made, "Middle"), alternate);
    EXPECT_EQ(OviGeometryProperty_GetAlternate(made, "High"), nullptr);
    EXPECT_STREQ(OviNamedObject_GetName(alternate), "High");
    OviObject_Delete(made);
    OviObject_Delete(alternate);
    OviObject_Delete(level);
}

TEST_F(GeometryPropertyTest, ACopyHasAlternatesOfItsOwnOfTheSameLevels) {
    OviNodeProperty_SetAncestor(High(), "root");
    OviGeometryProperty* copy = CloneOf(shape);
    EXPECT_EQ(OviObject_GetClass(copy), OVI_CLASS_GEOMETRY_PROPERTY);
    EXPECT_EQ(Alternates(copy), "High.High Low.Low ");
    OviGeometryAlternate* high = OviGeometryProperty_GetAlternate(copy, "High");
    EXPECT_NE(high, High());
    EXPECT_EQ(OviObject_GetClass(high), OVI_CLASS_GEOMETRY_ALTERNATE);
    EXPECT_EQ(OviGeometryAlternate_GetLOD(high), OviGeometryAlternate_GetLOD(High()));
    EXPECT_STREQ(OviNodeProperty_GetAncestor(high), "root");
    OviGeometryAlternate* low = OviGeometryProperty_GetAlternate(copy, "Low");
    OviObject_Delete(copy);
    EXPECT_STREQ(OviNamedObject_GetName(high), "High") << "alternates outlive their geometry";
    OviObject_Delete(high);
    OviObject_Delete(low);
}

TEST_F(GeometryPropertyTest, ItsSizeIsTheSumOfItsAlternatesUnlessOneHasNone) {
    OviTemplate* mesh = TemplateOf("Mesh");
    EXPECT_EQ(OviType_GetValueSize(mesh, nullptr, 1), 0);
    OviAttributeProperty_SetType(High(), OviTemplateManager_GetType("DOUBLE"));
    EXPECT_EQ(OviType_GetValueSize(mesh, nullptr, 1), 0);
    OviAttributeProperty_SetType(OviGeometryProperty_GetAlternate(shape, "Low"),
                                 OviTemplateManager_GetType("INT32"));
    EXPECT_EQ(OviType_GetValueSize(mesh, nullptr, 1), 12);
}

TEST_F(GeometryPropertyTest, ItsValuesStandBehindTheOthersWithoutPadding) {
    Schema("<template name='Padded'><attribute name='byte' type='INT8'/><geometry name='shape'>"
           "<alternate lod='Low'/><alternate lod='High'/></geometry></template>",
           "padded");
    OviTemplate* padded = TemplateOf("Padded");
    for (const auto& [level, type] : {std::pair{"High", "DOUBLE"}, std::pair{"Low", "INT32"}})
        OviAttributeProperty_SetType(OviGeometryProperty_GetAlternate(Shape(padded), level),
                                     OviTemplateManager_GetType(type));
    EXPECT_EQ(OviType_GetValueSize(padded, nullptr, 1), 1 + 8 + 4);
}

TEST_F(GeometryPropertyTest, ATemplateMayBeTheTypeOfAnAlternateInAGeometryThatItIsGiven) {
    OviTemplate* mesh = TemplateOf("Mesh");
    OviGeometryProperty* made = OviGeometryProperty_New("made", 1);
    OviGeometryAlternate* alternate = CloneOf(High());
    OviGeometryProperty_AddAlternate(made, alternate);
    EXPECT_TRUE(OviAttributeProperty_SetType(alternate, mesh));
    EXPECT_GE(OviTemplate_AddProperty(mesh, made, -1), 0);
    EXPECT_EQ(OviTemplate_GetProperty(mesh, "made"), made);
    EXPECT_EQ(OviType_GetValueSize(mesh, nullptr, 1), 0);
    OviObject_Delete(alternate); // alternates are not their geometry's
}

TEST_F(GeometryPropertyTest, ASizeBeyondAllNumbersStaysTheLargestOne) {
    Schema("<type name='Huge' type='INT32' dim='500000000'/>", "huge");
    for (const char* level : {"High", "Low"})
        OviAttributeProperty_SetType(OviGeometryProperty_GetAlternate(shape, level),
                                     OviTemplateManager_GetType("Huge"));
    EXPECT_EQ(OviType_GetValueSize(TemplateOf("Mesh"), nullptr, 1), 2147483647);
}

TEST_F(GeometryPropertyTest, AnAlternateOfATemplateHasThatTemplatesSize) {
    Schema("<template name='Inner'><attribute name='a' type='INT32'/></template>"
           "<type name='Inners' type='Inner' dim='3'/>",
           "inner");
    OviAttributeProperty_SetType(High(), OviTemplateManager_ResolveType("Inners"));
    EXPECT_EQ(OviType_GetValueSize(TemplateOf("Mesh"), nullptr, 1), 0) << "the other has none";
    OviAttributeProperty_SetType(OviGeometryProperty_GetAlternate(shape, "Low"),
                                 TemplateOf("Inner"));
    EXPECT_EQ(OviType_GetValueSize(TemplateOf("Inner"), nullptr, 3), 36) << "3 times 3 elements";
    EXPECT_EQ(OviType_GetValueSize(TemplateOf("Mesh"), nullptr, 1), 40);
}

TEST_F(GeometryPropertyTest, AnAlternateOfItsOwnTemplateHasNoSize) {
    OviTemplate* mesh = TemplateOf("Mesh");
    Schema("<template name='Mesh2'><extends template='Mesh'/>"
           "<attribute name='a' type='INT32'/></template>",
           "heir");
    EXPECT_TRUE(OviAttributeProperty_SetType(High(), mesh));
    EXPECT_EQ(OviType_GetValueSize(mesh, nullptr, 1), 0);
    EXPECT_EQ(OviType_GetValueSize(TemplateOf("Mesh2"), nullptr, 1), 4);
    EXPECT_EQ(OviInstance_GetSize(AssetOf("Mesh")), 0u);
    EXPECT_EQ(OviInstance_GetSize(AssetOf("Mesh2")), 4u);
    OviAttributeProperty_SetType(High(), nullptr);
}

TEST_F(GeometryPropertyTest, ANewVersionOfItsTemplateHasACopyOfItAndOfItsAlternates) {
    OviGeometryProperty* later = Shape(VersionOf("Mesh", 2));
    ASSERT_NE(later, nullptr);
    EXPECT_NE(later, shape);
    EXPECT_EQ(Alternates(later), "High.High Low.Low ");
    for (int i = 0; i < 2; ++i) {
        OviGeometryAlternate* copy = OviGeometryProperty_GetAlternateAt(later, i);
        OviGeometryAlternate* source = OviGeometryProperty_GetAlternateAt(shape, i);
        EXPECT_NE(copy, source);
        EXPECT_EQ(OviGeometryAlternate_GetLOD(copy), OviGeometryAlternate_GetLOD(source));
    }
}

TEST_F(GeometryPropertyTest, AnAlternateWithAnOwnerHasTheOwnersNameInFront) {
    OviGeometryAlternate* copy = CloneOf(High());
    ASSERT_GE(OviTemplate_AddProperty(VersionOf("Mesh", 3), copy, -1), 0);
    EXPECT_STREQ(OviProperty_GetFullName(copy), "Mesh.High.High");
}

TEST_F(GeometryPropertyTest, AnAlternateDeletedByHandLeavesItsGeometries) {
    OviGeometryProperty* other = OviGeometryProperty_New("other", 1);
    OviGeometryAlternate* high = High();
    OviGeometryProperty_AddAlternate(other, high);
    OviObject_Delete(high);
    EXPECT_EQ(Alternates(shape), "Low.Low ");
    EXPECT_EQ(Alternates(other), "");
    OviObject_Delete(other);
}

TEST_F(GeometryPropertyTest, AnAlternateThatLeftAGeometryDoesNotMindItsEnd) {
    OviGeometryProperty* other = CloneOf(shape);
    OviGeometryAlternate* removed = OviGeometryProperty_GetAlternate(other, "High");
    OviGeometryAlternate* listed = OviGeometryProperty_GetAlternate(other, "Low");
    EXPECT_EQ(OviGeometryProperty_RemoveAlternate(other, High()), 0) << "by its level";
    EXPECT_EQ(OviGeometryProperty_RemoveAlternate(other, removed), ~0);
    OviGeometryAlternate* second = CloneOf(listed);
    EXPECT_EQ(OviGeometryProperty_AddAlternate(other, second), ~0);
    EXPECT_EQ(OviGeometryProperty_GetAlternateAt(other, 0), second);
    OviObject_Delete(other);
    for (OviGeometryAlternate* alternate : {removed, listed, second})
        OviObject_Delete(alternate);
    EXPECT_EQ(Alternates(shape), "High.High Low.Low ");
}

TEST_F(GeometryPropertyTest, AlternatesMoveToThePlaceOfTheirLevelsNewName) {
    OviLOD* high = OviTemplateManager_GetLOD("High");
    OviGeometryAlternate* alternate = High();
    EXPECT_TRUE(OviNamedObject_SetName(high, "Ultra"));
    EXPECT_EQ(OviGeometryProperty_GetAlternateAt(shape, 1), alternate);
    EXPECT_EQ(OviGeometryProperty_GetAlternate(shape, "Ultra"), alternate);
    EXPECT_NE(OviGeometryProperty_GetAlternate(shape, "Low"), nullptr);
    EXPECT_FALSE(OviNamedObject_SetName(high, "no name"));
    EXPECT_EQ(OviGeometryProperty_GetAlternate(shape, "Ultra"), alternate);
}

TEST_F(GeometryPropertyTest, AlternatesOutliveTheirLevel) {
    OviGeometryAlternate* alternate = High();
    OviLOD* high = OviTemplateManager_GetLOD("High");
    OviNamedObject_SetName(high, "Zero");
    OviObject_Delete(high);
    EXPECT_EQ(OviTemplateManager_GetLOD("Zero"), nullptr);
    EXPECT_EQ(OviTemplateManager_GetLODCount(), 1);
    EXPECT_EQ(OviGeometryAlternate_GetLOD(alternate), nullptr);
    EXPECT_STREQ(OviProperty_GetFullName(alternate), "High.High");
    EXPECT_EQ(OviGeometryProperty_GetAlternateAt(shape, 0), alternate);
    EXPECT_EQ(OviGeometryProperty_GetAlternate(shape, "High"), alternate) << "by its own name";
    EXPECT_NE(OviGeometryProperty_GetAlternate(shape, "Low"), nullptr);
}

} // namespace
