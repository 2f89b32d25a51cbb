// Types and enumerations in template files, and how names are found.

#include "api/TemplateFileHost.h"

namespace {

class TemplateFileTypes : public TemplateFileTest {};

TEST_F(TemplateFileTypes, TypeIsACloneOfItsBaseWithItsOwnDimension) {
    EXPECT_EQ(Load("<type name='V' type='FLOAT' dim='3'/><type name='W' type='V'/>"
                   "<type name='X' type='V' dim='x'/>"),
              Lines{});
    OviType* v = OviTemplateManager_GetType("p.V");
    OviType* w = OviTemplateManager_GetType("p.W");
    EXPECT_EQ(OviObject_GetClass(v), OVI_CLASS_FLOAT_TYPE);
    EXPECT_STREQ(OviType_GetFullName(OviType_GetBaseType(v)), "FLOAT");
    EXPECT_EQ(OviType_GetBaseType(w), v);
    EXPECT_EQ(OviType_GetAlignment(v), 4);
    EXPECT_NE(SchemaDump::Of().find("type p.V class 4 package 'p' file '" + path_ +
                                    "' base FLOAT alignment 4 dimension 3"),
              std::string::npos);
    EXPECT_NE(SchemaDump::Of().find("base p.V alignment 4 dimension 1"), std::string::npos);
    EXPECT_NE(SchemaDump::Of().find("base p.V alignment 4 dimension 0"), std::string::npos);
}

TEST_F(TemplateFileTypes, TypeOverAnEnumerationIsAnEnumerationWithItsItems) {
    EXPECT_EQ(Load("<enum name='E' type='INT32'><item name='A' value='7'/></enum>"
                   "<type name='F' type='E'/>"),
              Lines{});
    OviEnumeration* copy = OviTemplateManager_GetEnumeration("p.F");
    ASSERT_TRUE(copy);
    EXPECT_EQ(OviEnumeration_GetItemCount(copy), 1);
    EXPECT_EQ(OviType_GetBaseType(copy), OviTemplateManager_GetEnumeration("p.E"));
}

TEST_F(TemplateFileTypes, TypeOverATemplateIsATemplate) {
    EXPECT_EQ(Load("<template name='T'><attribute name='a' type='BOOL' version='2'/></template>"
                   "<type name='U' type='T'/>"),
              Lines{});
    OviTemplate* copy = Get("p.U");
    ASSERT_TRUE(copy);
    EXPECT_TRUE(Attribute(copy, "a"));
    EXPECT_EQ(OviTemplate_GetLatestVersion(copy), 1);
    EXPECT_EQ(OviType_GetBaseType(copy), Get("p.T", 2));
}

TEST_F(TemplateFileTypes, EnumerationHasItsItemsInOrderOfNames) {
    EXPECT_EQ(Load("<enum name='E' type='STRING'><item name='Red' value='r'/>"
                   "<item name='Blue' value='&lt;b&gt;'/><item name='Green' value=''/></enum>"),
              Lines{});
    OviEnumeration* enumeration = OviTemplateManager_GetEnumeration("p.E");
    std::string names;
    for (int i = 0; i < OviEnumeration_GetItemCount(enumeration); ++i)
        names +=
            std::string(OviNamedObject_GetName(OviEnumeration_GetItemAt(enumeration, i))) + " ";
    EXPECT_EQ(names, "Blue Green Red ");
    EXPECT_EQ(OviType_GetAlignment(enumeration), 4);
}

TEST_F(TemplateFileTypes, SecondItemOfANameReplacesTheFirst) {
    Load("<enum name='E' type='INT32'><item name='A' value='1'/><item name='A' value='2'/></enum>"
         "<template name='T'/>");
    EXPECT_EQ(OviEnumeration_GetItemCount(OviTemplateManager_GetEnumeration("p.E")), 1);
    EXPECT_NE(SavedContent().find("<item name='A' value='2'/>"), std::string::npos);
}

TEST_F(TemplateFileTypes, RefusedEnumerationLeavesItsItemsAlone) {
    EXPECT_EQ(Load("<enum name='E' type='nothing'><item name='A' value='1'/></enum>"
                   "<enum name='F' type='INT32'/>")
                  .size(),
              2u);
    EXPECT_TRUE(OviTemplateManager_GetEnumeration("p.F"));
}

TEST_F(TemplateFileTypes, NamesAreFoundInTheOwnPackageInUsedOnesAndInFull) {
    WriteFile("q/G.template", "<?xml version='1.0'?><templates package='q'><type name='V' "
                              "type='FLOAT'/><template name='B'/></templates>");
    OviTemplateManager_AddSearchPath(Directory().c_str(), false);
    EXPECT_EQ(Load("<using package='q'/><type name='W' type='INT32'/><template name='T'>"
                   "<extends template='B'/><attribute name='a' type='V'/>"
                   "<attribute name='b' type='W'/><attribute name='c' type='q.V'/>"
                   "<attribute name='d' type='p.W'/></template>"),
              Lines{});
    OviTemplate* type = Get("p.T");
    EXPECT_EQ(TypeOf(Attribute(type, "a")), "q.V");
    EXPECT_EQ(TypeOf(Attribute(type, "b")), "p.W");
    EXPECT_EQ(TypeOf(Attribute(type, "c")), "q.V");
    EXPECT_EQ(TypeOf(Attribute(type, "d")), "p.W");
    EXPECT_TRUE(OviTemplate_IsChildOf(type, Get("q.B")));
}

TEST_F(TemplateFileTypes, NameWithoutPackageIsPreferredAndTheFirstPackageInOrderNext) {
    const auto write = [this](const std::string& package, const char* base) {
        WriteFile(package + "/F.template", "<?xml version='1.0'?><templates package='" + package +
                                               "'><type name='V' type='" + base +
                                               "'/></templates>");
    };
    write("b", "FLOAT");
    write("a", "INT32");
    OviTemplateManager_AddSearchPath(Directory().c_str(), false);
    EXPECT_EQ(Load("<using package='b'/><using package='a'/><type name='FLOAT' type='BOOL'/>"
                   "<template name='T'><attribute name='v' type='V'/><attribute name='f' "
                   "type='FLOAT'/></template>"),
              Lines{});
    EXPECT_EQ(TypeOf(Attribute(Get("p.T"), "v")), "a.V");
    EXPECT_EQ(TypeOf(Attribute(Get("p.T"), "f")), "FLOAT");
}

TEST_F(TemplateFileTypes, PackageThatFailsToLoadStaysInTheListOfPrefixes) {
    WriteFile("in/p/E.template", "<?xml version='1.0'?><templates package='q'><type name='V' "
                                 "type='FLOAT'/></templates>");
    ASSERT_TRUE(OviTemplateManager_LoadTemplateFile(PathOf("in/p/E.template").c_str()));
    EXPECT_EQ(Load("<using package='q'/><template name='T'><attribute name='a' type='V'/>"
                   "</template>"),
              Lines{"2 3 Package not found: q"});
    EXPECT_EQ(TypeOf(Attribute(Get("p.T"), "a")), "q.V");
}

TEST_F(TemplateFileTypes, EachFileOfAPackageStartsAfresh) {
    WriteFile("q/A.template", "<?xml version='1.0'?><templates package='q'><template name='T'>"
                              "<!-- pending -->");
    WriteFile("q/B.template", "<?xml version='1.0'?><templates><template name='U'/></templates>");
    OviTemplateManager_AddSearchPath(Directory().c_str(), false);
    EXPECT_TRUE(OviTemplateManager_LoadPackage("q"));
    EXPECT_EQ(Errors(), Lines{"1 1 Missing closing element for template: 'q.T'"});
    ASSERT_TRUE(Get("U"));
    EXPECT_EQ(CommentOf(Get("U")), "");
}

} // namespace
