// Loading and unloading single template files, and what stays because something needs it.

#include "api/UnloadHost.h"
#include "support/NotOnWindows.h"

namespace {

class UnloadTemplateFileTest : public UnloadHost {};

TEST_F(UnloadTemplateFileTest, AllThatTheFileDefinedGoes) {
    const std::string file = Load("a.template", "<type name='T' type='INT32'/>"
                                                "<enum name='E' type='INT32'><item name='I' "
                                                "value='1'/></enum><template name='A'>"
                                                "<attribute name='e' type='E' version='2'/>"
                                                "<attribute name='t' type='T' version='3'/>"
                                                "</template><template name='B'>"
                                                "<extends template='A'/></template>");
    Make("Stays");
    EXPECT_TRUE(Unload(file));
    EXPECT_EQ(Templates(), (Names{"Object#1", "Stays#1"}));
    EXPECT_EQ(OviTemplateManager_GetTypeCount(), 14);
    EXPECT_EQ(OviTemplateManager_GetEnumerationCount(), 0);
    EXPECT_FALSE(Unload(file));
}

TEST_F(UnloadTemplateFileTest, AFileIsReadOnceUntilItIsUnloaded) {
    const std::string file = Load("a.template", kOne);
    WriteSchema("a.template", "<templates><template name='Two'/></templates>");
    EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(file.c_str()));
    EXPECT_EQ(Templates(), (Names{"Object#1", "One#1"}));
    EXPECT_TRUE(Unload(file));
    EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(file.c_str()));
    EXPECT_EQ(Templates(), (Names{"Object#1", "Two#1"}));
}

TEST_F(UnloadTemplateFileTest, TheCaseOfThePathDoesNotMatter) {
    std::string file = Load("a.template", kOne);
    file.replace(file.rfind("a.template"), 10, "A.TEMPLATE");
    EXPECT_TRUE(Unload(file));
    EXPECT_EQ(Find("One"), nullptr);
    file.replace(file.rfind("A.TEMPLATE"), 10, "a.template");
    EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(file.c_str()));
    EXPECT_NE(Find("One"), nullptr) << "read again";
}

#ifndef _WIN32
TEST_F(UnloadTemplateFileTest, AllSpellingsOfAFileAreForgotten) {
    const std::string lower = Load("a.template", kOne);
    const std::string upper = Load("A.TEMPLATE", "<template name='Two'/>");
    AddAttribute(Make("User"), "one", Find("One"));
    AddAttribute(Make("User"), "two", Find("Two"));
    Unload(lower);
    EXPECT_TRUE(IsRecycled(Find("Two")));
    EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(upper.c_str()));
    EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(lower.c_str()));
    EXPECT_FALSE(IsRecycled(Find("One")));
    EXPECT_FALSE(IsRecycled(Find("Two")));
}
#else
OVI_NOT_ON_WINDOWS(UnloadTemplateFileTest, AllSpellingsOfAFileAreForgotten,
                   "names that differ in case are one file")
#endif

TEST_F(UnloadTemplateFileTest, UnknownFilesAndTheBuiltInTypesAreLeftAlone) {
    for (const char* path : {"", "nothing.template", static_cast<const char*>(nullptr)})
        EXPECT_FALSE(OviTemplateManager_UnloadTemplateFile(path));
    EXPECT_EQ(OviTemplateManager_GetTypeCount(), 14);
    EXPECT_EQ(Templates(), Names{"Object#1"});
}

TEST_F(UnloadTemplateFileTest, AFileThatCannotBeOpenedOrReadIsReported) {
    const std::string missing = PathOf("missing.template");
    EXPECT_FALSE(OviTemplateManager_LoadTemplateFile(missing.c_str()));
    EXPECT_EQ(Errors(), Names{"1 -1 Unable to open file '" + missing + "' for reading"});
    EXPECT_STREQ(OviErrorItem_GetSourceName(OviErrorManager_GetErrorItemAt(0)), missing.c_str());
    OviErrorManager_Clear();
    const std::string faulty = WriteFile("faulty.template", "<templates></templates>");
    EXPECT_FALSE(OviTemplateManager_LoadTemplateFile(faulty.c_str()));
    EXPECT_EQ(Errors(), (Names{"1 1 Invalid XML header element",
                               "1 -1 Unable to open file '" + faulty + "' for reading"}));
    WriteSchema("faulty.template", std::string("<templates>") + kOne + "</templates>");
    EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(faulty.c_str())) << "it does not count as read";
    EXPECT_NE(Find("One"), nullptr);
}

// -- what others need -----------------------------------------------------------------------------

TEST_F(UnloadTemplateFileTest, ATypeOfAPropertyOfAnotherFileStaysRecycled) {
    const std::string types = Load("types.template", "<type name='T' type='INT32'/>"
                                                     "<enum name='E' type='INT32'/>"
                                                     "<template name='A'/>");
    const std::string user = Load("user.template", "<template name='User'>"
                                                   "<attribute name='t' type='T'/>"
                                                   "<attribute name='e' type='E'/>"
                                                   "<attribute name='a' type='A'/></template>");
    EXPECT_FALSE(Unload(types)) << "the type, handled last, stays";
    for (OviType* type : {TypeNamed("T"), TypeNamed("E"), static_cast<OviType*>(Find("A"))})
        EXPECT_TRUE(IsRecycled(type));
    EXPECT_EQ(TypeOf("User.t"), TypeNamed("T"));
    EXPECT_TRUE(Unload(user));
    EXPECT_TRUE(Unload(types)) << "now nobody needs them";
    EXPECT_EQ(TypeNamed("T"), nullptr);
    EXPECT_EQ(TypeNamed("E"), nullptr);
    EXPECT_EQ(Templates(), Names{"Object#1"});
}

TEST_F(UnloadTemplateFileTest, ThePropertiesOfTheFileItselfDoNotCount) {
    const std::string file = Load("a.template", "<type name='T' type='INT32'/><template name='A'>"
                                                "<attribute name='t' type='T'/></template>"
                                                "<template name='B'><attribute name='a' type='A'/>"
                                                "</template>");
    EXPECT_TRUE(Unload(file));
    EXPECT_EQ(Templates(), Names{"Object#1"});
}

TEST_F(UnloadTemplateFileTest, BaseTypesOfOtherFilesStay) {
    const std::string base = Load("base.template", "<type name='Z' type='INT32'/>"
                                                   "<type name='A' type='Z'/>");
    const std::string user = Load("user.template", "<type name='User' type='A'/>");
    OviType* needed = TypeNamed("Z");
    Unload(base);
    EXPECT_TRUE(IsRecycled(TypeNamed("A")));
    EXPECT_EQ(TypeNamed("Z"), nullptr) << "what stands in the same file does not count";
    EXPECT_EQ(OviType_GetBaseType(TypeNamed("A")), needed) << "but lives as long as it is needed";
    EXPECT_FALSE(IsRecycled(needed));
    EXPECT_TRUE(Unload(user));
    EXPECT_TRUE(Unload(base));
    EXPECT_EQ(OviTemplateManager_GetTypeCount(), 14);
}

TEST_F(UnloadTemplateFileTest, AReferencePropertyOfAnotherFileDoesNotCount) {
    const std::string file = Load("a.template", "<template name='A'/><type name='T' type='INT32'/>"
                                                "<enum name='E' type='INT32'/>");
    const std::string user =
        Load("user.template", "<template name='User'><attribute name='a' type='A' "
                              "reference='1'/><attribute name='t' type='T' reference='1' "
                              "default='7'/><attribute name='e' type='E' reference='1'/>"
                              "</template>");
    OviType* const types[] = {TypeOf("User.a"), TypeOf("User.t"), TypeOf("User.e")};
    EXPECT_TRUE(Unload(file)) << "the result is that of a deletion";
    EXPECT_EQ(Templates(), (Names{"Object#1", "User#1"}));
    EXPECT_EQ(TypeNamed("T"), nullptr);
    EXPECT_EQ(TypeNamed("E"), nullptr);
    EXPECT_EQ(TypeOf("User.a"), types[0]);
    EXPECT_STREQ(OviType_GetFullName(types[0]), "A") << "the property goes on using it";
    EXPECT_FALSE(IsRecycled(types[0]));
    auto* t = static_cast<OviAttributeProperty*>(OviTemplateManager_GetProperty("User.t"));
    int value = 5;
    EXPECT_TRUE(OviAttributeProperty_IsValueValid(t, &value));
    EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(file.c_str()));
    EXPECT_NE(Find("A"), types[0]) << "made anew";
    EXPECT_TRUE(Unload(user));
    EXPECT_TRUE(Unload(file));
    EXPECT_EQ(Templates(), Names{"Object#1"});
}

TEST_F(UnloadTemplateFileTest, WhatIsNotRegisteredDoesNotCount) {
    const std::string file = Load("a.template", "<type name='T' type='INT32'/>");
    OviAttributeProperty* held = NewAttribute("held", 1, TypeNamed("T"));
    EXPECT_TRUE(Unload(file));
    EXPECT_EQ(TypeNamed("T"), nullptr);
    EXPECT_STREQ(OviType_GetFullName(OviAttributeProperty_GetType(held)), "T");
    OviObject_Delete(held);
}

TEST_F(UnloadTemplateFileTest, ATypeThatOnlyContainsWhatIsReferredToCounts) {
    const std::string file =
        Load("a.template", "<type name='T' type='INT32'/><type name='S' type='INT32'/>");
    OviType* alias = OviCustomType_New("Alias", 1); // registered nowhere
    OviType_SetBaseType(alias, TypeNamed("T"));
    AddAttribute(Make("User"), "x", alias);
    EXPECT_TRUE(Unload(file)) << "S, handled last, is gone";
    EXPECT_TRUE(IsRecycled(TypeNamed("T")));
    EXPECT_EQ(TypeNamed("S"), nullptr);
}

TEST_F(UnloadTemplateFileTest, AVersionThatAnotherFileUsesStaysAlone) {
    const std::string file = Load("a.template", "<template name='A'><attribute name='x' "
                                                "type='INT32' version='2'/></template>");
    AddAttribute(Make("User"), "a", Find("A"));
    EXPECT_TRUE(Unload(file)) << "version 1, handled last, is gone";
    EXPECT_EQ(Templates(), (Names{"A#2", "Object#1", "User#1"}));
    EXPECT_EQ(Find("A"), nullptr);
}

TEST_F(UnloadTemplateFileTest, ChildrenInOtherFilesFallBackToTheRoot) {
    const std::string base = Load("base.template", "<template name='Base'/>");
    Load("heir.template", "<template name='Heir'><extends template='Base'/></template>"
                          "<template name='Other'><extends template='Heir'/>"
                          "<extends template='Base'/></template>");
    EXPECT_TRUE(Unload(base));
    EXPECT_EQ(ParentsOf(Find("Heir")), Names{"Object#1"});
    EXPECT_EQ(ParentsOf(Find("Other")), Names{"Heir#1"});
}

// -- circles --------------------------------------------------------------------------------------

TEST_F(UnloadTemplateFileTest, CirclesOfReferencesInOneFileGo) {
    const std::string file =
        Load("a.template", "<template name='A'/><template name='B'>"
                           "<attribute name='a' type='A' reference='true'/>"
                           "<attribute name='self' type='B' reference='true'/></template>"
                           "<template name='A'>"
                           "<attribute name='b' type='B' reference='true'/></template>");
    // Copies hold instances as values, of templates that are about to go.
    OviTemplateManager_CreateTemplateVersion("A", 2);
    OviTemplateManager_CreateTemplateVersion("B", 2);
    OviTemplateManager_CreateTemplateVersion("A", 3);
    EXPECT_TRUE(Unload(file));
    EXPECT_EQ(Templates(), Names{"Object#1"});
}

TEST_F(UnloadTemplateFileTest, CirclesOfTypesAcrossFilesStayUntilTheEnd) {
    const std::string a = Load("a.template", "<type name='A' type='INT32'/>");
    const std::string b = Load("b.template", "<type name='B' type='A'/>");
    OviType* base = OviCustomType_New("Knot", 1);
    OviTemplateManager_AddType(base);
    OviType_SetFileName(base, a.c_str());
    OviType_SetBaseType(base, TypeNamed("B"));
    OviType_SetBaseType(TypeNamed("B"), base);
    Unload(a);
    EXPECT_EQ(TypeNamed("A"), nullptr);
    EXPECT_TRUE(IsRecycled(base));
    EXPECT_FALSE(Unload(b));
    EXPECT_TRUE(IsRecycled(TypeNamed("B")));
}

TEST_F(UnloadTemplateFileTest, ChainsOfEnumerationsGoInAnyOrderOfNames) {
    for (const char* names : {"ABC", "CBA", "BCA", "CAB"}) {
        const std::string first(1, names[0]), second(1, names[1]), third(1, names[2]);
        const std::string file = Load("a.template", "<enum name='" + first +
                                                        "' type='INT32'><item name='I' value='1'/>"
                                                        "</enum><type name='" +
                                                        second + "' type='" + first +
                                                        "'/>"
                                                        "<type name='" +
                                                        third + "' type='" + second + "'/>");
        EXPECT_EQ(OviTemplateManager_GetEnumerationCount(), 3);
        EXPECT_TRUE(Unload(file)) << names;
        EXPECT_EQ(OviTemplateManager_GetEnumerationCount(), 0);
    }
}

// -- the root -------------------------------------------------------------------------------------

TEST_F(UnloadTemplateFileTest, TheRootStaysWhenAFileThatAddsToItIsUnloaded) {
    OviTemplate* root = OviTemplateManager_GetRoot();
    OviTemplate* child = Make("Child");
    const char* text = "<type name='T' type='INT32'/><template name='Object'>"
                       "<attribute name='tag' type='T'/></template>";
    const std::string file = Load("a.template", text);
    EXPECT_NE(OviTemplate_GetProperty(child, "tag"), nullptr);
    EXPECT_TRUE(Unload(file));
    EXPECT_EQ(OviTemplateManager_GetRoot(), root);
    EXPECT_EQ(ParentsOf(child), Names{"Object#1"});
    EXPECT_EQ(OviTemplate_GetProperty(child, "tag"), nullptr);
    EXPECT_EQ(TypeNamed("T"), nullptr);
    Load("b.template", text);
    EXPECT_NE(OviTemplate_GetProperty(child, "tag"), nullptr);
    EXPECT_EQ(ParentsOf(root), Names{});
}

TEST_F(UnloadTemplateFileTest, APropertyOfTheRootInUseOutlivesItsFile) {
    const std::string file = Load("a.template", "<template name='Object'>"
                                                "<attribute name='tag' type='INT32' default='3'/>"
                                                "</template>");
    OviInstance* instance = OviInstance_New("Free");
    OviInstance_AddTemplate(instance, Make("Child"));
    OviPropertyInstance* tag = OviInstance_GetPropertyInstance(instance, "Object.tag", false);
    Unload(file);
    EXPECT_EQ(OviTemplateManager_GetProperty("Object.tag"), nullptr);
    EXPECT_EQ(
        *static_cast<int*>(OviAttributeInstance_GetValue(static_cast<OviAttributeInstance*>(tag))),
        3);
    OviObject_Delete(instance);
}

TEST_F(UnloadTemplateFileTest, TheResultIsThatOfTheFirstPlainTypeByName) { // handled last
    for (const char* used : {"A", "Z"}) {
        const bool firstGoes = *used == 'Z';
        const std::string file = Load("types.template", "<template name='M'/>"
                                                        "<type name='A' type='INT32'/>"
                                                        "<type name='Z' type='INT32'/>");
        const std::string user =
            Load("user.template", "<template name='U'><attribute name='m' type='M'/>"
                                  "<attribute name='t' type='" +
                                      std::string(used) + "'/></template>");
        EXPECT_EQ(Unload(file), firstGoes) << used;
        EXPECT_EQ(TypeNamed("A") == nullptr, firstGoes);
        Unload(user);
        Unload(file);
    }
}

} // namespace
