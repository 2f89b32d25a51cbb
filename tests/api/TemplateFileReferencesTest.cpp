// What definitions of a file mention, wherever that stands: a saved file is read as it was.

#include "api/TemplateFileHost.h"

namespace {

class TemplateFileReferences : public TemplateFileTest {
protected:
    static OviInstance* DefaultOf(const char* property) {
        auto* attribute =
            static_cast<OviAttributeProperty*>(OviTemplateManager_GetProperty(property));
        return *static_cast<OviInstance* const*>(OviAttributeProperty_GetDefaultValue(attribute));
    }

    static Lines TemplatesOf(OviInstance* instance) {
        Lines names;
        for (int i = 0; i < OviInstance_GetTemplateCount(instance); ++i)
            names.emplace_back(OviType_GetFullName(OviInstance_GetTemplateAt(instance, i)));
        return names;
    }
};

TEST_F(TemplateFileReferences, ADefaultOfADerivedTemplateIsKept) {
    EXPECT_EQ(Load("<template name='A'/><template name='B'><extends template='A'/></template>"
                   "<template name='T'><attribute name='a' type='A' default='p.B' min='p.B' "
                   "max='p.A'/></template>"),
              Lines{});
    EXPECT_EQ(TemplatesOf(DefaultOf("p.T#1.a")), Lines{"p.B"});
    ExpectRoundTrip();
    EXPECT_EQ(TemplatesOf(DefaultOf("p.T#1.a")), Lines{"p.B"});
    EXPECT_NE(SavedContent().find("type='p.A' default='p.B' min='p.B' max='"), std::string::npos)
        << SavedContent();
}

TEST_F(TemplateFileReferences, WhatStaysOfAnUnloadedFileIsSavedWithIt) {
    EXPECT_EQ(Load("<enum name='E' type='INT32'><item name='one' value='1'/><item name='two' "
                   "value='2'/></enum><type name='V' type='INT32'/>"
                   "<template name='T'><attribute name='x' type='INT32'/></template>"),
              Lines{});
    const std::string user = WriteFile(
        "in/p/User.template",
        "<?xml version='1.0'?><templates><template name='User'><attribute name='e' type='p.E'/>"
        "<attribute name='v' type='p.V'/><attribute name='t' type='p.T'/></template>"
        "</templates>");
    ASSERT_TRUE(OviTemplateManager_LoadTemplateFile(user.c_str()));
    EXPECT_EQ(Errors(), Lines{});
    OviTemplateManager_UnloadTemplateFile(path_.c_str());
    ASSERT_TRUE(OviType_IsRecycled(OviTemplateManager_GetEnumeration("p.E")));
    const std::string text = SavedContent();
    EXPECT_NE(text.find("<item name='two'"), std::string::npos) << text;
    EXPECT_NE(text.find("<type name='V'"), std::string::npos) << text;
    EXPECT_NE(text.find("<template name='T'/>"), std::string::npos) << text;
}

TEST_F(TemplateFileReferences, AViewFindsAnAlternateThatStandsForAnotherLevelNow) {
    Load("<lod name='High'/><lod name='Low'/><template name='T'><geometry name='g'>"
         "<alternate lod='High'/></geometry><view name='v' template='T'/></template>");
    auto* geometry = static_cast<OviGeometryProperty*>(OviTemplate_GetProperty(Get("p.T"), "g"));
    auto* alternate = static_cast<OviGeometryAlternate*>(
        OviObject_Clone(OviGeometryProperty_GetAlternateAt(geometry, 0)));
    OviTemplate_AddProperty(Get("p.T"), alternate, -1);
    OviView* view = OviTemplate_GetView(Get("p.T"), "v", false);
    OviGroup_AddViewItemAt(view, OviViewProperty_New("item", alternate), 0);
    OviGeometryAlternate_SetLOD(alternate, OviTemplateManager_GetLOD("Low"));
    const std::string text = Save();
    Restart();
    EXPECT_TRUE(LoadText(text));
    EXPECT_EQ(Errors(), Lines{}) << text;
    EXPECT_EQ(OviGroup_GetViewItemCount(OviTemplate_GetView(Get("p.T"), "v", false)), 1) << text;
}

} // namespace
