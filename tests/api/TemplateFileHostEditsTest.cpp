// Saving what a host made or changed by itself.

#include "api/TemplateFileHost.h"

namespace {

class TemplateFileHostEdits : public TemplateFileTest {
protected:
    static OviTemplate* Cloned(OviTemplate* source, const char* name) {
        auto* copy = static_cast<OviTemplate*>(OviObject_Clone(source));
        OviNamedObject_SetName(copy, name);
        OviTemplateManager_AddTemplate(copy);
        return copy;
    }

    static OviAttributeProperty* NewAttribute(const char* name, unsigned version) {
        OviAttributeProperty* made = OviAttributeProperty_New(name, version);
        OviAttributeProperty_SetType(made, OviTemplateManager_GetType("INT32"));
        return made;
    }

    static void SetDefault(OviAttributeProperty* attribute, int value) {
        OviType* type = OviAttributeProperty_GetType(attribute);
        OviAttributeProperty_SetDefaultValue(attribute, OviType_NewValue(type, &value, 1));
    }

    /// Saves the file under test and loads it into an empty registry.
    void SaveAndLoad() {
        const std::string text = Save();
        Restart();
        path_ = PathOf("out/p/F.template");
        EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(path_.c_str()));
        EXPECT_EQ(Errors(), Lines{}) << text;
    }

    static bool Has(const char* owner, const char* property, unsigned version = 1) {
        OviTemplate* found = Get(owner, version);
        for (int i = 0; found && i < OviTemplate_GetPropertyCount(found); ++i) {
            if (std::string(OviNamedObject_GetName(OviTemplate_GetPropertyAt(found, i, true))) ==
                property)
                return true;
        }
        return false;
    }

    static OviEnumeration* Enumeration(const char* name) {
        return OviTemplateManager_GetEnumeration(name);
    }
};

// -- copies -----------------------------------------------------------------------------------

TEST_F(TemplateFileHostEdits, ACloneUnderANewNameKeepsItsProperties) {
    Load("<template name='P'/><template name='T'><extends template='P'/><attribute name='b' "
         "type='INT32' default='3'/><attribute name='a' type='BOOL'/></template><template "
         "name='U'><attribute name='a' type='INT32'/><attribute name='c' type='INT32' "
         "version='2'/></template>");
    SetDefault(Attribute(Cloned(Get("p.T"), "p.First"), "b"), 5);
    Cloned(Get("p.U", 2), "p.Second");
    SaveAndLoad();
    EXPECT_TRUE(Has("p.First", "a") && Has("p.First", "b"));
    EXPECT_EQ(DefaultOf(Attribute(Get("p.First"), "b")), "5");
    EXPECT_NE(OviTemplate_GetParent(Get("p.First"), "p.P#1"), nullptr);
    EXPECT_TRUE(Has("p.Second", "a", 2) && Has("p.Second", "c", 2));
    EXPECT_EQ(OviTemplate_GetPropertyCount(Get("p.T")), 2);
}

// Its latest version is that of the origin, which there is none of under the new name.
TEST_F(TemplateFileHostEdits, ACloneOfALowerVersionAloneUnderANewNameIsLeftOut) {
    Load("<template name='T'><attribute name='a' type='INT32'/><attribute name='b' type='INT32' "
         "version='2'/></template>");
    OviTemplate* clone = Cloned(Get("p.T", 1), "p.Third");
    EXPECT_EQ(Get("p.Third"), clone);
    EXPECT_EQ(OviTemplate_GetLatestVersion(clone), 2);
    EXPECT_EQ(OviTemplateManager_GetTemplate("p.Third"), nullptr);
    EXPECT_EQ(SavedContent().find("Third"), std::string::npos) << SavedContent();
}

TEST_F(TemplateFileHostEdits, ACloneDoesNotTakeViewsAlong) {
    Load("<template name='T'><attribute name='a' type='INT32'/><view name='main' "
         "template='T'><property name='a'/></view></template>");
    EXPECT_EQ(OviTemplate_GetViewCount(Cloned(Get("p.T"), "p.First")), 0);
    const std::string text = SavedContent();
    EXPECT_NE(text.find("<template name='First'>"), std::string::npos) << text;
    const size_t view = text.find("<view ");
    ASSERT_NE(view, std::string::npos) << text;
    EXPECT_EQ(text.find("<view ", view + 1), std::string::npos) << text;
}

TEST_F(TemplateFileHostEdits, ATemplateMadeByATypeElementIsWrittenAsItWasChanged) {
    EXPECT_EQ(Load("<template name='T'><attribute name='a' type='INT32'/><attribute name='b' "
                   "type='INT32'/></template><type name='U' type='T'/><type name='V' type='T' "
                   "dim='3'/><type name='W' type='T'/>"),
              Lines{});
    SetDefault(Attribute(Get("p.U"), "a"), 4);
    OviAttributeProperty* removed = Attribute(Get("p.V"), "b");
    OviTemplate_RemoveProperty(Get("p.V"), removed);
    OviObject_Delete(removed);
    SaveAndLoad();
    EXPECT_EQ(DefaultOf(Attribute(Get("p.U"), "a")), "4");
    EXPECT_TRUE(Has("p.U", "b"));
    EXPECT_TRUE(Has("p.V", "a"));
    EXPECT_FALSE(Has("p.V", "b"));
    EXPECT_NE(SchemaDump::Of().find("template p.V#1 class 1 package 'p' file"), std::string::npos);
    EXPECT_NE(Save().find("<type name='V' type='Object' dim='3'/>"), std::string::npos) << Save();
    EXPECT_EQ(OviType_GetBaseType(Get("p.W")), Get("p.T")) << "nothing changed in this one";
}

TEST_F(TemplateFileHostEdits, ATemplateMadeByATypeElementDoesNotGetWhatItsOriginGotLater) {
    EXPECT_EQ(Load("<template name='T'><attribute name='a' type='INT32'/></template>"
                   "<type name='U' type='T'/><template name='T'><attribute name='b' type='INT32'/>"
                   "</template>"),
              Lines{});
    SaveAndLoad();
    EXPECT_TRUE(Has("p.T", "b") && Has("p.U", "a"));
    EXPECT_FALSE(Has("p.U", "b"));
}

TEST_F(TemplateFileHostEdits, AnEnumerationOverAnEnumerationKeepsItsItems) {
    EXPECT_EQ(
        Load("<enum name='E' type='INT32'><item name='A' value='1'/><item name='B' "
             "value='2'/></enum><type name='F' type='E'/><type name='G' type='E'/>"
             "<enum name='H' type='INT32'><item name='Z' value='9'/></enum><template name='T'/>"),
        Lines{});
    OviEnumeration* changed = Enumeration("p.F");
    OviEnumerationItem* removed = OviEnumeration_GetItem(changed, "A");
    OviEnumeration_RemoveItem(changed, removed);
    OviObject_Delete(removed);
    const int value = 7;
    OviEnumerationItem_SetValue(OviEnumeration_GetItem(changed, "B"), &value);
    OviType_SetBaseType(Enumeration("p.H"), Enumeration("p.E"));
    SaveAndLoad();
    const std::string model = SchemaDump::Of();
    EXPECT_EQ(OviEnumeration_GetItemCount(Enumeration("p.F")), 1);
    EXPECT_NE(model.find("<item name='B' value='7'/>"), std::string::npos) << model;
    EXPECT_NE(OviEnumeration_GetItem(Enumeration("p.H"), "Z"), nullptr);
    EXPECT_EQ(OviEnumeration_GetItemCount(Enumeration("p.H")), 1);
    EXPECT_EQ(OviEnumeration_GetItemCount(Enumeration("p.G")), 2);
    EXPECT_EQ(OviType_GetBaseType(Enumeration("p.G")), Enumeration("p.E"));
}

// -- order ------------------------------------------------------------------------------------

TEST_F(TemplateFileHostEdits, ATypeOfAHostComesBehindWhatItIsBasedOn) {
    Load("<enum name='E' type='INT32'><item name='A' value='1'/></enum><template name='T'/>"
         "<template name='Z'/>");
    const auto add = [this](const char* name, OviType* base) {
        OviType* made = OviCustomType_New(name, 2);
        OviType_SetBaseType(made, base);
        OviType_SetFileName(made, path_.c_str());
        OviTemplateManager_AddType(made);
        return made;
    };
    add("p.B", add("p.A", Enumeration("p.E")));
    add("p.C", Get("p.Z"));
    OviAttributeProperty* attribute = NewAttribute("x", 1);
    OviAttributeProperty_SetType(attribute, OviTemplateManager_GetType("p.C"));
    OviTemplate_AddProperty(Get("p.T"), attribute, -1);
    EXPECT_EQ(SavedContent(),
              "\t<enum name='E' type='INT32'>\n\t\t<item name='A' value='1'/>\n\t</enum>\n"
              "\t<type name='A' type='p.E' dim='2'/>\n\t<type name='B' type='p.A' dim='2'/>\n"
              "\t<template name='Z'/>\n\t<type name='C' type='p.Z' dim='2'/>\n"
              "\t<template name='T'>\n\t\t<attribute name='x' type='p.C'/>\n\t</template>");
    SaveAndLoad();
}

// -- properties -------------------------------------------------------------------------------

TEST_F(TemplateFileHostEdits, PropertiesOwnedElsewhereOrByNobodyAreWritten) {
    Load("<template name='S'/><template name='T'/>");
    OviAttributeProperty* shared = NewAttribute("shared", 1);
    OviTemplate_AddProperty(Get("p.T"), shared, -1);
    OviTemplate_AddProperty(Get("p.S"), shared, -1);
    EXPECT_EQ(OviProperty_GetTemplate(shared), Get("p.S"));
    OviAttributeProperty* loose = NewAttribute("loose", 5);
    OviTemplate_AddProperty(Get("p.T"), loose, -1);
    EXPECT_EQ(OviProperty_GetTemplate(loose), nullptr);
    OviTemplateManager_CreateTemplateVersion("p.T", 3);
    OviAttributeProperty* older = NewAttribute("older", 2);
    OviTemplate_AddProperty(Get("p.T", 3), older, -1);
    SaveAndLoad();
    EXPECT_TRUE(Has("p.S", "shared") && Has("p.T", "shared"));
    EXPECT_TRUE(Has("p.T", "loose"));
    EXPECT_TRUE(Has("p.T", "loose", 3));
    EXPECT_TRUE(Has("p.T", "older", 3));
    EXPECT_FALSE(Has("p.T", "older"));
    EXPECT_EQ(OviTemplate_GetLatestVersion(Get("p.T")), 3);
    OviObject_Delete(loose); // the templates that listed it are gone, and never owned it
    OviObject_Delete(older);
}

TEST_F(TemplateFileHostEdits, APropertyStaysInTheVersionThatKeptIt) {
    EXPECT_EQ(Load("<template name='T'><attribute name='a' type='INT32' default='1'/>"
                   "<attribute name='b' type='INT32' version='2'/></template>"),
              Lines{});
    OviAttributeProperty* removed = Attribute(Get("p.T"), "a");
    OviTemplate_RemoveProperty(Get("p.T"), removed);
    OviObject_Delete(removed);
    SaveAndLoad();
    EXPECT_FALSE(Has("p.T", "a"));
    EXPECT_TRUE(Has("p.T", "a", 2) && Has("p.T", "b", 2));
}

TEST_F(TemplateFileHostEdits, APropertyStaysWhereAVersionInBetweenIsGone) {
    EXPECT_EQ(Load("<template name='T'><attribute name='a' type='INT32'/><attribute name='b' "
                   "type='INT32' version='2'/><attribute name='b' type='BOOL' version='3'/>"
                   "<attribute name='d' type='INT32' version='4'/></template>"),
              Lines{});
    for (const unsigned version : {3U, 2U}) {
        OviTemplate* gone = Get("p.T", version);
        OviTemplateManager_RemoveTemplate(gone);
        OviObject_Delete(gone);
    }
    SaveAndLoad();
    EXPECT_TRUE(Has("p.T", "a", 4) && Has("p.T", "b", 4) && Has("p.T", "d", 4));
    EXPECT_EQ(TypeOf(Attribute(Get("p.T", 4), "b")), "BOOL");
    EXPECT_FALSE(Has("p.T", "b"));
    EXPECT_EQ(Get("p.T", 2), nullptr);
}

TEST_F(TemplateFileHostEdits, AnAlternateAmongTheOwnPropertiesIsANode) {
    EXPECT_EQ(Load("<lod name='High'/><template name='T'><geometry name='g'><alternate lod='High'/>"
                   "</geometry></template>"),
              Lines{});
    auto* geometry = static_cast<OviGeometryProperty*>(OviTemplate_GetProperty(Get("p.T"), "g"));
    auto* alternate = static_cast<OviGeometryAlternate*>(
        OviObject_Clone(OviGeometryProperty_GetAlternateAt(geometry, 0)));
    OviNodeProperty_SetAncestor(alternate, "g");
    OviTemplate_AddProperty(Get("p.T"), alternate, -1);
    EXPECT_NE(SavedContent().find("\t\t<node name='High' ancestor='g'/>\n"), std::string::npos);
    SaveAndLoad();
    EXPECT_EQ(OviObject_GetClass(OviTemplate_GetProperty(Get("p.T"), "High")),
              static_cast<int>(OVI_CLASS_NODE_PROPERTY));
}

TEST_F(TemplateFileHostEdits, TheDeclarationOrderIsTheHosts) {
    EXPECT_EQ(Load("<template name='T'><attribute name='a' type='INT32'/></template>"), Lines{});
    OviTemplate_AddProperty(Get("p.T"), NewAttribute("c", 1), 0);
    OviTemplate_AddProperty(Get("p.T"), NewAttribute("b", 1), 1);
    OviTemplateManager_CreateTemplateVersion("p.T", 2);
    ExpectRoundTrip();
}

// -- the root ---------------------------------------------------------------------------------

TEST_F(TemplateFileHostEdits, WhatAFileSaysOfTheRootIsKept) {
    const char* text = "<?xml version='1.0' encoding='UTF-8'?>\n<templates>\n"
                       "\t<!-- all -->\n\t<template name='Object'>\n"
                       "\t\t<label language='de'>Ding</label>\n\t\t<!---->\n"
                       "\t\t<attribute name='tag' type='INT32' default='3'/>\n"
                       "\t\t<attribute name='more' type='INT32' version='2'/>\n"
                       "\t\t<view name='v' template='Object'>\n\t\t\t<property name='tag'/>\n"
                       "\t\t</view>\n\t</template>\n\t<template name='T'>\n"
                       "\t\t<attribute name='x' type='Object' reference='true'/>\n"
                       "\t</template>\n</templates>";
    ASSERT_TRUE(LoadText(text));
    EXPECT_EQ(Errors(), Lines{});
    EXPECT_EQ(Save(), text);
    ExpectRoundTrip();
}

TEST_F(TemplateFileHostEdits, ARootWithoutLaterVersionsIsKept) {
    const char* text = "<?xml version='1.0' encoding='UTF-8'?>\n<templates>\n"
                       "\t<template name='Object'>\n"
                       "\t\t<attribute name='tag' type='INT32' default='3'/>\n"
                       "\t</template>\n\t<template name='A'/>\n</templates>";
    ASSERT_TRUE(LoadText(text));
    EXPECT_EQ(Save(), text);
    ExpectRoundTrip();
}

TEST_F(TemplateFileHostEdits, WhatAHostSaysOfTheRootStandsInNoOtherFile) {
    Load("<template name='T'/>");
    OviTemplate_AddProperty(OviTemplateManager_GetRoot(), NewAttribute("tag", 1), -1);
    EXPECT_EQ(SavedContent(), "\t<template name='T'/>");
}

// -- languages --------------------------------------------------------------------------------

TEST_F(TemplateFileHostEdits, ALanguageThatBeginsLikeNoneIsKept) {
    Load("<template name='T'><label>none</label><label language='-'>none, too</label></template>");
    OviTemplate* type = Get("p.T");
    EXPECT_STREQ(OviNamedObject_GetLabel(type, nullptr), "none, too");
    OviNamedObject_SetLabel(type, "-x", "odd");
    OviNamedObject_SetDescription(type, "-", "odder");
    EXPECT_NE(SavedContent().find("<label language='-x' exact='true'>odd</label>"),
              std::string::npos);
    EXPECT_NE(SavedContent().find("<description language='-' exact='true'>odder</description>"),
              std::string::npos);
    ExpectRoundTrip();
    EXPECT_STREQ(OviNamedObject_GetLabel(Get("p.T"), "-x"), "odd");
    EXPECT_STREQ(OviNamedObject_GetLabel(Get("p.T"), nullptr), "none, too");
    EXPECT_STREQ(OviNamedObject_GetDescription(Get("p.T"), "-"), "odder");
}

// -- versions that are gone -------------------------------------------------------------------

TEST_F(TemplateFileHostEdits, ATemplateWhoseLatestVersionIsGoneIsLeftOut) {
    Load("<template name='T'><attribute name='b' type='BOOL' version='2'/></template>"
         "<template name='U'/>");
    OviTemplate* latest = Get("p.T", 2);
    OviTemplateManager_RemoveTemplate(latest);
    EXPECT_EQ(SavedContent(), "\t<template name='U'/>");
    OviObject_Delete(latest);
}

TEST_F(TemplateFileHostEdits, ATemplateWhoseLatestVersionIsGoneIsSkippedInSilence) {
    Load("<template name='T'><attribute name='b' type='BOOL' version='2'/></template>");
    OviTemplate* latest = Get("p.T", 2);
    OviTemplateManager_RemoveTemplate(latest);
    const std::string other = WriteFile(
        "in/p/G.template", Wrap("<template name='T'><nonsense/><attribute name='c' type='BOOL'/>"
                                "</template><template name='U'/>"));
    EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(other.c_str()));
    EXPECT_EQ(Errors(), Lines{});
    EXPECT_EQ(OviTemplateManager_GetTemplate("p.T"), nullptr);
    EXPECT_NE(Get("p.U"), nullptr) << "what follows is read";
    OviObject_Delete(latest);
}

} // namespace
