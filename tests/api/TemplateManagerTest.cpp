// The registry of templates, lookups by name, and the manager's life.

#include "api/Schema.h"

namespace {

class TemplateManagerTest : public SchemaTest {
protected:
    static OviTemplate* Find(const char* name) { return OviTemplateManager_GetTemplate(name); }
};

TEST_F(TemplateManagerTest, StartsWithTheRootAlone) {
    EXPECT_EQ(Templates(), Names{"Object#1"});
    OviTemplate* root = OviTemplateManager_GetRoot();
    EXPECT_EQ(OviTemplateManager_GetTemplateAt(0), root);
    EXPECT_EQ(Find("Object"), root);
    EXPECT_EQ(ParentsOf(root), Names{});
    EXPECT_STREQ(OviType_GetFileName(root), "");
}

TEST_F(TemplateManagerTest, CreateGivesANewOrTheExistingTemplate) {
    OviTemplate* made = OviTemplateManager_CreateTemplate("geo.Mesh");
    EXPECT_EQ(OviTemplateManager_CreateTemplate("geo.Mesh"), made);
    EXPECT_EQ(Find("geo.Mesh"), made);
    EXPECT_EQ(Find("Mesh"), nullptr);
    EXPECT_EQ(Find("GEO.MESH"), nullptr);
    EXPECT_EQ(Find("geo.Mesh#1"), nullptr);
    EXPECT_FALSE(OviType_IsRecycled(made));
    OviTemplate* second = OviTemplateManager_CreateTemplateVersion("geo.Mesh", 2);
    EXPECT_EQ(OviTemplateManager_CreateTemplate("geo.Mesh"), second) << "the latest version";
}

TEST_F(TemplateManagerTest, InvalidNamesMakeNoTemplate) {
    for (const char* name :
         {"", ".", ".a", "a.", "a b", "a-b", "a#1", "\xe4", static_cast<const char*>(nullptr)})
        EXPECT_EQ(OviTemplateManager_CreateTemplate(name), nullptr);
    EXPECT_EQ(Templates(), Names{"Object#1"});
    EXPECT_NE(OviTemplateManager_CreateTemplate("3D._x"), nullptr);
    EXPECT_EQ(Templates(), (Names{"3D._x#1", "Object#1"}));
}

TEST_F(TemplateManagerTest, TemplatesStandInByteOrderOfTheirKeys) {
    for (const char* name : {"b", "B", "a.c", "a", "Foo", "Foo2", "FooA"})
        Make(name);
    for (const int version : {2, 10, 100})
        OviTemplateManager_CreateTemplateVersion("Foo", version);
    EXPECT_EQ(Templates(), (Names{"B#1", "Foo#1", "Foo#10", "Foo#100", "Foo#2", "Foo2#1", "FooA#1",
                                  "Object#1", "a#1", "a.c#1", "b#1"}));
    EXPECT_EQ(OviTemplateManager_GetTemplateCount(), 11);
    EXPECT_EQ(OviTemplateManager_GetTemplateAt(-1), nullptr);
    EXPECT_EQ(OviTemplateManager_GetTemplateAt(11), nullptr);
}

TEST_F(TemplateManagerTest, AVersionIsFoundByNameAndNumber) {
    OviTemplate* first = Make("Foo");
    OviTemplate* third = OviTemplateManager_CreateTemplateVersion("Foo", 3);
    EXPECT_EQ(OviTemplateManager_GetTemplateVersion("Foo", 1), first);
    EXPECT_EQ(OviTemplateManager_GetTemplateVersion("Foo", 3), third);
    for (const unsigned version : {0U, 2U, 4U, 4294967295U})
        EXPECT_EQ(OviTemplateManager_GetTemplateVersion("Foo", version), nullptr) << version;
    EXPECT_EQ(OviTemplateManager_GetTemplateVersion(nullptr, 1), nullptr);
}

TEST_F(TemplateManagerTest, AnAddedTemplateWithoutParentsGetsTheRoot) {
    OviTemplate* root = OviTemplateManager_GetRoot();
    OviTemplate* free = CloneOf(Make("Foo"));
    OviTemplate_RemoveParent(free, root);
    OviNamedObject_SetName(free, "Bar");
    EXPECT_EQ(ParentsOf(free), Names{});
    EXPECT_EQ(OviTemplateManager_AddTemplate(free), 0);
    EXPECT_EQ(ParentsOf(free), Names{"Object#1"});
    OviTemplate* heir = CloneOf(Make("Heir", {free}));
    OviNamedObject_SetName(heir, "Heir2");
    EXPECT_EQ(OviTemplateManager_AddTemplate(heir), 3);
    EXPECT_EQ(ParentsOf(heir), Names{"Bar#1"});
}

TEST_F(TemplateManagerTest, ATemplateOfATakenKeyReplacesTheOtherWhichLivesOn) {
    OviTemplate* first = Make("Foo");
    OviTemplate* second = CloneOf(first);
    OviTemplate_RemoveParent(second, OviTemplateManager_GetRoot());
    EXPECT_EQ(OviTemplateManager_AddTemplate(second), ~0);
    EXPECT_EQ(Find("Foo"), second);
    EXPECT_EQ(ParentsOf(second), Names{}) << "parents are left as they were";
    EXPECT_STREQ(OviType_GetFullName(first), "Foo");
    EXPECT_EQ(OviTemplateManager_AddTemplate(second), ~0);
    OviTemplate* third = CloneOf(second);
    OviTemplateManager_AddTemplate(third);
    OviObject_Delete(second); // one by hand, the other goes with the manager
    EXPECT_EQ(Find("Foo"), third);
    EXPECT_EQ(OviTemplateManager_AddTemplate(first), ~0);
    EXPECT_EQ(Find("Foo"), first);
}

TEST_F(TemplateManagerTest, ARemovedTemplateBelongsToTheCaller) {
    OviTemplate* a = Make("A");
    OviTemplate* heir = Make("Heir", {a});
    EXPECT_EQ(OviTemplateManager_RemoveTemplate(a), 0);
    EXPECT_EQ(OviTemplateManager_RemoveTemplate(a), ~0);
    EXPECT_EQ(Find("A"), nullptr);
    EXPECT_EQ(ParentsOf(heir), Names{"A#1"}) << "links stay";
    EXPECT_EQ(OviTemplateManager_AddTemplate(a), 0);
    EXPECT_EQ(Find("A"), a);
    OviTemplateManager_RemoveTemplate(a);
    OviObject_Delete(a);
    EXPECT_EQ(ParentsOf(heir), Names{"Object#1"});
}

TEST_F(TemplateManagerTest, RemovalGoesByKey) {
    OviTemplate* a = Make("A");
    OviTemplate* twin = CloneOf(a);
    EXPECT_EQ(OviTemplateManager_RemoveTemplate(twin), 0);
    EXPECT_EQ(Find("A"), nullptr);
    OviObject_Delete(twin);
    OviObject_Delete(a);
}

TEST_F(TemplateManagerTest, BothStayWhenARenamedTemplateMeetsAnother) {
    OviTemplate* a = Make("A");
    OviTemplate* b = Make("B");
    EXPECT_TRUE(OviNamedObject_SetName(b, "A"));
    EXPECT_EQ(Templates(), (Names{"A#1", "A#1", "Object#1"}));
    EXPECT_EQ(Find("A"), a);
    EXPECT_EQ(ChildrenOf(OviTemplateManager_GetRoot()), (Names{"A#1", "A#1"}));
    OviObject_Delete(b);
    EXPECT_EQ(Find("A"), a);
    EXPECT_EQ(Templates(), (Names{"A#1", "Object#1"}));
}

TEST_F(TemplateManagerTest, ATemplateAddedAgainBesideItsNamesakeIsListedOnce) {
    OviTemplate* a = Make("A");
    OviTemplate* b = Make("B");
    OviNamedObject_SetName(b, "A");
    EXPECT_EQ(OviTemplateManager_AddType(b), ~1);
    EXPECT_EQ(Templates(), (Names{"A#1", "A#1", "Object#1"}));
    EXPECT_EQ(OviTemplateManager_GetTemplateAt(0), a);
    EXPECT_EQ(OviTemplateManager_GetTemplateAt(1), b);
    OviObject_Delete(a);
    EXPECT_EQ(Find("A"), b);
    Ovi_Terminate(); // which must not delete one of them twice
    Ovi_Initialize();
}

TEST_F(TemplateManagerTest, TheRootMayBeRenamed) {
    OviTemplate* root = OviTemplateManager_GetRoot();
    OviTemplate* child = Make("Child");
    OviNamedObject_SetName(root, "Wurzel");
    EXPECT_EQ(Find("Wurzel"), root);
    EXPECT_EQ(ParentsOf(child), Names{"Wurzel#1"});
    EXPECT_EQ(OviTemplateManager_GetRoot(), root);
    EXPECT_EQ(ParentsOf(Make("Other")), Names{"Wurzel#1"});
}

TEST_F(TemplateManagerTest, TheRootMayLoseItsPlaceAndMayGetParents) {
    OviTemplate* root = OviTemplateManager_GetRoot();
    OviTemplate* twin = CloneOf(root);
    EXPECT_EQ(OviTemplateManager_RemoveTemplate(twin), -1) << "that would take out the root";
    EXPECT_EQ(OviTemplateManager_RemoveType(twin), -1);
    EXPECT_EQ(Find("Object"), root);
    EXPECT_EQ(OviTemplateManager_AddTemplate(twin), ~0);
    EXPECT_EQ(OviTemplateManager_GetRoot(), root);
    EXPECT_EQ(Find("Object"), twin);
    OviObject_Delete(twin);
    OviTemplate* above = Make("Above");
    OviTemplate_RemoveParent(above, root);
    EXPECT_EQ(OviTemplate_AddParent(root, above), 0);
    EXPECT_EQ(OviTemplate_AddParent(above, Make("Below")), -1);
    OviObject_Delete(above);
    EXPECT_EQ(ParentsOf(root), Names{});
}

// -- properties by their full names ---------------------------------------------------------------

TEST_F(TemplateManagerTest, APropertyIsFoundByTemplateVersionAndName) {
    OviProperty* inherited = AddAttribute(Make("Base"), "base");
    OviTemplate* first = Make("Foo", {Make("Base")});
    OviProperty* old = AddAttribute(first, "bar");
    OviProperty* packaged = AddAttribute(Make("pkg.Foo"), "bar");
    OviTemplate* second = OviTemplateManager_CreateTemplateVersion("Foo", 2);
    OviProperty* copy = OviTemplate_GetProperty(second, "bar");
    const std::pair<const char*, OviProperty*> cases[] = {
        {"Foo.bar", copy},
        {"Foo#2.bar", copy},
        {"Foo#1.bar", old},
        {"Foo#01.bar", old},
        {"Foo#1x.bar", old},
        {"Foo.base", inherited},
        {"Foo#1.base", inherited},
        {"pkg.Foo#1.bar", packaged},
        // Without a version the first dot ends the template's name.
        {"pkg.Foo.bar", nullptr},
        {"Foo#2", nullptr},
        {"Foo#3.bar", nullptr},
        {"Foo#x.bar", nullptr},
        {"Foo#.bar", nullptr},
        {"Foo", nullptr},
        {"Foo.", nullptr},
        {".bar", nullptr},
        {"", nullptr},
        {"foo.bar", nullptr},
        {"Foo.Bar", nullptr},
        {"Foo.a.b", nullptr},
        {"Foo#-1.bar", nullptr},
        {"Foo#1#2.bar", old},
        {nullptr, nullptr}};
    for (const auto& [name, expected] : cases)
        EXPECT_EQ(OviTemplateManager_GetProperty(name), expected) << (name ? name : "null");
}

// -- life -----------------------------------------------------------------------------------------

TEST_F(TemplateManagerTest, EveryInitializeNeedsATerminate) {
    Make("Foo");
    Ovi_Initialize();
    Ovi_Terminate();
    EXPECT_NE(Find("Foo"), nullptr);
    Ovi_Terminate();
    EXPECT_EQ(Templates(), Names{"Object#1"});
    EXPECT_EQ(OviTemplateManager_GetTypeCount(), 14);
    Ovi_Initialize();
    EXPECT_EQ(Templates(), Names{"Object#1"});
}

TEST_F(TemplateManagerTest, IsThereBeforeTheLibraryIsInitialised) {
    Ovi_Terminate();
    OviTemplate* early = Make("Early");
    Ovi_Initialize();
    EXPECT_EQ(Find("Early"), early);
}

TEST_F(TemplateManagerTest, EverythingTheManagerOwnsGoesWithIt) {
    OviTemplate* base = Make("Base");
    OviTemplate* heir = Make("Heir", {base, Make("Other")});
    AddAttribute(heir, "text", TypeNamed("STRING"));
    AddAttribute(heir, "base", base);
    OviTemplateManager_CreateTemplateVersion("Heir", 2);
    OviTemplateManager_CreateTemplateVersion("Heir", 3);
    OviTemplate_CreateView(heir, "Main");
    OviInstance* survivor = OviInstance_New("Survivor");
    OviInstance_AddTemplate(survivor, heir);
    Ovi_Terminate();
    // What a host still holds keeps the schema it needs.
    EXPECT_EQ(Describe(OviInstance_GetTemplateAt(survivor, 0)), "Heir#1");
    EXPECT_NE(OviInstance_GetPropertyInstance(survivor, "Heir.text", false), nullptr);
    OviObject_Delete(survivor);
    Ovi_Initialize();
    EXPECT_EQ(Templates(), Names{"Object#1"});
}

} // namespace
