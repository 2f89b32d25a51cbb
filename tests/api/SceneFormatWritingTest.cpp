// How scenes are written, to the byte, and that reading gives them back.

#include "api/SceneHost.h"

namespace {

class SceneFormatWriting : public SceneTest {
protected:
    std::string Save() {
        const std::string path = PathOf("saved.asset");
        EXPECT_TRUE(OviAssetManager_SaveScene(path.c_str()));
        return ReadFile(path);
    }

    /// Expects that saving, loading into an empty scene and saving again changes nothing.
    std::string SaveTwice() {
        const std::string first = Save();
        OviAssetManager_NewScene();
        EXPECT_TRUE(OviAssetManager_LoadScene(PathOf("saved.asset").c_str()));
        EXPECT_EQ(Errors(), Lines{});
        EXPECT_EQ(Save(), first);
        return first;
    }

    static std::string Scene(const std::string& content) {
        return std::string("<?xml version='1.0' encoding='UTF-8'?>\n<assets") +
               (content.empty() ? "/>" : ">\n" + content + "\n</assets>");
    }
};

TEST_F(SceneFormatWriting, EmptySceneIsItsRoot) {
    EXPECT_EQ(SaveTwice(), Scene(""));
}

TEST_F(SceneFormatWriting, AssetsStandInOrderOfNamesWithTemplatesAndPropertiesInOrder) {
    Schema("<templates package='q'/><template name='B'><attribute name='b' type='INT32'/>"
           "<attribute name='a' type='INT32' version='2'/></template><template name='A'/>");
    AssetOf("q.B", "y");
    OviInstance_AddTemplate(OviAssetManager_GetAsset("y"), TemplateOf("q.A"));
    OviAssetManager_NewAsset("X");
    EXPECT_EQ(SaveTwice(), Scene("\t<asset name='X'/>\n\t<asset name='y'>\n"
                                 "\t\t<implements template='q.A' version='1'/>\n"
                                 "\t\t<implements template='q.B' version='2'/>\n"
                                 "\t\t<attribute property='B.a' binding=''/>\n"
                                 "\t\t<attribute property='B.b' binding=''/>\n\t</asset>"));
}

TEST_F(SceneFormatWriting, ValueOfOneElementIsAnAttributeSeveralAreChildren) {
    Schema("<type name='V' type='FLOAT' dim='2'/><type name='L' type='STRING' dim='0'/>"
           "<template name='T'><attribute name='a' type='FLOAT'/><attribute name='b' type='V'/>"
           "<attribute name='c' type='L'/><attribute name='d' type='L'/><attribute name='e' "
           "type='L'/></template>");
    EXPECT_TRUE(Load("<asset name='x'><implements template='T'/>"
                     "<attribute property='T.a' value='1e6' binding='it&apos;s'/>"
                     "<attribute property='T.b'><value>.5</value><value>-2</value></attribute>"
                     "<attribute property='T.c'><value>a</value><value>&lt;b&gt; </value>"
                     "<value/></attribute><attribute property='T.d' value='&amp;'/></asset>"));
    EXPECT_EQ(SaveTwice(),
              Scene("\t<asset name='x'>\n\t\t<implements template='T' version='1'/>\n"
                    "\t\t<attribute property='T.a' binding='it&apos;s' value='1e+06'/>\n"
                    "\t\t<attribute property='T.b' binding=''>\n\t\t\t<value>0.5</value>\n"
                    "\t\t\t<value>-2</value>\n\t\t</attribute>\n"
                    "\t\t<attribute property='T.c' binding=''>\n\t\t\t<value>a</value>\n"
                    "\t\t\t<value>&lt;b&gt; </value>\n\t\t\t<value></value>\n\t\t</attribute>\n"
                    "\t\t<attribute property='T.d' binding='' value='&amp;'/>\n"
                    "\t\t<attribute property='T.e' binding=''/>\n\t</asset>"));
}

TEST_F(SceneFormatWriting, NestedInstancesAreAssetsInside) {
    Schema("<template name='N'><attribute name='n' type='INT32'/></template><type name='P' "
           "type='N' dim='2'/><template name='T'><attribute name='p' type='P'/></template>");
    EXPECT_TRUE(Load("<asset name='x'><implements template='T'/><attribute property='T.p' "
                     "binding='b'><asset name='q'><implements template='N'/><attribute "
                     "property='N.n' value='1'/></asset><asset name='r'/></attribute></asset>"));
    EXPECT_EQ(SaveTwice(),
              Scene("\t<asset name='x'>\n\t\t<implements template='T' version='1'/>\n"
                    "\t\t<attribute property='T.p' binding='b'>\n\t\t\t<asset name='q'>\n"
                    "\t\t\t\t<implements template='N' version='1'/>\n"
                    "\t\t\t\t<attribute property='N.n' binding='' value='1'/>\n"
                    "\t\t\t</asset>\n\t\t\t<asset name='r'/>\n\t\t</attribute>\n"
                    "\t</asset>"));
}

TEST_F(SceneFormatWriting, AMissingInstanceLeavesNoGapSoThatTheNextTakesItsPlace) {
    Schema("<template name='N'/><type name='P' type='N' dim='2'/>"
           "<template name='T'><attribute name='p' type='P'/></template>");
    OviInstance* const block[] = {nullptr, OviInstance_New("q")};
    OviAsset* asset = AssetOf("T", "x");
    OviAttributeInstance_SetValue(AttributeOf(asset, "T.p"), block);
    OviObject_Delete(block[1]);
    EXPECT_EQ(NestedIn(asset, "T.p", 0), nullptr);
    EXPECT_EQ(SaveTwice(),
              Scene("\t<asset name='x'>\n\t\t<implements template='T' version='1'/>\n"
                    "\t\t<attribute property='T.p' binding=''>\n\t\t\t<asset name='q'/>\n"
                    "\t\t</attribute>\n\t</asset>"));
    asset = OviAssetManager_GetAsset("x");
    EXPECT_STREQ(OviNamedObject_GetName(NestedIn(asset, "T.p", 0)), "q");
    EXPECT_EQ(NestedIn(asset, "T.p", 1), nullptr);
}

TEST_F(SceneFormatWriting, ReferencesAndLocksAreReadButNotWritten) {
    Schema("<template name='T'><attribute name='a' type='INT32'/></template>");
    EXPECT_TRUE(Load("<asset name='x' reference='f'><implements template='T'/><attribute "
                     "property='T.a' lockValue='1' lockBinding='1'/></asset>"));
    EXPECT_EQ(Save(), Scene("\t<asset name='x'>\n\t\t<implements template='T' version='1'/>\n"
                            "\t\t<attribute property='T.a' binding=''/>\n\t</asset>"));
}

// -- values of every type ---------------------------------------------------------------------

struct Value {
    const char* type;
    const char* text;
};

class SceneFormatValues : public SceneFormatWriting, public ::testing::WithParamInterface<Value> {};

TEST_P(SceneFormatValues, AreTheSameAfterSavingAndLoading) {
    const Value& value = GetParam();
    Schema(std::string("<enum name='E' type='INT32'><item name='I' value='3'/></enum>"
                       "<type name='F0' type='FLOAT' dim='0'/><template name='T'>"
                       "<attribute name='a' type='") +
           value.type + "'/></template>");
    ASSERT_TRUE(Load(std::string("<asset name='x'><implements template='T'/><attribute "
                                 "property='T.a' value='") +
                     value.text + "'/></asset>"));
    const std::string text = SaveTwice();
    EXPECT_NE(text.find(std::string(" value='") + value.text + "'"), std::string::npos) << text;
}

INSTANTIATE_TEST_SUITE_P(
    EveryType, SceneFormatValues,
    ::testing::Values(Value{"BOOL", "true"}, Value{"BOOL", "false"}, Value{"INT16", "-32768"},
                      Value{"UINT16", "65535"}, Value{"INT32", "2147483647"},
                      Value{"INT32", "-2147483648"}, Value{"UINT32", "2147483647"},
                      Value{"INT64", "-2147483648"}, Value{"UINT64", "2147483647"},
                      Value{"FLOAT", "0.1"}, Value{"FLOAT", "-1.17549e-38"}, Value{"FLOAT", "inf"},
                      Value{"DOUBLE", "1.79769e+308"}, Value{"DOUBLE", "nan"},
                      Value{"DOUBLE", "-inf"}, Value{"STRING", ""}, Value{"STRING", " \t\n "},
                      Value{"STRING", "&lt;&gt;&amp;&quot;&apos;&amp;lt;"},
                      Value{"REFERENCE", "\xe8\x91\xb5/\xff\x80"}, Value{"VOID", "x"},
                      Value{"E", "3"}, Value{"F0", "2.5"}));

} // namespace
