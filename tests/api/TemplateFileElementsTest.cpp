// What the elements of template files build.

#include "api/TemplateFileHost.h"

namespace {

class TemplateFileElements : public TemplateFileTest {
protected:
    /// Loads attributes of a template p.T.
    Lines LoadAttributes(const std::string& attributes) {
        return Load("<template name='T'>" + attributes + "</template>");
    }
};

// -- names ------------------------------------------------------------------------------------

TEST_F(TemplateFileElements, AreKnownInAnyCase) {
    EXPECT_EQ(Load("<TEMPLATE name='T'><Attribute name='a' type='BOOL'/></tEmplate>"),
              (Lines{"1 3 Attempting to close element <tEmplate>, which does not match current "
                     "element <TEMPLATE>",
                     "1 4 Attempting to close element <templates>, which does not match current "
                     "element <TEMPLATE>"}));
    EXPECT_TRUE(Attribute(Get("p.T"), "a"));
}

TEST_F(TemplateFileElements, BelongToThePackageOfTheFile) {
    EXPECT_EQ(Load("<template name='T'/><template name='sub.U'/><type name='V' type='FLOAT'/>"
                   "<enum name='E' type='INT32'/>"),
              Lines{});
    EXPECT_STREQ(OviType_GetPackageName(Get("p.T")), "p");
    EXPECT_STREQ(OviType_GetPackageName(Get("p.sub.U")), "p.sub");
    EXPECT_TRUE(OviTemplateManager_GetType("p.V"));
    EXPECT_TRUE(OviTemplateManager_GetEnumeration("p.E"));
}

TEST_F(TemplateFileElements, HaveNoPackageWhereTheFileNamesNone) {
    EXPECT_TRUE(LoadText("<?xml version='1.0'?><templates version='9'><template name='T'/>"
                         "</templates>"));
    EXPECT_EQ(Errors(), Lines{});
    EXPECT_TRUE(Get("T"));
}

TEST_F(TemplateFileElements, KeepTheirPackageWhenASecondRootNamesNone) {
    EXPECT_EQ(Load("<templates/><template name='T'/><templates package='q'/><template name='U'/>"
                   "<templates package=''/><template name='V'/>"),
              Lines{});
    EXPECT_TRUE(Get("p.T") && Get("q.U") && Get("V"));
}

TEST_F(TemplateFileElements, BelongToTheFile) {
    Load("<template name='T'/><type name='V' type='FLOAT'/><enum name='E' type='INT32'/>");
    EXPECT_STREQ(OviType_GetFileName(Get("p.T")), path_.c_str());
    EXPECT_EQ(OviTemplateManager_GetTypesByFileName(path_.c_str(), nullptr, 0), 3);
}

// -- comments ---------------------------------------------------------------------------------

TEST_F(TemplateFileElements, HaveTheCommentInFrontOfThem) {
    EXPECT_EQ(Load("<!-- t --><template name='T'><!-- a --><attribute name='a' type='BOOL'>"
                   "<!-- c --><command execute='x' notification='y'/></attribute></template>"
                   "<!-- v --><type name='V' type='FLOAT'/>"
                   "<!-- e --><enum name='E' type='INT32'><!-- i --><item name='I' value='1'/>"
                   "</enum>"),
              Lines{});
    OviAttributeProperty* attribute = Attribute(Get("p.T"), "a");
    EXPECT_EQ(CommentOf(Get("p.T")), " t ");
    EXPECT_EQ(CommentOf(attribute), " a ");
    EXPECT_EQ(CommentOf(OviProperty_GetCommandAt(attribute, 0)), " c ");
    EXPECT_EQ(CommentOf(OviTemplateManager_GetType("p.V")), " v ");
    OviEnumeration* enumeration = OviTemplateManager_GetEnumeration("p.E");
    EXPECT_EQ(CommentOf(enumeration), " e ");
    EXPECT_EQ(CommentOf(OviEnumeration_GetItemAt(enumeration, 0)), " i ");
}

TEST_F(TemplateFileElements, PassACommentOnUntilCertainElementsEnd) {
    LoadAttributes("<!-- 1 --><attribute name='a' type='BOOL'><label>x</label></attribute>"
                   "<attribute name='b' type='BOOL'><description/></attribute>"
                   "<extends template='Object'/><attribute name='c' type='BOOL'/>"
                   "<!-- 2 --><action/><attribute name='d' type='BOOL'/>");
    EXPECT_EQ(CommentOf(Attribute(Get("p.T"), "a")), " 1 ");
    EXPECT_EQ(CommentOf(Attribute(Get("p.T"), "b")), " 1 ");
    EXPECT_EQ(CommentOf(Attribute(Get("p.T"), "c")), "");
    EXPECT_EQ(CommentOf(Attribute(Get("p.T"), "d")), "");
}

TEST_F(TemplateFileElements, EmptyCommentEndsTheOneBeforeIt) {
    LoadAttributes("<!-- 1 --><attribute name='a' type='BOOL'/><!---->"
                   "<attribute name='b' type='BOOL'/>");
    EXPECT_EQ(CommentOf(Attribute(Get("p.T"), "a")), " 1 ");
    EXPECT_EQ(CommentOf(Attribute(Get("p.T"), "b")), "");
}

TEST_F(TemplateFileElements, CommentInsideASkippedTemplateEndsWithItsElement) {
    Load("<template name='a b'><!-- 1 --><extends template='Object'/></template>"
         "<template name='T'/><template name='a b'><!-- 2 --></template><template name='U'/>");
    EXPECT_EQ(CommentOf(Get("p.T")), "");
    EXPECT_EQ(CommentOf(Get("p.U")), " 2 ");
}

TEST_F(TemplateFileElements, CommentInsideASkippedTemplateEndsWithTheElementsThatEndComments) {
    for (const char* element : {"view", "group", "property", "item", "nonsense"}) {
        Restart();
        Load("<template name='a b'><!-- 1 --><" + std::string(element) +
             "/></template><template name='T'/>");
        EXPECT_EQ(CommentOf(Get("p.T")), "") << element;
    }
    for (const char* element : {"node", "geometry", "lod", "enum", "label"}) {
        Restart();
        Load("<template name='a b'><!-- 1 --><" + std::string(element) +
             "/></template><template name='T'/>");
        EXPECT_EQ(CommentOf(Get("p.T")), " 1 ") << element;
    }
}

TEST_F(TemplateFileElements, SkippedViewItemsLeaveTheOpenOnesAlone) {
    Load("<template name='T'><attribute name='a' type='BOOL'/></template><view name='v' "
         "template='T'><group name='g'><template name='a b'><group/><view/></template>"
         "<property name='a'/></group></view>");
    OviView* view = OviTemplate_GetView(Get("p.T"), "v", false);
    ASSERT_EQ(OviGroup_GetViewItemCount(view), 1);
    auto* group = static_cast<OviGroup*>(OviGroup_GetViewItemAt(view, 0));
    EXPECT_EQ(OviGroup_GetViewItemCount(group), 1);
}

TEST_F(TemplateFileElements, TypeKeepsNoCommentOfItsBase) {
    Load("<!-- v --><type name='V' type='FLOAT'/><type name='W' type='V'/>");
    EXPECT_EQ(CommentOf(OviTemplateManager_GetType("p.W")), "");
}

TEST_F(TemplateFileElements, TypesEnumerationsLevelsAndPackagesMayStandInsideAMember) {
    WriteFile("q/G.template", Wrap("<template name='Base'/>"));
    OviTemplateManager_AddSearchPath(Directory().c_str(), false);
    EXPECT_EQ(Load("<template name='T'><attribute name='a' type='INT32'><type name='V' "
                   "type='FLOAT'/><enum name='E' type='INT32'><item name='I' value='1'/></enum>"
                   "<lod name='L'/><using package='q'/><label>a</label></attribute>"
                   "<type name='W' type='V'/><extends template='Base'/></template>"),
              Lines{});
    for (const char* name : {"p.V", "p.W"})
        EXPECT_NE(OviTemplateManager_GetType(name), nullptr) << name;
    EXPECT_EQ(OviEnumeration_GetItemCount(OviTemplateManager_GetEnumeration("p.E")), 1);
    EXPECT_NE(OviTemplateManager_GetLOD("L"), nullptr);
    EXPECT_STREQ(OviNamedObject_GetLabel(Attribute(Get("p.T"), "a"), nullptr), "a")
        << "the attribute is still open";
    EXPECT_NE(OviTemplate_GetParent(Get("p.T"), "p.Base#1"), nullptr);
}

// -- labels and descriptions ------------------------------------------------------------------

TEST_F(TemplateFileElements, LabelsAndDescriptionsGoToTheInnermostObject) {
    EXPECT_EQ(LoadAttributes("<label>T</label><attribute name='a' type='BOOL'>"
                             "<label language='de'>a</label><description>d</description>"
                             "</attribute><description language='fr'>D</description>"),
              Lines{});
    OviTemplate* type = Get("p.T");
    EXPECT_STREQ(OviNamedObject_GetLabel(type, nullptr), "T");
    EXPECT_STREQ(OviNamedObject_GetDescription(type, "fr"), "D");
    EXPECT_STREQ(OviNamedObject_GetLabel(Attribute(type, "a"), "de"), "a");
    EXPECT_STREQ(OviNamedObject_GetDescription(Attribute(type, "a"), nullptr), "d");
}

TEST_F(TemplateFileElements, LabelIsPutTogetherFromItsPieces) {
    LoadAttributes("<label> a &lt;<!-- not this -->b\n<action/>c</label>outside<label "
                   "language='de'></label>");
    EXPECT_STREQ(OviNamedObject_GetLabel(Get("p.T"), nullptr), " a <b\nc");
    EXPECT_STREQ(OviNamedObject_GetLabel(Get("p.T"), "de"), "");
}

TEST_F(TemplateFileElements, LanguageIsTheDefaultWhereItIsMissingEmptyOrBeginsWithAMinus) {
    for (const char* language : {"", " language=''", " language='-'", " language='-de'"}) {
        Restart();
        LoadAttributes(std::string("<label") + language + ">x</label>");
        ASSERT_EQ(OviNamedObject_GetLabelCount(Get("p.T")), 1) << language;
        EXPECT_EQ(OviNamedObject_GetLabelLanguageAt(Get("p.T"), 0), nullptr) << language;
    }
}

// -- attributes -------------------------------------------------------------------------------

TEST_F(TemplateFileElements, AttributeHasTypeReferenceDefaultBoundsAndAutoBind) {
    EXPECT_EQ(LoadAttributes("<attribute name='a' type='INT32' reference='true' default='3' "
                             "min='1' max='9' autoBind='x.y'/>"),
              Lines{});
    OviAttributeProperty* attribute = Attribute(Get("p.T"), "a");
    EXPECT_EQ(TypeOf(attribute), "INT32");
    EXPECT_TRUE(OviAttributeProperty_IsReference(attribute));
    EXPECT_EQ(DefaultOf(attribute), "3");
    EXPECT_EQ(BoundsOf(attribute), "1 9");
    EXPECT_STREQ(OviAttributeProperty_GetAutoBind(attribute), "x.y");
}

TEST_F(TemplateFileElements, MissingDefaultOrMinimumEndsTheChainOfValues) {
    LoadAttributes("<attribute name='a' type='INT32' min='1' max='9'/>"
                   "<attribute name='b' type='INT32' default='2' max='9'/>"
                   "<attribute name='c' type='INT32' default='' min='' max=''/>");
    OviTemplate* type = Get("p.T");
    EXPECT_EQ(DefaultOf(Attribute(type, "a")) + " " + BoundsOf(Attribute(type, "a")),
              "none none none");
    EXPECT_EQ(DefaultOf(Attribute(type, "b")) + " " + BoundsOf(Attribute(type, "b")),
              "2 none none");
    EXPECT_EQ(DefaultOf(Attribute(type, "c")) + " " + BoundsOf(Attribute(type, "c")), "0 0 0");
}

TEST_F(TemplateFileElements, ReferenceIsFalseWhenItIsEmptyOrBeginsWithZeroOrASmallF) {
    const std::pair<const char*, bool> kTexts[] = {
        {"", false}, {"0", false},   {"00", false}, {"false", false}, {"f", false},
        {"F", true}, {"true", true}, {"1", true},   {" 0", true},     {"no", true}};
    for (const auto& [text, expected] : kTexts) {
        Restart();
        LoadAttributes(std::string("<attribute name='a' type='BOOL' reference='") + text + "'/>");
        EXPECT_EQ(OviAttributeProperty_IsReference(Attribute(Get("p.T"), "a")), expected) << text;
    }
}

TEST_F(TemplateFileElements, UnknownTypeBecomesACustomTypeOfTheAttribute) {
    LoadAttributes("<attribute name='a' type='Vec3' default='1'/>");
    OviAttributeProperty* attribute = Attribute(Get("p.T"), "a");
    OviType* type = OviAttributeProperty_GetType(attribute);
    EXPECT_EQ(OviObject_GetClass(type), OVI_CLASS_CUSTOM_TYPE);
    EXPECT_STREQ(OviType_GetFullName(type), "Vec3");
    EXPECT_EQ(OviType_GetAlignment(type), 1);
    EXPECT_EQ(OviTemplateManager_ResolveType("Vec3"), nullptr);
    EXPECT_EQ(OviAttributeProperty_GetDefaultValue(attribute), nullptr);
}

TEST_F(TemplateFileElements, AttributeRefusedItsTypeStaysWithoutOneAndWithoutDefault) {
    LoadAttributes("<attribute name='a' type='T' default='T'/>"
                   "<attribute name='b' type='T' reference='1'/>");
    EXPECT_EQ(TypeOf(Attribute(Get("p.T"), "a")), "none");
    EXPECT_EQ(OviAttributeProperty_GetDefaultValue(Attribute(Get("p.T"), "a")), nullptr);
    EXPECT_EQ(TypeOf(Attribute(Get("p.T"), "b")), "p.T");
}

TEST_F(TemplateFileElements, DefaultOfAVariableLengthIsNotStored) {
    Load("<type name='L' type='FLOAT' dim='0'/><template name='T'><attribute name='a' type='L' "
         "default='1' min='2'/></template>");
    EXPECT_EQ(DefaultOf(Attribute(Get("p.T"), "a")), "none");
}

TEST_F(TemplateFileElements, SecondAttributeOfANameAndVersionIsIgnoredWithAllInIt) {
    EXPECT_EQ(LoadAttributes("<attribute name='a' type='BOOL'/><attribute name='a' type='INT32'>"
                             "<label>x</label><command execute='x' notification='y'/></attribute>"),
              Lines{});
    OviAttributeProperty* attribute = Attribute(Get("p.T"), "a");
    EXPECT_EQ(TypeOf(attribute), "BOOL");
    EXPECT_EQ(OviNamedObject_GetLabelCount(attribute), 0);
    EXPECT_EQ(OviProperty_GetCommandCount(attribute), 0);
}

TEST_F(TemplateFileElements, AssetBecomesTheDefaultWithoutCountingItsFile) {
    StartRecording();
    EXPECT_EQ(Load("<template name='T'/><template name='U'><attribute name='a' type='T'>"
                   "<asset name='chair' reference='chairs.asset'/></attribute></template>"),
              Lines{});
    EXPECT_EQ(Events(), Lines{});
    auto** block =
        static_cast<OviAsset**>(OviAttributeProperty_GetDefaultValue(Attribute(Get("p.U"), "a")));
    ASSERT_TRUE(block && block[0]);
    EXPECT_STREQ(OviNamedObject_GetName(block[0]), "chair");
    EXPECT_STREQ(OviAsset_GetReference(block[0]), "chairs.asset");
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 0);
}

TEST_F(TemplateFileElements, CommandIsAddedUnderItsExecuteText) {
    LoadAttributes("<attribute name='a' type='BOOL'><command execute='x' notification='Maya'/>"
                   "<command execute='x' notification='BindingChanged'/></attribute>");
    OviAttributeProperty* attribute = Attribute(Get("p.T"), "a");
    ASSERT_EQ(OviProperty_GetCommandCount(attribute), 1);
    OviCommand* command = OviProperty_GetCommandAt(attribute, 0);
    EXPECT_STREQ(OviNamedObject_GetName(command), "x");
}

// -- versions ---------------------------------------------------------------------------------

TEST_F(TemplateFileElements, VersionsComeIntoBeingWhereTheyAreFirstNamed) {
    EXPECT_EQ(Load("<template name='B'/><template name='T'><attribute name='a' type='BOOL' "
                   "version='3'/><extends template='B' version='5'/></template>"),
              Lines{});
    EXPECT_FALSE(Get("p.T", 2));
    EXPECT_TRUE(Get("p.T", 3));
    EXPECT_EQ(OviTemplate_GetLatestVersion(Get("p.T")), 5);
    EXPECT_EQ(OviTemplate_GetProperty(Get("p.T"), "a"), nullptr);
    EXPECT_TRUE(OviTemplate_IsChildOf(Get("p.T", 5), Get("p.B")));
    EXPECT_FALSE(OviTemplate_IsChildOf(Get("p.T", 3), Get("p.B")));
}

TEST_F(TemplateFileElements, PropertiesAndParentsReachEveryLaterVersion) {
    Load("<template name='B'/><template name='T'><attribute name='n' type='BOOL' version='2'/>"
         "<attribute name='a' type='BOOL'/><extends template='B'/></template>");
    EXPECT_EQ(OviTemplate_GetProperty(Get("p.T"), "a"),
              OviTemplate_GetProperty(Get("p.T", 2), "a"));
    EXPECT_TRUE(OviTemplate_IsChildOf(Get("p.T", 2), Get("p.B")));
}

TEST_F(TemplateFileElements, VersionBelowOneIsNotMade) {
    EXPECT_EQ(LoadAttributes("<attribute name='a' type='BOOL' version='0'/>"
                             "<attribute name='b' type='BOOL' version='x'/>"
                             "<attribute name='c' type='BOOL' version='-3'><label/></attribute>"),
              Lines{});
    EXPECT_EQ(OviTemplate_GetPropertyCount(Get("p.T")), 0);
    EXPECT_EQ(OviTemplate_GetLatestVersion(Get("p.T")), 1);
}

TEST_F(TemplateFileElements, TemplateMayBeContinuedInTheSameFile) {
    EXPECT_EQ(Load("<!-- 1 --><template name='T'><attribute name='a' type='BOOL'/></template>"
                   "<!-- 2 --><template name='T'><attribute name='b' type='BOOL'/></template>"),
              Lines{});
    EXPECT_EQ(OviTemplate_GetPropertyCount(Get("p.T")), 2);
    EXPECT_EQ(CommentOf(Get("p.T")), " 2 ");
}

} // namespace
