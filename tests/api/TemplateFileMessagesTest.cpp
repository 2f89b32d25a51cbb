// Every diagnostic of the template file reader, with its level, line and place in the order of
// checks. The content of each case begins in line 3.

#include "api/TemplateFileHost.h"

namespace {

struct Case {
    const char* name;
    const char* content;
    std::vector<std::string> errors;
};

void PrintTo(const Case& testCase, std::ostream* stream) {
    *stream << testCase.name;
}

std::string NameRule(const std::string& word, const std::string& name) {
    return "Invalid " + word + " name: '" + name +
           "'. Valid characters must be in the range [A-Z][a-z][0-9][_]. Ignoring " + word + ".";
}

std::string NameOf(const ::testing::TestParamInfo<Case>& info) {
    return info.param.name;
}

class TemplateFileMessages : public TemplateFileTest, public ::testing::WithParamInterface<Case> {};

TEST_P(TemplateFileMessages, AreReportedWithLevelAndLine) {
    EXPECT_EQ(Load(GetParam().content), GetParam().errors);
}

const Case kTemplates[] = {
    {"NothingWrong", "<template name='T'/>", {}},
    {"TemplateWithoutName",
     "\n<template/>",
     {"1 4 <template> element must have an 'name' attribute"}},
    {"TemplateWithNameInCapitals",
     "<template NAME='T'/>",
     {"1 3 <template> element must have an 'name' attribute"}},
    {"NestedTemplate",
     "<template name='T'>\n<template name='U'/></template>",
     {"1 4 Unexpected nested <template> elements"}},
    {"NestedTemplateEndsTheOuterOne",
     "<template name='T'><template name='U'/><attribute/></template>",
     {"1 3 Unexpected nested <template> elements",
      "1 3 <attribute> must occur inside a <template> element"}},
    {"NestedTemplateBeforeItsName",
     "<template name='T'><template/></template>",
     {"1 3 Unexpected nested <template> elements"}},
    {"TemplateName", "<template name='a b'/>", {"1 3 " + NameRule("template", "a b")}},
    {"EmptyTemplateName", "<template name=''/>", {"1 3 " + NameRule("template", "")}},
    {"TemplateNameEndingInADot", "<template name='a.'/>", {"1 3 " + NameRule("template", "a.")}},
    {"RefusedTemplateSkipsAllInIt",
     "<template name='a b'>\n<extends/><attribute/><nonsense/>\n<template name='c'>\n<attribute/>\n"
     "</template><attribute/></template>",
     {"1 3 " + NameRule("template", "a b")}},
    {"ExtendsOutside",
     "<extends template='Object'/>",
     {"1 3 <extends> must occur inside a <template> element"}},
    {"ExtendsOutsideBeforeItsAttribute",
     "<extends/>",
     {"1 3 <extends> must occur inside a <template> element"}},
    {"ExtendsWithoutTemplate",
     "<template name='T'>\n\n<extends/></template>",
     {"1 5 <extends> requires a 'template' attribute"}},
    {"ExtendsUnknown",
     "<template name='T'>\n<extends template='p.U'/></template>",
     {"1 4 Template not found: 'p.U'"}},
    {"ExtendsUnknownVersion",
     "<template name='T'/>\n<template name='U'><extends template='T' templateVersion='2'/>"
     "</template>",
     {"1 4 Template not found: 'T'"}},
    {"VersionThatIsNoNumberCountsAsZero",
     "<template name='T'/>\n<template name='U'><extends template='T' templateVersion='x'/>"
     "</template>",
     {"1 4 Template not found: 'T'"}},
    {"UnknownElement",
     "<nonsense>\n</nonsense>",
     {"2 3 Unknown element <nonsense> was ignored and will not be saved"}},
    {"IgnoredElements", "<action/><lods/><ACTION/>", {}},
    {"UnknownPackage", "\n<using package='no.where'/>", {"2 4 Package not found: no.where"}},
    {"UsingWithoutPackage", "<using/>", {}},
};
INSTANTIATE_TEST_SUITE_P(Templates, TemplateFileMessages, ::testing::ValuesIn(kTemplates), &NameOf);

const Case kAttributes[] = {
    {"Outside", "<attribute/>", {"1 3 <attribute> must occur inside a <template> element"}},
    {"Nested",
     "<template name='T'><attribute name='a' type='BOOL'>\n<attribute/></attribute></template>",
     {"1 4 Unexpected nested <attribute> element"}},
    {"NestedEndsTheOuterOne",
     "<template name='T'><attribute name='a' type='BOOL'><attribute/><command/></attribute>"
     "</template>",
     {"1 3 Unexpected nested <attribute> element", "1 3 <command> must occur inside a property"}},
    {"WithoutName",
     "<template name='T'><attribute/></template>",
     {"1 3 <attribute> element must have an 'name' attribute"}},
    {"BadNameIsReportedAsMissingType",
     "<template name='T'><attribute name='a b'/></template>",
     {"1 3 <attribute> element must have an 'type' attribute"}},
    {"MissingTypeIsReportedAsBadName",
     "<template name='T'><attribute name='a'/></template>",
     {"1 3 " + NameRule("attribute", "a")}},
    {"UnknownType",
     "<template name='T'>\n<attribute name='a' type='Vec3'/></template>",
     {"2 4 Unknown type 'Vec3', creating custom type dynamically"}},
    {"ContainingItself",
     "<template name='T'>\n<attribute name='a' type='T'/></template>",
     {"1 4 Assigning type 'T' to attribute 'a' would cause circular reference. Ignoring type."}},
    {"AssetOutside", "<asset/>", {"1 3 <asset> must occur inside an attribute"}},
    {"AssetInsideAPlainAttribute",
     "<template name='T'><attribute name='a' type='BOOL'><asset name='x'/></attribute></template>",
     {"1 3 <asset> must occur inside an attribute"}},
    {"AssetInsideAnAttributeWithoutType",
     "<template name='T'><attribute name='a' type='T'><asset name='x'/></attribute></template>",
     {"1 3 Assigning type 'T' to attribute 'a' would cause circular reference. Ignoring type.",
      "1 3 <asset> must occur inside an attribute"}},
    {"AssetWithoutName",
     "<template name='T'/><template name='U'><attribute name='a' type='T'>\n<asset/></attribute>"
     "</template>",
     {"1 4 <asset> element must have an 'name' attribute"}},
    {"CommandOutside",
     "<template name='T'><command/></template>",
     {"1 3 <command> must occur inside a property"}},
    {"CommandWithoutExecute",
     "<template name='T'><attribute name='a' type='BOOL'><command/></attribute></template>",
     {"1 3 <command> requires a 'execute' attribute"}},
    {"CommandWithoutNotification",
     "<template name='T'><attribute name='a' type='BOOL'><command execute='x'/></attribute>"
     "</template>",
     {"1 3 <command> requires a 'when' attribute"}},
    {"LabelOutside",
     "<label>x</label>",
     {"1 3 <label> must occur inside a <template>, <attribute>, <view>, <group>, or a <property> "
      "element"}},
    {"DescriptionOutside",
     "<enum name='E' type='INT32'><description/></enum>",
     {"1 3 <description> must occur inside a <template>, <attribute>, <view>, <group>, or a "
      "<property> element"}},
};
INSTANTIATE_TEST_SUITE_P(Attributes, TemplateFileMessages, ::testing::ValuesIn(kAttributes),
                         &NameOf);

const Case kTypes[] = {
    {"EnumWithoutName", "<enum/>", {"1 3 <enum> element must have an 'name' attribute"}},
    {"EnumWithoutTypeBeforeItsName",
     "<enum name='a b'/>",
     {"1 3 <enum> element must have an 'type' attribute"}},
    {"EnumNameBeforeItsType",
     "<enum name='a b' type='nothing'/>",
     {"1 3 " + NameRule("enumeration", "a b")}},
    {"EnumOfUnknownType", "<enum name='E' type='nothing'/>", {"1 3 Type not found: 'nothing'"}},
    {"EnumOfAnEnumeration",
     "<enum name='E' type='INT32'/>\n<enum name='F' type='p.E'/>",
     {"1 4 Type not found: 'p.E'"}},
    {"NestedEnum",
     "<enum name='E' type='INT32'>\n<enum/></enum>",
     {"1 4 Unexpected nested <enum> element"}},
    {"ItemOutside", "<item/>", {"1 3 <item> must occur inside a <enum> element"}},
    {"ItemWithoutName",
     "<enum name='E' type='INT32'><item/></enum>",
     {"1 3 <item> requires a 'name' attribute"}},
    {"ItemWithoutValueBeforeItsName",
     "<enum name='E' type='INT32'><item name='a b'/></enum>",
     {"1 3 <item> requires a 'value' attribute"}},
    {"ItemName",
     "<enum name='E' type='INT32'><item name='a b' value='1'/></enum>",
     {"1 3 " + NameRule("item", "a b")}},
    {"TypeWithoutName", "<type/>", {"1 3 <type> element must have an 'name' attribute"}},
    {"TypeWithoutTypeBeforeItsName",
     "<type name='a b'/>",
     {"1 3 <type> element must have an 'type' attribute"}},
    {"TypeNameBeforeItsType",
     "<type name='a.b' type='nothing'/>",
     {"1 3 " + NameRule("type", "a.b")}},
    {"TypeOfUnknownType", "<type name='V' type='nothing'/>", {"1 3 Unknown type: nothing"}},
};
INSTANTIATE_TEST_SUITE_P(Types, TemplateFileMessages, ::testing::ValuesIn(kTypes), &NameOf);

// The file ends in line 5.
const Case kUnclosed[] = {
    {"Template",
     "<template name='T'>\n",
     {"1 5 Attempting to close element <templates>, which does not match current element "
      "<template>",
      "1 5 Missing closing element for template: 'p.T'"}},
    {"AttributeOfAClosedTemplate",
     "<template name='T'><attribute name='a' type='BOOL'></template>\n",
     {"1 3 Attempting to close element <template>, which does not match current element "
      "<attribute>",
      "1 5 Attempting to close element <templates>, which does not match current element "
      "<attribute>",
      "1 5 Missing closing element for property: 'a'"}},
    {"InTheOrderTemplatePropertyEnumeration",
     "<enum name='E' type='INT32'><template name='T'><attribute name='a' type='BOOL'>\n",
     {"1 5 Attempting to close element <templates>, which does not match current element "
      "<attribute>",
      "1 5 Missing closing element for template: 'p.T'",
      "1 5 Missing closing element for property: 'a'",
      "1 5 Missing closing element for enumeration: 'E'"}},
    {"InTheOrderTemplatePropertyEnumerationLevelViewItem",
     "<enum name='E' type='INT32'><lod name='L'><template name='T'><attribute name='a' "
     "type='BOOL'><view name='v' template='T'><group name='g'>\n",
     {"1 5 Attempting to close element <templates>, which does not match current element <group>",
      "1 5 Missing closing element for template: 'p.T'",
      "1 5 Missing closing element for property: 'a'",
      "1 5 Missing closing element for enumeration: 'E'",
      "1 5 Missing closing element for level of detail: 'L'",
      "1 5 Missing closing element for view item: 'g'"}},
    {"RefusedTemplateIsNotReported",
     "<template name='a b'>\n",
     {"1 3 " + NameRule("template", "a b"),
      "1 5 Attempting to close element <templates>, which does not match current element "
      "<template>"}},
};
INSTANTIATE_TEST_SUITE_P(Unclosed, TemplateFileMessages, ::testing::ValuesIn(kUnclosed), &NameOf);

class TemplateFileInPackages : public TemplateFileTest {};

TEST_F(TemplateFileInPackages, ReportsTheDefinitionInAnotherFileAndSkipsIt) {
    const std::string first = WriteFile("a/F.template", Wrap("<template name='T'/>"));
    ASSERT_TRUE(OviTemplateManager_LoadTemplateFile(first.c_str()));
    EXPECT_EQ(Load("\n<template name='T'><attribute name='a' type='BOOL'/><nonsense/></template>"),
              Lines{"1 4 Template 'p.T' is already defined in file '" + first +
                    "'. Ignoring new definition."});
    EXPECT_STREQ(OviType_GetFileName(Get("p.T")), first.c_str());
    EXPECT_EQ(OviTemplate_GetPropertyCount(Get("p.T")), 0);
}

TEST_F(TemplateFileInPackages, ReportsFaultsOfAFileThatAnotherOneUses) {
    WriteFile("q/G.template", "<?xml version='1.0'?>\n<templates package='q'>\n<extends/>");
    OviTemplateManager_AddSearchPath(Directory().c_str(), false);
    EXPECT_EQ(Load("<using package='q'/>"),
              Lines{"1 3 <extends> must occur inside a <template> element"});
    OviErrorItem* item = OviErrorManager_GetErrorItemAt(0);
    EXPECT_EQ(OviErrorItem_GetSourceName(item), Directory() + "\\q\\G.template");
}

TEST_F(TemplateFileInPackages, ReportsAFileOfAPackageThatCannotBeRead) {
    WriteFile("q/G.template", "no template file");
    OviTemplateManager_AddSearchPath(Directory().c_str(), false);
    EXPECT_EQ(Load("<using package='q'/>"),
              (Lines{"1 1 Missing XML header element", "2 3 Package not found: q"}));
}

TEST_F(TemplateFileInPackages, TakesAFileWhoseNameDiffersInCaseForTheSame) {
    ASSERT_EQ(Load("<template name='T'/>"), Lines{});
    const std::string other = path_.substr(0, path_.size() - 10) + "F.TEMPLATE";
    LoadText(Wrap("<template name='T'><attribute name='a' type='BOOL'/></template>"));
    EXPECT_EQ(OviTemplate_GetPropertyCount(Get("p.T")), 0) << "loaded already";
    EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(other.c_str()));
    EXPECT_EQ(Errors(), Lines{});
    EXPECT_NE(Attribute(Get("p.T"), "a"), nullptr) << "the template goes on";
}

} // namespace
