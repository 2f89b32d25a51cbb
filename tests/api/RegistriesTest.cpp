// The registries of types and enumerations.

#include "api/Schema.h"

namespace {

class RegistriesTest : public SchemaTest {
protected:
    static OviType* Custom(const char* name, OviType* base = nullptr, const char* file = nullptr) {
        OviType* made = OviCustomType_New(name, 1);
        OviType_SetBaseType(made, base);
        OviTemplateManager_AddType(made);
        if (file)
            OviType_SetFileName(made, file);
        return made;
    }

    static Names Types() {
        Names names;
        for (int i = 0; i < OviTemplateManager_GetTypeCount(); ++i)
            names.push_back(OviType_GetFullName(OviTemplateManager_GetTypeAt(i)));
        return names;
    }

    static Names TypesOf(const char* file) {
        OviType* found[8] = {};
        const int count = OviTemplateManager_GetTypesByFileName(file, found, 8);
        Names names;
        for (int i = 0; i < count && i < 8; ++i)
            names.push_back(OviType_GetFullName(found[i]));
        return names;
    }

    /// An enumeration can only come from a file.
    OviEnumeration* Enumeration(const std::string& name, const std::string& items = "") {
        const std::string file = WriteSchema(name + ".template", "<templates><enum name=\"" + name +
                                                                     "\" type=\"INT32\">" + items +
                                                                     "</enum></templates>");
        EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(file.c_str()));
        return OviTemplateManager_GetEnumeration(name.c_str());
    }
};

TEST_F(RegistriesTest, TheBuiltInTypesAreThereInKeyOrder) {
    EXPECT_EQ(Types(),
              (Names{"BOOL", "DOUBLE", "FLOAT", "INT16", "INT32", "INT64", "INT8", "REFERENCE",
                     "STRING", "UINT16", "UINT32", "UINT64", "UINT8", "VOID"}));
    EXPECT_EQ(OviTemplateManager_GetEnumerationCount(), 0);
    EXPECT_EQ(OviTemplateManager_GetLODCount(), 0);
    EXPECT_EQ(OviTemplateManager_GetAnchorTypeCount(), 0);
}

TEST_F(RegistriesTest, TheBuiltInTypesHaveTheirAlignments) {
    const std::pair<const char*, int> alignments[] = {
        {"BOOL", 1},   {"INT8", 1},   {"UINT8", 1},  {"INT16", 2},    {"UINT16", 2},
        {"INT32", 4},  {"UINT32", 4}, {"INT64", 8},  {"UINT64", 8},   {"FLOAT", 4},
        {"DOUBLE", 8}, {"VOID", 4},   {"STRING", 4}, {"REFERENCE", 4}};
    for (const auto& [name, alignment] : alignments)
        EXPECT_EQ(OviType_GetAlignment(OviTemplateManager_GetType(name)), alignment) << name;
}

TEST_F(RegistriesTest, NamesAreExact) {
    for (const char* name :
         {"int32", "INT", "INT32 ", "", "Object", static_cast<const char*>(nullptr)})
        EXPECT_EQ(OviTemplateManager_GetType(name), nullptr);
    EXPECT_EQ(OviTemplateManager_GetTypeAt(-1), nullptr);
    EXPECT_EQ(OviTemplateManager_GetTypeAt(14), nullptr);
}

TEST_F(RegistriesTest, TypesAreAddedAndRemovedByKey) {
    OviType* custom = OviCustomType_New("pkg.Color", 3);
    EXPECT_EQ(OviTemplateManager_AddType(custom), 14);
    EXPECT_EQ(OviTemplateManager_GetType("pkg.Color"), custom);
    EXPECT_EQ(OviTemplateManager_GetType("Color"), nullptr);
    EXPECT_EQ(OviTemplateManager_AddType(custom), ~14);
    EXPECT_EQ(OviTemplateManager_RemoveType(custom), 14);
    EXPECT_EQ(OviTemplateManager_RemoveType(custom), ~14);
    EXPECT_EQ(OviTemplateManager_AddType(nullptr), -1);
    EXPECT_EQ(OviTemplateManager_RemoveType(nullptr), -1);
    OviObject_Delete(custom);
    EXPECT_EQ(OviTemplateManager_GetTypeCount(), 14);
}

TEST_F(RegistriesTest, ATypeOfATakenNameReplacesTheOtherWhichLivesOn) {
    OviType* first = Custom("Color");
    OviType* second = Custom("Color", TypeNamed("INT32"));
    EXPECT_EQ(OviTemplateManager_GetType("Color"), second);
    EXPECT_STREQ(OviNamedObject_GetName(first), "Color");
    OviType* third = Custom("Color");
    OviObject_Delete(first); // the second goes with the manager
    EXPECT_EQ(OviTemplateManager_GetType("Color"), third);
    EXPECT_STREQ(OviType_GetFullName(second), "Color");
}

TEST_F(RegistriesTest, ARenamedTypeIsMovedToItsPlace) {
    OviType* color = Custom("Color");
    Custom("Other");
    EXPECT_TRUE(OviNamedObject_SetName(color, "pkg.Farbe"));
    EXPECT_EQ(OviTemplateManager_GetType("pkg.Farbe"), color);
    EXPECT_EQ(OviTemplateManager_GetType("Color"), nullptr);
    OviType_SetPackageName(color, "");
    EXPECT_EQ(OviTemplateManager_GetType("Farbe"), color);
    EXPECT_TRUE(OviNamedObject_SetName(color, "Other")); // both stay
    EXPECT_EQ(OviTemplateManager_GetTypeCount(), 16);
    OviObject_Delete(color);
    EXPECT_NE(OviTemplateManager_GetType("Other"), nullptr);
    EXPECT_NE(OviTemplateManager_GetType("Other"), color);
}

TEST_F(RegistriesTest, ATypeAddedAgainBesideItsNamesakeIsListedOnce) {
    OviType* color = Custom("Color");
    OviType* other = Custom("Other");
    OviNamedObject_SetName(other, "Color");
    const int count = OviTemplateManager_GetTypeCount();
    const int place = ~OviTemplateManager_AddType(color);
    EXPECT_EQ(OviTemplateManager_AddType(other), ~(place + 1));
    EXPECT_EQ(OviTemplateManager_GetTypeCount(), count);
    EXPECT_EQ(OviTemplateManager_GetTypeAt(place), color);
    EXPECT_EQ(OviTemplateManager_GetTypeAt(place + 1), other);
    OviEnumeration* choice = Enumeration("Choice");
    OviEnumeration* second = Enumeration("Second");
    OviNamedObject_SetName(second, "Choice");
    EXPECT_EQ(OviTemplateManager_AddEnumeration(second), ~1);
    EXPECT_EQ(OviTemplateManager_GetEnumerationCount(), 2);
    EXPECT_EQ(OviTemplateManager_GetEnumerationAt(0), choice);
}

TEST_F(RegistriesTest, TypesAreAddedByTheirClass) {
    OviTemplate* clone = CloneOf(Make("Foo"));
    OviNamedObject_SetName(clone, "Bar");
    EXPECT_EQ(OviTemplateManager_AddType(clone), 0);
    EXPECT_EQ(OviTemplateManager_GetTemplate("Bar"), clone);
    EXPECT_EQ(OviTemplateManager_GetTypeCount(), 14);
    EXPECT_EQ(OviTemplateManager_RemoveType(clone), 0);
    OviObject_Delete(clone);
    OviEnumeration* choice = CloneOf(Enumeration("Choice"));
    OviNamedObject_SetName(choice, "Another");
    EXPECT_EQ(OviTemplateManager_AddType(choice), 0);
    EXPECT_EQ(OviTemplateManager_GetEnumerationAt(0), choice);
    EXPECT_EQ(OviTemplateManager_RemoveType(choice), 0);
    EXPECT_EQ(OviTemplateManager_RemoveEnumeration(choice), ~0);
    OviObject_Delete(choice);
}

TEST_F(RegistriesTest, EnumerationsHaveARegistryOfTheirOwn) {
    OviEnumeration* b = Enumeration("B");
    OviEnumeration* a = Enumeration("A");
    EXPECT_EQ(OviTemplateManager_GetEnumerationCount(), 2);
    EXPECT_EQ(OviTemplateManager_GetEnumerationAt(0), a);
    EXPECT_EQ(OviTemplateManager_GetEnumerationAt(1), b);
    EXPECT_EQ(OviTemplateManager_GetEnumerationAt(2), nullptr);
    EXPECT_EQ(OviTemplateManager_GetType("A"), nullptr);
    OviEnumeration* twin = CloneOf(a);
    EXPECT_EQ(OviTemplateManager_AddEnumeration(twin), ~0);
    EXPECT_EQ(OviTemplateManager_GetEnumeration("A"), twin);
    EXPECT_EQ(OviTemplateManager_RemoveEnumeration(twin), 0);
    EXPECT_EQ(OviTemplateManager_GetEnumeration("A"), nullptr);
    OviObject_Delete(twin);
    EXPECT_EQ(OviTemplateManager_AddEnumeration(nullptr), -1);
    EXPECT_EQ(OviTemplateManager_RemoveEnumeration(nullptr), -1);
}

TEST_F(RegistriesTest, NamesResolveAsPlainTypeThenEnumerationThenTemplate) {
    OviTemplate* asTemplate = Make("Thing");
    OviTemplate* second = OviTemplateManager_CreateTemplateVersion("Thing", 2);
    EXPECT_EQ(OviTemplateManager_ResolveType("Thing"), second);
    OviEnumeration* asEnumeration = Enumeration("Thing");
    EXPECT_EQ(OviTemplateManager_ResolveType("Thing"), asEnumeration);
    OviType* asType = Custom("Thing");
    EXPECT_EQ(OviTemplateManager_ResolveType("Thing"), asType);
    for (const char* name :
         {"thing", "pkg.Thing", "Thing#1", "", static_cast<const char*>(nullptr)})
        EXPECT_EQ(OviTemplateManager_ResolveType(name), nullptr);
    EXPECT_EQ(OviTemplateManager_GetTemplateVersion("Thing", 1), asTemplate);
}

// -- by file --------------------------------------------------------------------------------------

TEST_F(RegistriesTest, DefinitionsOfAFileAreFoundWhateverItsCase) {
    OviEnumeration* choice = Enumeration("Choice");
    OviType_SetFileName(choice, "a.TEMPLATE");
    for (const char* name : {"Z", "B"})
        OviType_SetFileName(Make(name), "A.template");
    Custom("Y", nullptr, "a.template");
    Custom("A", nullptr, "other.template");
    EXPECT_EQ(TypesOf("A.Template"), (Names{"Y", "B", "Z", "Choice"}));
    EXPECT_EQ(OviTemplateManager_GetTypesByFileName("a.template", nullptr, 0), 4);
    OviType* found[2] = {};
    EXPECT_EQ(OviTemplateManager_GetTypesByFileName("a.template", found, 1), 4);
    EXPECT_STREQ(OviType_GetFullName(found[0]), "Y");
    EXPECT_EQ(found[1], nullptr);
    EXPECT_EQ(OviTemplateManager_GetTypesByFileName("none", found, 2), 0);
    EXPECT_EQ(OviTemplateManager_GetTypesByFileName("", nullptr, 0), 15) << "built in";
    EXPECT_EQ(OviTemplateManager_GetTypesByFileName(nullptr, nullptr, 0), 15);
}

TEST_F(RegistriesTest, AMovedTypeBelongsToItsNewFile) {
    OviType* color = Custom("Color", nullptr, "a.template");
    OviType_SetFileName(color, "b.template");
    EXPECT_EQ(TypesOf("a.template"), Names{});
    EXPECT_EQ(TypesOf("b.template"), Names{"Color"});
    OviType_SetSearchPath(color, "C:\\types");
    EXPECT_EQ(TypesOf("c:\\TYPES\\B.template"), Names{"Color"});
    OviTemplateManager_RemoveType(color);
    EXPECT_EQ(TypesOf("c:\\TYPES\\B.template"), Names{});
    OviObject_Delete(color);
}

TEST_F(RegistriesTest, AFileCountsAsLoadedUntilItsLastDefinitionLeaves) {
    const std::string text = "<templates><template name=\"A\"/><type name=\"T\" type=\"INT32\"/>"
                             "<enum name=\"E\" type=\"INT32\"/></templates>";
    const std::string file = WriteSchema("x.template", text);
    ASSERT_TRUE(OviTemplateManager_LoadTemplateFile(file.c_str()));
    WriteSchema("x.template", "<templates><template name=\"New\"/></templates>");
    OviTemplate* a = OviTemplateManager_GetTemplate("A");
    OviType* t = OviTemplateManager_GetType("T");
    OviEnumeration* e = OviTemplateManager_GetEnumeration("E");
    OviTemplateManager_RemoveTemplate(a);
    OviTemplateManager_RemoveType(t);
    EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(file.c_str()));
    EXPECT_EQ(OviTemplateManager_GetTemplate("New"), nullptr) << "not read again yet";
    OviTemplateManager_RemoveEnumeration(e);
    EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(file.c_str()));
    EXPECT_NE(OviTemplateManager_GetTemplate("New"), nullptr);
    for (OviType* type : {static_cast<OviType*>(a), t, static_cast<OviType*>(e)})
        OviObject_Delete(type);
}

TEST_F(RegistriesTest, AFileIsForgottenWhenItsTypesMoveAway) {
    const std::string file =
        WriteSchema("x.template", "<templates><template name=\"A\"/></templates>");
    ASSERT_TRUE(OviTemplateManager_LoadTemplateFile(file.c_str()));
    WriteSchema("x.template", "<templates><template name=\"New\"/></templates>");
    const std::string other = WriteSchema("y.template", "");
    OviType_SetFileName(OviTemplateManager_GetTemplate("A"), other.c_str());
    EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(other.c_str())) << "counts as loaded";
    EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(file.c_str()));
    EXPECT_NE(OviTemplateManager_GetTemplate("New"), nullptr);
}

// -- circles and odd orders of deletion -----------------------------------------------------------

TEST_F(RegistriesTest, CustomTypesInACircleHaveNoValuesAndGoWithTheManager) {
    OviType* a = Custom("A");
    OviType* b = Custom("B", a);
    OviType* c = Custom("C", b);
    OviType* self = Custom("Self");
    OviType_SetBaseType(a, c);
    OviType_SetBaseType(self, self);
    for (OviType* type : {a, b, c, self}) {
        EXPECT_EQ(OviType_GetValueSize(type, nullptr, 1), 0);
        EXPECT_EQ(OviType_NewValue(type, nullptr, 1), nullptr);
        EXPECT_EQ(OviType_CompareValues(type, "a", "b", 1), 0);
    }
    AddAttribute(Make("Holder"), "a", a);
}

TEST_F(RegistriesTest, EnumerationsMayStandInCirclesWithCustomTypes) {
    OviEnumeration* choice = Enumeration("Choice", "<item name=\"One\" value=\"1\"/>");
    OviType* alias = Custom("Alias", choice);
    OviType_SetBaseType(choice, alias);
    EXPECT_EQ(OviType_GetValueSize(choice, nullptr, 1), 0);
    EXPECT_EQ(OviType_GetValueSize(alias, nullptr, 1), 0);
    OviEnumeration* self = Enumeration("Self", "<item name=\"One\" value=\"1\"/>");
    OviType_SetBaseType(self, self);
    EXPECT_EQ(OviType_NewValue(self, nullptr, 1), nullptr);
}

TEST_F(RegistriesTest, ATypeOverATemplateIsATemplateOfItsOwn) {
    const std::string file =
        WriteSchema("a.template", "<templates package='pkg'><template name='A'>"
                                  "<attribute name='x' type='INT32'/></template>"
                                  "<type name='B' type='A' dim='0'/></templates>");
    ASSERT_TRUE(OviTemplateManager_LoadTemplateFile(file.c_str()));
    OviTemplate* a = OviTemplateManager_GetTemplate("pkg.A");
    OviTemplate* b = OviTemplateManager_GetTemplate("pkg.B");
    ASSERT_NE(b, nullptr);
    EXPECT_EQ(OviType_GetBaseType(b), a);
    EXPECT_EQ(ChildrenOf(OviTemplateManager_GetRoot()), (Names{"pkg.A#1", "pkg.B#1"}));
    EXPECT_NE(OviTemplate_GetProperty(b, "x"), OviTemplate_GetProperty(a, "x"));
    EXPECT_STREQ(OviType_GetFileName(b), file.c_str());
    EXPECT_TRUE(OviTemplateManager_UnloadTemplateFile(file.c_str()));
    EXPECT_EQ(Templates(), Names{"Object#1"});
}

TEST_F(RegistriesTest, AnItemDeletedByHandLeavesItsEnumeration) {
    OviEnumeration* choice =
        Enumeration("Choice", "<item name=\"A\" value=\"1\"/><item name=\"B\" value=\"2\"/>"
                              "<item name=\"C\" value=\"3\"/>");
    OviEnumerationItem* a = OviEnumeration_GetItem(choice, "A");
    OviEnumerationItem* b = OviEnumeration_GetItem(choice, "B");
    EXPECT_TRUE(OviNamedObject_SetName(b, "A")); // both stay
    OviObject_Delete(b);
    EXPECT_EQ(OviEnumeration_GetItemCount(choice), 2);
    EXPECT_EQ(OviEnumeration_GetItem(choice, "A"), a);
    OviObject_Delete(a);
    EXPECT_EQ(OviEnumeration_GetItemCount(choice), 1);
}

TEST_F(RegistriesTest, AnItemThatWasTakenOutOutlivesEverything) {
    OviEnumeration* choice = Enumeration("Choice", "<item name=\"A\" value=\"7\"/>");
    OviEnumerationItem* item = OviEnumeration_GetItem(choice, "A");
    EXPECT_EQ(OviEnumeration_RemoveItem(choice, item), 0);
    OviObject_Delete(choice);
    Ovi_Terminate();
    Ovi_Initialize();
    EXPECT_STREQ(OviNamedObject_GetName(item), "A");
    OviObject_Delete(item);
}

} // namespace
