// How template files are written, to the byte.

#include "api/TemplateFileHost.h"

namespace {

/// What is loaded, and what a saved file then has between its header and its end; null where that
/// is the same text.
struct Case {
    const char* name;
    const char* content;
    const char* saved;
};

void PrintTo(const Case& testCase, std::ostream* stream) {
    *stream << testCase.name;
}

std::string NameOf(const ::testing::TestParamInfo<Case>& info) {
    return info.param.name;
}

class TemplateFileWriting : public TemplateFileTest, public ::testing::WithParamInterface<Case> {};

TEST_P(TemplateFileWriting, HasTheFixedForm) {
    const Case& testCase = GetParam();
    EXPECT_EQ(Load(testCase.content), Lines{});
    EXPECT_EQ(SavedContent(), testCase.saved ? testCase.saved : testCase.content);
    ExpectRoundTrip();
}

const Case kAttributes[] = {
    {"InTheOrderOfTheElementTable",
     "<template name='T'><attribute autoBind='x' max='9' min='1' default='3' reference='1' "
     "version='2' type='INT32' name='a'/></template>",
     "\t<template name='T'>\n"
     "\t\t<attribute name='a' type='INT32' version='2' reference='true' default='3' min='1' "
     "max='9' autoBind='x'/>\n"
     "\t</template>"},
    {"WithoutWhatIsAsItWouldBeAnyway",
     "<template name='T'><attribute name='a' type='BOOL' version='1' reference='false' "
     "autoBind=''/><extends template='Object' templateVersion='1' version='1'/></template>",
     "\t<template name='T'>\n\t\t<attribute name='a' type='BOOL'/>\n\t</template>"},
    {"WithBooleansNumbersAndTextsAsTheirTypesWriteThem",
     "<template name='T'><attribute name='a' type='BOOL' default='1'/>"
     "<attribute name='b' type='DOUBLE' default='1000000' min='.5'/>"
     "<attribute name='c' type='STRING' default='&lt;it&apos;s &quot;a&quot; &amp; b&gt;'/>"
     "<attribute name='d' type='INT8' default='-7'/></template>",
     "\t<template name='T'>\n"
     "\t\t<attribute name='a' type='BOOL' default='true'/>\n"
     "\t\t<attribute name='b' type='DOUBLE' default='1e+06' min='0.5'/>\n"
     "\t\t<attribute name='c' type='STRING' default='&lt;it&apos;s &quot;a&quot; &amp; b&gt;'/>\n"
     "\t\t<attribute name='d' type='INT8' default='-7'/>\n"
     "\t</template>"},
    {"WithVersionsOfParentsWhenNotOne",
     "<template name='B'><attribute name='b' type='BOOL' version='2'/></template>"
     "<template name='T'><extends version='3' templateVersion='2' template='B'/></template>",
     "\t<template name='B'>\n\t\t<attribute name='b' type='BOOL' version='2'/>\n\t</template>\n"
     "\t<template name='T'>\n"
     "\t\t<extends template='p.B' templateVersion='2' version='3'/>\n\t</template>"},
    {"WithTypesInFull",
     "<type name='V' type='FLOAT' dim='3'/><type name='W' type='V' dim='0'/>"
     "<template name='T'><attribute name='a' type='V'/></template>",
     "\t<type name='V' type='FLOAT' dim='3'/>\n\t<type name='W' type='p.V' dim='0'/>\n"
     "\t<template name='T'>\n\t\t<attribute name='a' type='p.V'/>\n\t</template>"},
    {"WithDefaultAssetsInside",
     "<template name='A'/><template name='T'><attribute name='a' type='A'><asset name='x' "
     "reference='f.asset'/></attribute><attribute name='b' type='A'><asset name='y'/></attribute>"
     "<attribute name='c' type='A' default='p.A'/></template>",
     "\t<template name='A'/>\n\t<template name='T'>\n"
     "\t\t<attribute name='a' type='p.A'>\n\t\t\t<asset name='x' reference='f.asset'/>\n"
     "\t\t</attribute>\n\t\t<attribute name='b' type='p.A'>\n\t\t\t<asset name='y'/>\n"
     "\t\t</attribute>\n\t\t<attribute name='c' type='p.A' default=''/>\n\t</template>"},
};
INSTANTIATE_TEST_SUITE_P(Attributes, TemplateFileWriting, ::testing::ValuesIn(kAttributes), NameOf);

const Case kTexts[] = {
    {"LabelsAndDescriptionsThenCommands",
     "<template name='T'><attribute name='a' type='BOOL'><command execute='y' notification='N2'/>"
     "<command execute='x' notification='N1'/><description language='de'>D</description>"
     "<label language='fr'>F</label><label>&lt;L&gt; </label></attribute>"
     "<description>d</description><label language='de'/></template>",
     "\t<template name='T'>\n"
     "\t\t<label language='de'></label>\n"
     "\t\t<description>d</description>\n"
     "\t\t<attribute name='a' type='BOOL'>\n"
     "\t\t\t<label>&lt;L&gt; </label>\n"
     "\t\t\t<label language='fr'>F</label>\n"
     "\t\t\t<description language='de'>D</description>\n"
     "\t\t\t<command execute='x' notification='N1'/>\n"
     "\t\t\t<command execute='y' notification='N2'/>\n"
     "\t\t</attribute>\n"
     "\t</template>"},
    {"CommentsInFront",
     "<!-- v &gt; --><type name='V' type='FLOAT'/><!-- t --><template name='T'><!-- a -->"
     "<attribute name='a' type='BOOL'><!-- c --><command execute='x' notification='y'/>"
     "</attribute></template>",
     "\t<!-- v &gt; -->\n\t<type name='V' type='FLOAT'/>\n\t<!-- t -->\n\t<template name='T'>\n"
     "\t\t<!-- a -->\n\t\t<attribute name='a' type='BOOL'>\n\t\t\t<!-- c -->\n"
     "\t\t\t<command execute='x' notification='y'/>\n\t\t</attribute>\n\t</template>"},
    {"EmptyCommentWhereAnObjectWouldTakeTheOneBefore",
     "<!-- t --><template name='T'><!----><attribute name='a' type='BOOL'><!-- c -->"
     "<command execute='x' notification='y'/></attribute><attribute name='b' type='BOOL'/>"
     "<!-- d --><attribute name='d' type='BOOL'/></template><!----><template name='U'/>",
     "\t<!-- t -->\n\t<template name='T'>\n\t\t<!---->\n\t\t<attribute name='a' type='BOOL'>\n"
     "\t\t\t<!-- c -->\n\t\t\t<command execute='x' notification='y'/>\n\t\t</attribute>\n"
     "\t\t<attribute name='b' type='BOOL'/>\n"
     "\t\t<!-- d -->\n\t\t<attribute name='d' type='BOOL'/>\n\t</template>\n"
     "\t<!---->\n\t<template name='U'/>"},
    {"NoEmptyCommentBehindWhatEndsTheComment",
     "<!-- v --><type name='V' type='FLOAT'/><type name='W' type='FLOAT'/>"
     "<enum name='E' type='INT32'><!-- i --><item name='I' value='1'/><item name='J' value='2'/>"
     "</enum><template name='T'/>",
     "\t<!-- v -->\n\t<type name='V' type='FLOAT'/>\n\t<type name='W' type='FLOAT'/>\n"
     "\t<enum name='E' type='INT32'>\n\t\t<!-- i -->\n\t\t<item name='I' value='1'/>\n"
     "\t\t<item name='J' value='2'/>\n\t</enum>\n\t<template name='T'/>"},
};
INSTANTIATE_TEST_SUITE_P(Texts, TemplateFileWriting, ::testing::ValuesIn(kTexts), NameOf);

const Case kOrder[] = {
    {"TypesThenEnumerationsThenTemplates",
     "<template name='A'/><enum name='B' type='INT32'/><type name='C' type='FLOAT'/>",
     "\t<type name='C' type='FLOAT'/>\n\t<enum name='B' type='INT32'/>\n\t<template name='A'/>"},
    {"KeyOrderInEachGroup",
     "<template name='b'/><template name='a'/><type name='d' type='FLOAT'/>"
     "<type name='c' type='FLOAT'/>",
     "\t<type name='c' type='FLOAT'/>\n\t<type name='d' type='FLOAT'/>\n\t<template name='a'/>\n"
     "\t<template name='b'/>"},
    {"WhatOthersNeedFirst",
     "<type name='B' type='FLOAT'/><type name='A' type='B'/><template name='z'/>"
     "<template name='y'/><template name='a'><extends template='z'/>"
     "<attribute name='y' type='y'/></template>",
     "\t<type name='B' type='FLOAT'/>\n\t<type name='A' type='p.B'/>\n\t<template name='z'/>\n"
     "\t<template name='y'/>\n\t<template name='a'>\n\t\t<extends template='p.z'/>\n"
     "\t\t<attribute name='y' type='p.y'/>\n\t</template>"},
    {"OlderVersionsOfParentsToo",
     "<template name='z'><attribute name='x' type='BOOL' version='2'/></template>"
     "<template name='a'><extends template='z'/></template>",
     "\t<template name='z'>\n\t\t<attribute name='x' type='BOOL' version='2'/>\n\t</template>\n"
     "\t<template name='a'>\n\t\t<extends template='p.z'/>\n\t</template>"},
    {"ParentBeforeAChildThatItRefersTo",
     "<template name='a'/><template name='b'><extends template='a'/></template>"
     "<template name='a'><attribute name='x' type='b' reference='1'/></template>",
     "\t<template name='b'/>\n\t<template name='a'>\n"
     "\t\t<attribute name='x' type='p.b' reference='true'/>\n\t</template>\n"
     "\t<template name='b'>\n\t\t<extends template='p.a'/>\n\t</template>"},
    {"ADeclarationWhereTemplatesReferToEachOther",
     "<!-- b --><template name='b'/><template name='a'><attribute name='x' type='b' "
     "reference='1'/></template><!-- b --><template name='b'><!----><attribute name='y' type='a' "
     "reference='1'/></template>",
     "\t<template name='a'/>\n\t<!-- b -->\n\t<template name='b'>\n\t\t<!---->\n"
     "\t\t<attribute name='y' type='p.a' reference='true'/>\n\t</template>\n"
     "\t<!-- b -->\n\t<template name='a'>\n"
     "\t\t<!-- b -->\n\t\t<attribute name='x' type='p.b' reference='true'/>\n\t</template>"},
    {"TypesOverTemplatesBehindThem", "<template name='b'/><type name='a' type='b' dim='2'/>",
     "\t<template name='b'/>\n\t<type name='a' type='p.b' dim='2'/>"},
    {"TypesOverTemplatesWithWhatTheyGotLater",
     "<template name='c'/><template name='b'><extends template='c'/><attribute name='x' "
     "type='BOOL'/></template><type name='a' type='b'/><template name='a'><attribute name='y' "
     "type='BOOL'/><attribute name='x' type='BOOL' version='2'/><label>A</label></template>",
     "\t<template name='c'/>\n\t<template name='b'>\n\t\t<extends template='p.c'/>\n"
     "\t\t<attribute name='x' type='BOOL'/>\n\t</template>\n"
     "\t<type name='a' type='p.b'/>\n\t<template name='a'>\n"
     "\t\t<attribute name='y' type='BOOL'/>\n\t\t<attribute name='x' type='BOOL' version='2'/>\n"
     "\t\t<label>A</label>\n\t</template>"},
    {"TypesOverEnumerationsBehindThem",
     "<enum name='b' type='INT32'><item name='I' value='1'/></enum><type name='a' type='b'/>"
     "<template name='T'/>",
     "\t<enum name='b' type='INT32'>\n\t\t<item name='I' value='1'/>\n\t</enum>\n"
     "\t<type name='a' type='p.b'/>\n\t<template name='T'/>"},
};
INSTANTIATE_TEST_SUITE_P(Order, TemplateFileWriting, ::testing::ValuesIn(kOrder), NameOf);

const Case kVersions[] = {
    {"OldestFirstWhenLaterOnesAreCopies",
     "<template name='T'><attribute name='a' type='BOOL'/><attribute name='b' type='BOOL' "
     "version='2'/><attribute name='a' type='INT32' version='2'/></template>",
     nullptr},
    {"NewestFirstWhenTheyShareWhatCameLater",
     "<template name='T'><attribute name='b' type='BOOL' version='2'/><attribute name='a' "
     "type='BOOL' default='true'/></template>",
     nullptr},
    {"OlderDefinitionThatANewerOneKeptOut",
     "<template name='T'><attribute name='a' type='INT32' version='3'/><attribute name='a' "
     "type='BOOL'/></template>",
     nullptr},
    {"VersionInBetweenThatCameLast",
     "<template name='T'><attribute name='a' type='BOOL' default='true'/><attribute name='b' "
     "type='BOOL' version='3'/><attribute name='c' type='BOOL' version='2'/></template>",
     nullptr},
    {"VersionOfParentsAlone",
     "<template name='B'/><template name='T'><attribute name='a' type='BOOL'/><extends "
     "template='p.B' version='2'/></template>",
     nullptr},
    {"VersionWithNothingOfItsOwn",
     "<template name='T'><attribute name='a' type='BOOL'/><extends template='Object' version='2'/>"
     "</template>",
     nullptr},
    {"TextsOnTheFirstVersionBehindTheOthers",
     "<template name='T'><attribute name='b' type='BOOL' version='2'/><label>L</label></template>",
     nullptr},
    {"TextsOnAllVersionsInFront",
     "<template name='T'><label>L</label><attribute name='b' type='BOOL' version='2'/></template>",
     nullptr},
    {"TextsOfALaterVersionInAnElementOfItsOwn",
     "<template name='T'><attribute name='a' type='BOOL'/><attribute name='b' type='BOOL' "
     "version='2'/><label>1</label></template><!-- 2 --><template name='T'><label>2</label>"
     "</template>",
     nullptr},
};

/// The cases of versions are written as they are read, but for the layout.
class TemplateFileVersions : public TemplateFileTest, public ::testing::WithParamInterface<Case> {
protected:
    static std::string WithoutLayout(std::string text) {
        for (size_t at = 0; (at = text.find_first_of("\n\t", at)) != std::string::npos;)
            text.erase(at, 1);
        return text;
    }
};

TEST_P(TemplateFileVersions, AreWrittenInTheOrderOfTheirHistory) {
    EXPECT_EQ(Load(GetParam().content), Lines{});
    EXPECT_EQ(WithoutLayout(SavedContent()), GetParam().content);
    ExpectRoundTrip();
}

INSTANTIATE_TEST_SUITE_P(Versions, TemplateFileVersions, ::testing::ValuesIn(kVersions), NameOf);

// -- the root element -------------------------------------------------------------------------

class TemplateFileRoot : public TemplateFileTest {};

TEST_F(TemplateFileRoot, UsesThePackagesOfTypesParentsAndReferencesInOrder) {
    const char* const kDefinitions = "<type name='V' type='FLOAT'/><template name='B'/>";
    for (const std::string package : {"d", "c", "b", "a", "e.f"}) {
        std::string path = package;
        std::replace(path.begin(), path.end(), '.', '/');
        WriteFile(path + "/F.template", "<?xml version='1.0'?><templates package='" + package +
                                            "'>" + kDefinitions + "</templates>");
    }
    OviTemplateManager_AddSearchPath(Directory().c_str(), true);
    EXPECT_EQ(Load("<type name='W' type='d.V'/><template name='T'><extends template='c.B'/>"
                   "<attribute name='x' type='b.B'/><attribute name='y' type='a.B' "
                   "reference='1'/><attribute name='z' type='e.f.V' reference='1'/></template>"),
              Lines{});
    const std::string content = SavedContent();
    EXPECT_EQ(content.substr(0, content.find("\t<type")),
              "\t<using package='a'/>\n\t<using package='b'/>\n\t<using package='c'/>\n"
              "\t<using package='d'/>\n\t<using package='e.f'/>\n");
}

TEST_F(TemplateFileRoot, UsesThePackagesOfLevelsOfDetail) {
    WriteFile("in/levels/L.template", "<?xml version='1.0'?><templates package='levels'>"
                                      "<lod name='High'/></templates>");
    OviTemplateManager_AddSearchPath(PathOf("in").c_str(), false);
    EXPECT_EQ(Load("<using package='levels'/><template name='T'><geometry name='g'>"
                   "<alternate lod='High'/></geometry></template>"),
              Lines{});
    const std::string saved = Save();
    EXPECT_NE(saved.find("\t<using package='levels'/>\n"), std::string::npos) << saved;
    Restart();
    OviTemplateManager_AddSearchPath(PathOf("in").c_str(), false);
    EXPECT_TRUE(LoadText(saved));
    auto* geometry = static_cast<OviGeometryProperty*>(OviTemplate_GetProperty(Get("p.T"), "g"));
    EXPECT_EQ(OviGeometryProperty_GetAlternateCount(geometry), 1);
}

TEST_F(TemplateFileRoot, DoesNotUseItsOwnPackage) {
    Load("<type name='V' type='FLOAT'/><template name='B'/><template name='T'><extends "
         "template='B'/><attribute name='a' type='V'/></template>");
    EXPECT_EQ(Save().find("using"), std::string::npos);
}

TEST_F(TemplateFileRoot, HasThePackageOfTheFirstTemplateInKeyOrder) {
    EXPECT_EQ(Load("<template name='T'/><templates package='a'/><template name='U'/>"), Lines{});
    EXPECT_EQ(Save(), "<?xml version='1.0' encoding='UTF-8'?>\n<templates package='a'>\n"
                      "\t<template name='U'/>\n\t<templates package='p'/>\n"
                      "\t<template name='T'/>\n</templates>");
    ExpectRoundTrip();
}

TEST_F(TemplateFileRoot, HasNoPackageWithoutATemplate) {
    Load("<type name='V' type='FLOAT'/><enum name='E' type='INT32'/>");
    EXPECT_EQ(Save(),
              "<?xml version='1.0' encoding='UTF-8'?>\n<templates>\n\t<using package='p'/>\n"
              "\t<type name='V' type='FLOAT'/>\n\t<enum name='E' type='INT32'/>\n"
              "</templates>");
}

TEST_F(TemplateFileRoot, IsAllThereIsOfAFileWithoutDefinitions) {
    Load("");
    EXPECT_EQ(Save(), "<?xml version='1.0' encoding='UTF-8'?>\n<templates/>");
}

TEST_F(TemplateFileRoot, TemplatesOfPackagesInsideKeepTheirNames) {
    EXPECT_EQ(Load("<template name='T'/><template name='sub.U'><extends template='p.T'/>"
                   "</template>"),
              Lines{});
    EXPECT_EQ(SavedContent(), "\t<template name='T'/>\n\t<template name='sub.U'>\n"
                              "\t\t<extends template='p.T'/>\n\t</template>");
    ExpectRoundTrip();
}

} // namespace
