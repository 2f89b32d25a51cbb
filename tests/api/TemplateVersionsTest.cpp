// Versions of templates: copies, their owners, and what is added from a version on.

#include "api/Schema.h"

namespace {

class TemplateVersionsTest : public SchemaTest {
protected:
    static OviTemplate* Version(const char* name, int version) {
        return OviTemplateManager_CreateTemplateVersion(name, version);
    }

    static std::vector<int> LatestVersions(std::initializer_list<OviTemplate*> versions) {
        std::vector<int> latest;
        for (OviTemplate* version : versions)
            latest.push_back(OviTemplate_GetLatestVersion(version));
        return latest;
    }
};

TEST_F(TemplateVersionsTest, AMissingVersionIsACopyOfTheNearestLowerOne) {
    OviTemplate* first = Make("Foo", {Make("A")});
    AddAttribute(first, "x");
    OviTemplate* fifth = Version("Foo", 5);
    ASSERT_NE(fifth, nullptr);
    OviTemplate_AddParent(fifth, Make("B"));
    OviTemplate* seventh = Version("Foo", 7);
    EXPECT_EQ(OviTemplate_GetVersion(seventh), 7);
    EXPECT_EQ(ParentsOf(seventh), (Names{"A#1", "B#1"}));
    EXPECT_EQ(ParentsOf(Version("Foo", 3)), Names{"A#1"});
    EXPECT_EQ(Version("Foo", 7), seventh);
    EXPECT_EQ(Templates(), (Names{"A#1", "B#1", "Foo#1", "Foo#3", "Foo#5", "Foo#7", "Object#1"}));
}

TEST_F(TemplateVersionsTest, VersionOneIsNeverMade) {
    EXPECT_EQ(Version("Foo", 1), nullptr);
    EXPECT_EQ(Version("Foo", 2), nullptr);
    OviTemplate* first = Make("Foo");
    EXPECT_EQ(Version("Foo", 1), first);
    for (const int version : {0, -1, -2147483647 - 1})
        EXPECT_EQ(Version("Foo", version), nullptr) << version;
    EXPECT_EQ(OviTemplateManager_CreateTemplateVersion(nullptr, 2), nullptr);
    EXPECT_EQ(OviTemplate_GetVersion(Version("Foo", 2147483647)), 2147483647);
}

TEST_F(TemplateVersionsTest, AllVersionsKnowTheLatestOne) {
    OviTemplate* first = Make("Foo");
    OviTemplate* third = Version("Foo", 3);
    EXPECT_EQ(LatestVersions({first, third}), (std::vector<int>{3, 3}));
    OviTemplate* second = Version("Foo", 2);
    EXPECT_EQ(LatestVersions({first, second, third}), (std::vector<int>{3, 3, 3}));
    OviTemplate* tenth = Version("Foo", 10);
    EXPECT_EQ(LatestVersions({first, second, third, tenth}), (std::vector<int>{10, 10, 10, 10}));
}

TEST_F(TemplateVersionsTest, NeighboursInNameOrderAreNotVersions) {
    OviTemplate* first = Make("Foo");
    OviTemplate* longer = Make("Foo2");
    OviTemplate* packaged = Make("Foo.Bar");
    Version("Foo", 2);
    EXPECT_EQ(LatestVersions({first, longer, packaged}), (std::vector<int>{2, 1, 1}));
}

TEST_F(TemplateVersionsTest, EveryVersionIsAChildOfItsParentsUnderItsOwnKey) {
    OviTemplate* base = Make("Base");
    Make("Foo", {base});
    Version("Foo", 2);
    Version("Foo", 10);
    EXPECT_EQ(ChildrenOf(base), (Names{"Foo#1", "Foo#10", "Foo#2"}));
    EXPECT_EQ(OviTemplate_GetChild(base, "Foo#1"), OviTemplateManager_GetTemplateVersion("Foo", 1));
}

TEST_F(TemplateVersionsTest, ANewVersionOfTheRootHasNoParent) {
    OviTemplate* root = OviTemplateManager_GetRoot();
    OviTemplate* second = Version("Object", 2);
    EXPECT_EQ(ParentsOf(second), Names{});
    EXPECT_EQ(OviTemplateManager_GetRoot(), root);
    EXPECT_EQ(ParentsOf(Make("Foo")), Names{"Object#1"});
    EXPECT_EQ(OviTemplateManager_GetTemplate("Object"), second);
}

TEST_F(TemplateVersionsTest, CopiesOfPropertiesStandInNameOrder) {
    OviTemplate* first = Make("Foo");
    for (const char* name : {"z", "a", "m"})
        AddAttribute(first, name);
    OviTemplate* second = Version("Foo", 2);
    EXPECT_EQ(PropertiesAsDeclared(second), (Names{"Foo.a", "Foo.m", "Foo.z"}));
    EXPECT_EQ(PropertiesAsDeclared(first), (Names{"Foo.z", "Foo.a", "Foo.m"}));
    for (const char* name : {"z", "a", "m"})
        EXPECT_NE(OviTemplate_GetProperty(second, name), OviTemplate_GetProperty(first, name));
}

TEST_F(TemplateVersionsTest, OlderDefinitionsAreNotCopied) {
    OviTemplate* first = Make("Foo");
    AddAttribute(first, "x");
    OviTemplate* second = Version("Foo", 2);
    AddAttribute(second, "x", TypeNamed("STRING"));
    EXPECT_EQ(PropertiesAsDeclared(second).size(), 2U);
    OviTemplate* third = Version("Foo", 3);
    EXPECT_EQ(PropertiesAsDeclared(third), Names{"Foo.x"});
    auto* copy = static_cast<OviAttributeProperty*>(OviTemplate_GetProperty(third, "x"));
    EXPECT_EQ(OviAttributeProperty_GetType(copy), TypeNamed("STRING"));
}

TEST_F(TemplateVersionsTest, TextsAreCopiedAndViewsAndChildrenAreNot) {
    OviTemplate* first = Make("Foo");
    OviNamedObject_SetComment(first, "about foo");
    OviNamedObject_SetLabel(first, "de", "Fu");
    OviType_SetFileName(first, "foo.template");
    OviTemplate_CreateView(first, "Main");
    Make("Heir", {first});
    OviTemplate* second = Version("Foo", 2);
    EXPECT_STREQ(OviNamedObject_GetComment(second), "about foo");
    EXPECT_STREQ(OviNamedObject_GetLabel(second, "de"), "Fu");
    EXPECT_STREQ(OviType_GetFileName(second), "foo.template");
    EXPECT_EQ(OviTemplate_GetViewCount(second), 0);
    EXPECT_EQ(ChildrenOf(second), Names{});
}

TEST_F(TemplateVersionsTest, ACloneHasItsSourcesKeyAndBelongsToTheCaller) {
    OviTemplate* first = Make("geo.Foo", {Make("A")});
    AddAttribute(first, "x");
    Version("geo.Foo", 2);
    OviTemplate* clone = CloneOf(first);
    EXPECT_EQ(OviObject_GetClass(clone), OVI_CLASS_TEMPLATE);
    EXPECT_STREQ(OviType_GetFullName(clone), "geo.Foo");
    EXPECT_EQ(OviTemplate_GetVersion(clone), 1);
    EXPECT_EQ(OviTemplate_GetLatestVersion(clone), 2);
    EXPECT_EQ(ParentsOf(clone), Names{"A#1"});
    EXPECT_EQ(OviTemplateManager_GetTemplateVersion("geo.Foo", 1), first);
    OviProperty* copy = OviTemplate_GetProperty(clone, "x");
    EXPECT_EQ(OviProperty_GetTemplate(copy), clone);
    OviObject_Delete(clone);
    EXPECT_EQ(OviProperty_GetTemplate(OviTemplate_GetProperty(first, "x")), first);
}

// A copy is made while it has its source's version, so that it takes over what its source owns.
TEST_F(TemplateVersionsTest, ACopyOwnsTheCopiesOfWhatItsSourceIntroduced) {
    AddAttribute(Make("Foo"), "x");
    OviTemplate* second = Version("Foo", 2);
    OviProperty* copy = OviTemplate_GetProperty(second, "x");
    EXPECT_EQ(OviProperty_GetTemplate(copy), second);
    EXPECT_STREQ(OviProperty_GetFullName(copy), "Foo.x");
    OviProperty* copyOfCopy = OviTemplate_GetProperty(Version("Foo", 3), "x");
    EXPECT_EQ(OviProperty_GetTemplate(copyOfCopy), nullptr);
    EXPECT_STREQ(OviProperty_GetFullName(copyOfCopy), "Foo.x");
}

TEST_F(TemplateVersionsTest, OnlyTheFirstVersionMakesATemplateKnown) {
    OviTemplate* first = Make("Foo");
    OviTemplate* third = Version("Foo", 3);
    EXPECT_EQ(OviTemplateManager_GetTemplate("Foo"), third);
    OviTemplateManager_RemoveTemplate(first);
    EXPECT_EQ(OviTemplateManager_GetTemplate("Foo"), nullptr);
    EXPECT_EQ(OviTemplateManager_GetTemplateVersion("Foo", 3), third);
    OviObject_Delete(first);
}

TEST_F(TemplateVersionsTest, ALatestVersionThatWasRemovedHidesTheTemplate) {
    OviTemplate* first = Make("Foo");
    OviObject_Delete(Version("Foo", 2));
    EXPECT_EQ(OviTemplate_GetLatestVersion(first), 2);
    EXPECT_EQ(OviTemplateManager_GetTemplate("Foo"), nullptr);
    // A new first version takes the place of the one that is there; neither stays, so that the name
    // is free again.
    EXPECT_EQ(OviTemplateManager_CreateTemplate("Foo"), nullptr);
    EXPECT_EQ(OviTemplateManager_GetTemplateVersion("Foo", 1), nullptr);
    EXPECT_NE(OviTemplateManager_CreateTemplate("Foo"), nullptr);
}

TEST_F(TemplateVersionsTest, ARenamedVersionIsMovedToItsNewKey) {
    OviTemplate* base = Make("Base");
    OviTemplate* first = Make("Foo", {base});
    OviTemplate* second = Version("Foo", 2);
    OviTemplate* heir = Make("Heir", {second, Make("Middle")});
    EXPECT_TRUE(OviNamedObject_SetName(second, "pkg.Zoo"));
    EXPECT_EQ(OviTemplateManager_GetTemplateVersion("pkg.Zoo", 2), second);
    EXPECT_EQ(OviTemplateManager_GetTemplateVersion("Foo", 2), nullptr);
    EXPECT_EQ(ChildrenOf(base), (Names{"Foo#1", "pkg.Zoo#2"}));
    EXPECT_EQ(ParentsOf(heir), (Names{"Middle#1", "pkg.Zoo#2"}));
    OviType_SetPackageName(second, "");
    EXPECT_EQ(OviTemplateManager_GetTemplateVersion("Zoo", 2), second);
    EXPECT_EQ(OviTemplate_GetParent(heir, "Zoo#2"), second);
    EXPECT_FALSE(OviNamedObject_SetName(second, "no.good.name!"));
    EXPECT_EQ(OviTemplateManager_GetTemplateVersion("Zoo", 2), second);
    EXPECT_EQ(OviTemplateManager_RemoveTemplate(second), 5);
    EXPECT_EQ(OviTemplateManager_GetTemplateVersion("Foo", 1), first);
    OviObject_Delete(second);
}

// -- properties and parents from a version on, as a file adds them --------------------------------

class VersionsInFilesTest : public TemplateVersionsTest {
protected:
    void Load(const std::string& members) {
        const std::string file =
            WriteSchema("Foo.template", "<templates><template name=\"A\"/>"
                                        "<template name=\"Foo\">" +
                                            members + "</template></templates>");
        EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(file.c_str()));
        EXPECT_EQ(Errors(), Names{});
    }

    static std::string Attribute(const char* name, int version) {
        return std::string("<attribute name=\"") + name + "\" type=\"INT32\" version=\"" +
               std::to_string(version) + "\"/>";
    }
};

TEST_F(VersionsInFilesTest, APropertyIsListedInItsVersionAndAllLaterOnes) {
    Load(Attribute("a", 3) + Attribute("b", 1) + Attribute("c", 2));
    OviTemplate* first = OviTemplateManager_GetTemplateVersion("Foo", 1);
    OviTemplate* second = OviTemplateManager_GetTemplateVersion("Foo", 2);
    OviTemplate* third = OviTemplateManager_GetTemplateVersion("Foo", 3);
    EXPECT_EQ(PropertiesByName(first), Names{"Foo.b"});
    EXPECT_EQ(PropertiesByName(second), (Names{"Foo.b", "Foo.c"}));
    EXPECT_EQ(PropertiesAsDeclared(third), (Names{"Foo.a", "Foo.b", "Foo.c"}));
    EXPECT_EQ(OviTemplate_GetProperty(third, "c"), OviTemplate_GetProperty(second, "c"));
    EXPECT_EQ(OviProperty_GetTemplate(OviTemplate_GetProperty(third, "c")), second);
    EXPECT_EQ(OviProperty_GetTemplate(OviTemplate_GetProperty(third, "a")), third);
}

TEST_F(VersionsInFilesTest, APropertyTakenOutOfALaterVersionStaysThatOfTheLowerOne) {
    Load(Attribute("z", 3) + Attribute("y", 2));
    OviTemplate* second = OviTemplateManager_GetTemplateVersion("Foo", 2);
    OviTemplate* third = OviTemplateManager_GetTemplateVersion("Foo", 3);
    OviProperty* shared = OviTemplate_GetProperty(second, "y");
    EXPECT_EQ(OviTemplate_RemoveProperty(third, shared), 1);
    EXPECT_EQ(PropertiesByName(third), Names{"Foo.z"});
    OviObject_Delete(third);
    EXPECT_EQ(OviTemplate_GetProperty(second, "y"), shared);
    EXPECT_EQ(OviProperty_GetTemplate(shared), second);
}

TEST_F(VersionsInFilesTest, APropertyStopsAtTheFirstLaterVersionThatRedefinesIt) {
    Load(Attribute("x", 3) + Attribute("y", 4) + Attribute("x", 1));
    OviProperty* first =
        OviTemplate_GetProperty(OviTemplateManager_GetTemplateVersion("Foo", 1), "x");
    OviProperty* third =
        OviTemplate_GetProperty(OviTemplateManager_GetTemplateVersion("Foo", 3), "x");
    EXPECT_NE(first, third);
    EXPECT_EQ(OviProperty_GetTemplate(third), OviTemplateManager_GetTemplateVersion("Foo", 3));
    OviTemplate* fourth = OviTemplateManager_GetTemplateVersion("Foo", 4);
    EXPECT_EQ(PropertiesByName(fourth), (Names{"Foo.x", "Foo.y"}));
}

TEST_F(VersionsInFilesTest, AParentIsAddedToItsVersionAndAllLaterOnes) {
    Load("<extends template=\"Object\" version=\"3\"/><extends template=\"A\" version=\"2\"/>");
    EXPECT_EQ(ParentsOf(OviTemplateManager_GetTemplateVersion("Foo", 1)), Names{"Object#1"});
    EXPECT_EQ(ParentsOf(OviTemplateManager_GetTemplateVersion("Foo", 2)), Names{"A#1"});
    EXPECT_EQ(ParentsOf(OviTemplateManager_GetTemplateVersion("Foo", 3)), Names{"A#1"});
}

TEST_F(VersionsInFilesTest, TheVersionsCanBeDeletedInAnyOrder) {
    for (const auto& order : std::vector<std::vector<unsigned>>{{1, 2, 3}, {3, 2, 1}, {2, 1, 3}}) {
        Load(Attribute("x", 1) + Attribute("x", 2) + Attribute("y", 1) + Attribute("z", 3));
        for (const unsigned version : order)
            OviObject_Delete(OviTemplateManager_GetTemplateVersion("Foo", version));
        OviObject_Delete(OviTemplateManager_GetTemplate("A"));
        EXPECT_EQ(Templates(), Names{"Object#1"});
        OviTemplateManager_UnloadTemplateFile(PathOf("Foo.template").c_str());
    }
}

} // namespace
