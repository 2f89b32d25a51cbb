// Nodes, anchors, geometry and alternates in template files.

#include "api/Schema.h"
#include "api/SchemaDump.h"

namespace {

const std::string kNameRule = "'. Valid characters must be in the range [A-Z][a-z][0-9][_]. ";

class TemplateFileNodesTest : public SchemaTest {
protected:
    /// Loads a file in which the elements stand from line 3 on, and gives what is reported.
    Names Load(const std::string& elements) {
        path_ = WriteSchema("F.template", "<templates>\n" + elements + "\n</templates>");
        EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(path_.c_str()));
        return Errors();
    }

    Names LoadMesh(const std::string& elements) {
        return Load("<template name='Mesh'>" + elements + "</template>");
    }

    /// What stands inside the templates element of the saved file.
    std::string Saved() {
        const std::string output = PathOf("out/F.template");
        EXPECT_TRUE(OviTemplateManager_SaveTemplateFile(path_.c_str(), output.c_str()));
        const std::string text = ReadFile(output);
        const size_t start = text.find("<templates>") + 12;
        return text.substr(start, text.rfind("</templates>") - start);
    }

    /// Expects that the saved file, loaded into an empty registry, gives the same model, and the
    /// same bytes when it is saved again.
    void ExpectSameAgain() {
        const std::string model = SchemaDump::Of(Directory() + "/");
        const std::string saved = Saved();
        Ovi_Terminate();
        Ovi_Initialize();
        OviErrorManager_Clear();
        path_ = PathOf("out/F.template");
        EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(path_.c_str()));
        EXPECT_EQ(Errors(), Names{});
        EXPECT_EQ(SchemaDump::Of(Directory() + "/out/"), model) << saved;
        const std::string again = PathOf("again.template");
        EXPECT_TRUE(OviTemplateManager_SaveTemplateFile(path_.c_str(), again.c_str()));
        EXPECT_EQ(ReadFile(again), ReadFile(path_)) << saved;
    }

    template <class Handle> static Handle* Member(const char* name, int version = 1) {
        OviTemplate* mesh =
            OviTemplateManager_GetTemplateVersion("Mesh", static_cast<uint32_t>(version));
        return static_cast<Handle*>(OviTemplate_GetProperty(mesh, name));
    }

    std::string path_;
};

TEST_F(TemplateFileNodesTest, ANodeHasAncestorAndDistance) {
    EXPECT_EQ(LoadMesh("<node name='a'/><NODE name='b' ancestor='root' distance='3' "
                       "autoBind='x'/><node name='c' ancestor='' distance='far'/>"),
              Names{});
    EXPECT_EQ(OviObject_GetClass(Member<OviNodeProperty>("a")), OVI_CLASS_NODE_PROPERTY);
    EXPECT_STREQ(OviNodeProperty_GetAncestor(Member<OviNodeProperty>("a")), "");
    EXPECT_EQ(OviNodeProperty_GetAncestorDistance(Member<OviNodeProperty>("a")), -1);
    EXPECT_STREQ(OviNodeProperty_GetAncestor(Member<OviNodeProperty>("b")), "root");
    EXPECT_EQ(OviNodeProperty_GetAncestorDistance(Member<OviNodeProperty>("b")), 3);
    EXPECT_STREQ(OviAttributeProperty_GetAutoBind(Member<OviNodeProperty>("b")), "x");
    EXPECT_EQ(OviNodeProperty_GetAncestorDistance(Member<OviNodeProperty>("c")), 0);
}

TEST_F(TemplateFileNodesTest, AnAnchorsSenseIsReadAsAFlag) {
    const std::pair<const char*, bool> kFlags[] = {{"true", true}, {"1", true},  {"F", true},
                                                   {"x", true},    {"0", false}, {"false", false},
                                                   {"f", false},   {"", false},  {"00", false}};
    std::string text = "<anchor name='none'/>";
    int i = 0;
    for (const auto& flag : kFlags)
        text += "<anchor name='a" + std::to_string(i++) + "' child='" + flag.first + "'/>";
    EXPECT_EQ(LoadMesh(text + "<anchor name='far' ancestor='root' distance='2'/>"), Names{});
    EXPECT_FALSE(OviAnchorProperty_IsChild(Member<OviAnchorProperty>("none")));
    i = 0;
    for (const auto& flag : kFlags)
        EXPECT_EQ(OviAnchorProperty_IsChild(
                      Member<OviAnchorProperty>(("a" + std::to_string(i++)).c_str())),
                  flag.second)
            << flag.first;
    EXPECT_STREQ(OviNodeProperty_GetAncestor(Member<OviNodeProperty>("far")), "root");
    EXPECT_EQ(OviNodeProperty_GetAncestorDistance(Member<OviNodeProperty>("far")), 2);
}

TEST_F(TemplateFileNodesTest, AnAnchorBindsByItselfAsItsTextSays) {
    EXPECT_EQ(LoadMesh("<anchor name='a' autoBind='hook'/><anchor name='b' autoBind=''/>"),
              Names{});
    EXPECT_STREQ(OviAttributeProperty_GetAutoBind(Member<OviAnchorProperty>("a")), "hook");
    EXPECT_STREQ(OviAttributeProperty_GetAutoBind(Member<OviAnchorProperty>("b")), "");
    EXPECT_NE(Saved().find("<anchor name='a' autoBind='hook'/>"), std::string::npos) << Saved();
    EXPECT_NE(Saved().find("<anchor name='b'/>"), std::string::npos) << Saved();
    ExpectSameAgain();
}

TEST_F(TemplateFileNodesTest, AGeometryHasAnAlternateForEachLevel) {
    EXPECT_EQ(Load("<lod name='High'/><lod name='Low'/><template name='Mesh'>"
                   "<geometry name='shape'><!--far--><alternate lod='Low'/>"
                   "<alternate lod='High' version='4'/></geometry></template>"),
              Names{});
    auto* shape = Member<OviGeometryProperty>("shape");
    ASSERT_EQ(OviGeometryProperty_GetAlternateCount(shape), 2);
    OviGeometryAlternate* low = OviGeometryProperty_GetAlternate(shape, "Low");
    EXPECT_EQ(OviGeometryAlternate_GetLOD(low), OviTemplateManager_GetLOD("Low"));
    EXPECT_STREQ(OviNamedObject_GetComment(low), "far");
    EXPECT_STREQ(OviNamedObject_GetComment(OviGeometryProperty_GetAlternate(shape, "High")), "");
}

TEST_F(TemplateFileNodesTest, TheSecondAlternateOfALevelStays) {
    EXPECT_EQ(Load("<lod name='High'/><template name='Mesh'><geometry name='shape'>"
                   "<alternate lod='High'/><!--second--><alternate lod='High'/></geometry>"
                   "</template>"),
              Names{});
    auto* shape = Member<OviGeometryProperty>("shape");
    ASSERT_EQ(OviGeometryProperty_GetAlternateCount(shape), 1);
    EXPECT_STREQ(OviNamedObject_GetComment(OviGeometryProperty_GetAlternateAt(shape, 0)), "second");
}

TEST_F(TemplateFileNodesTest, ASecondAlternateLeavesTheFirstToThoseWhoUseIt) {
    WriteSchema("q/Q.template",
                "<templates package='q'><template name='U'>"
                "<attribute name='d' type='p.A' default='p.A'/></template></templates>");
    OviTemplateManager_AddSearchPath(Directory().c_str(), false);
    path_ =
        WriteSchema("P.template", "<templates package='p'><lod name='High'/><template name='A'>"
                                  "<geometry name='g'><alternate lod='High'/><using package='q'/>"
                                  "<alternate lod='High'/></geometry></template></templates>");
    ASSERT_TRUE(OviTemplateManager_LoadTemplateFile(path_.c_str()));
    EXPECT_EQ(Errors(), Names{});
    auto* user = static_cast<OviAttributeProperty*>(
        OviTemplate_GetProperty(OviTemplateManager_GetTemplate("q.U"), "d"));
    auto** value = static_cast<OviInstance**>(OviAttributeProperty_GetDefaultValue(user));
    ASSERT_TRUE(value && value[0]);
    auto* shape =
        static_cast<OviGeometryInstance*>(OviInstance_GetPropertyInstance(value[0], "A.g", false));
    OviNodeInstance* node = OviGeometryInstance_GetNodeInstanceAt(shape, 0);
    auto* used = static_cast<OviGeometryAlternate*>(OviPropertyInstance_GetProperty(node));
    OviTemplate* owner = OviTemplateManager_GetTemplate("p.A");
    EXPECT_NE(OviGeometryProperty_GetAlternateAt(
                  static_cast<OviGeometryProperty*>(OviTemplate_GetProperty(owner, "g")), 0),
              used);
    EXPECT_EQ(NameOf(used), "High");
}

TEST_F(TemplateFileNodesTest, AGeometryOfAnEarlierVersionReachesTheLaterOnesWithItsAlternates) {
    EXPECT_EQ(Load("<lod name='High'/><template name='Mesh'><node name='new' version='3'/>"
                   "<geometry name='shape' version='2'><alternate lod='High'/></geometry>"
                   "</template>"),
              Names{});
    EXPECT_EQ(Member<OviGeometryProperty>("shape", 1), nullptr);
    for (int version : {2, 3}) {
        auto* shape = Member<OviGeometryProperty>("shape", version);
        ASSERT_NE(shape, nullptr) << version;
        EXPECT_EQ(OviGeometryProperty_GetAlternateCount(shape), 1) << version;
    }
    EXPECT_EQ(Member<OviNodeProperty>("new", 2), nullptr);
}

TEST_F(TemplateFileNodesTest, TextsAndCommandsGoToTheOpenMember) {
    EXPECT_EQ(LoadMesh("<!--about--><anchor name='a'><label>L</label>"
                       "<description language='de'>D</description>"
                       "<command execute='run' notification='BindingChanged'/></anchor>"
                       "<geometry name='g'><label>G</label></geometry>"),
              Names{});
    auto* anchor = Member<OviAnchorProperty>("a");
    EXPECT_STREQ(OviNamedObject_GetComment(anchor), "about");
    EXPECT_STREQ(OviNamedObject_GetLabel(anchor, nullptr), "L");
    EXPECT_STREQ(OviNamedObject_GetDescription(anchor, "de"), "D");
    ASSERT_EQ(OviProperty_GetCommandCount(anchor), 1);
    EXPECT_EQ(NameOf(OviProperty_GetCommandAt(anchor, 0)), "run");
    EXPECT_STREQ(OviNamedObject_GetLabel(Member<OviGeometryProperty>("g"), nullptr), "G");
}

struct Finding {
    const char* elements;
    std::string report; // behind "1 3 "
};

void PrintTo(const Finding& finding, std::ostream* out) {
    *out << finding.elements;
}

class NodeFindingTest : public TemplateFileNodesTest,
                        public ::testing::WithParamInterface<Finding> {};

TEST_P(NodeFindingTest, IsReportedAndTheElementIgnored) {
    EXPECT_EQ(Load(GetParam().elements), Names{"1 3 " + GetParam().report});
}

#define OVI_IN_MESH(text) "<template name='Mesh'>" text "</template>"
#define OVI_IN_SHAPE(text) OVI_IN_MESH("<geometry name='g'>" text "</geometry>")

INSTANTIATE_TEST_SUITE_P(
    Elements, NodeFindingTest,
    ::testing::Values(
        Finding{"<node name='a'/>", "<node> must occur inside a <template> element"},
        Finding{"<node/>", "<node> must occur inside a <template> element"},
        Finding{"<anchor name='a'/>", "<anchor> must occur inside a <template> element"},
        Finding{"<geometry name='a'/>", "<geometry> must occur inside a <template> element"},
        Finding{OVI_IN_MESH("<node/>"), "<node> element must have an 'name' attribute"},
        Finding{OVI_IN_MESH("<node NAME='a'/>"), "<node> element must have an 'name' attribute"},
        Finding{OVI_IN_MESH("<anchor/>"), "<anchor> element must have an 'name' attribute"},
        Finding{OVI_IN_MESH("<geometry/>"), "<geometry> element must have an 'name' attribute"},
        Finding{OVI_IN_MESH("<node name='a b'/>"),
                "Invalid node name: 'a b" + kNameRule + "Ignoring node."},
        Finding{OVI_IN_MESH("<node name=''/>"),
                "Invalid node name: '" + kNameRule + "Ignoring node."},
        Finding{OVI_IN_MESH("<anchor name='a.b'/>"),
                "Invalid anchor name: 'a.b" + kNameRule + "Ignoring anchor."},
        Finding{OVI_IN_MESH("<geometry name='-'/>"),
                "Invalid geometry name: '-" + kNameRule + "Ignoring geometry."},
        Finding{OVI_IN_MESH("<node name='a'><node name='b'/></node>"),
                "Unexpected nested <node> elements"},
        Finding{OVI_IN_MESH("<node name='a'><anchor name='b'/></node>"),
                "Unexpected nested <anchor> elements"},
        Finding{OVI_IN_MESH("<geometry name='a'><node name='b'/></geometry>"),
                "Unexpected nested <node> elements"},
        Finding{OVI_IN_MESH("<anchor name='a'><geometry/></anchor>"),
                "Unexpected nested <geometry> element"},
        Finding{OVI_IN_MESH("<node name='a'><attribute name='b' type='INT32'/></node>"),
                "Unexpected nested <attribute> element"},
        Finding{"<alternate lod='High'/>", "<alternate> must occur inside a <geometry> element"},
        Finding{OVI_IN_MESH("<node name='a'><alternate/></node>"),
                "<alternate> must occur inside a <geometry> element"},
        Finding{OVI_IN_SHAPE("<alternate name='High'/>"),
                "<alternate> element must have an 'lod' attribute"},
        Finding{OVI_IN_SHAPE("<alternate lod='very high'/>"),
                "Invalid alternate name: 'very high" + kNameRule + "Ignoring alternate."},
        Finding{OVI_IN_SHAPE("<alternate lod='High' version='7'/>"),
                "Level of detail not found: '7'"},
        Finding{OVI_IN_SHAPE("<alternate lod='High'/>"), "Level of detail not found: ''"},
        Finding{OVI_IN_MESH("<node name='a'><asset name='b'/></node>"),
                "<asset> must occur inside an attribute"},
        Finding{OVI_IN_MESH("<geometry name='a'><asset name='b'/></geometry>"),
                "<asset> must occur inside an attribute"}));

TEST_F(TemplateFileNodesTest, AMemberStillOpenAtTheEndIsReported) {
    Names errors = Load("<template name='Mesh'><geometry name='g'>");
    errors.erase(errors.begin(), errors.end() - 2);
    EXPECT_NE(errors[0].find("Missing closing element for template: 'Mesh'"), std::string::npos);
    EXPECT_NE(errors[1].find("Missing closing element for property: 'g'"), std::string::npos);
}

TEST_F(TemplateFileNodesTest, APropertyWithATakenNameIsRefusedWithItsChildren) {
    EXPECT_EQ(Load("<lod name='High'/><template name='Mesh'><node name='a'/>"
                   "<anchor name='a' child='true'><label>x</label></anchor></template>"),
              Names{});
    EXPECT_EQ(OviObject_GetClass(Member<OviProperty>("a")), OVI_CLASS_NODE_PROPERTY);
    EXPECT_EQ(OviNamedObject_GetLabel(Member<OviProperty>("a"), nullptr), nullptr);
}

TEST_F(TemplateFileNodesTest, AttributesAreWrittenInTheirOrderAndOnlyWhenTheySaySomething) {
    LoadMesh("<node distance='-1' ancestor='' version='1' name='a'/>"
             "<node autoBind='x' distance='0' ancestor='&lt;r' version='2' name='b'/>"
             "<anchor child='0' name='c'/>"
             "<anchor distance='5' ancestor='r' child='1' version='2' name='d'/>");
    const std::string saved = Saved();
    for (const char* element :
         {"<node name='a'/>",
          "<node name='b' version='2' ancestor='&lt;r' distance='0' autoBind='x'/>",
          "<anchor name='c'/>",
          "<anchor name='d' version='2' child='true' ancestor='r' distance='5'/>"})
        EXPECT_NE(saved.find(element), std::string::npos) << element << " in " << saved;
    ExpectSameAgain();
}

TEST_F(TemplateFileNodesTest, EverythingOfMembersIsSavedAndReadAgain) {
    EXPECT_EQ(Load("<!--l--><lod name='High' type='collision'><shape type='cube'/></lod>"
                   "<lod name='Low'/><template name='Mesh'><!--c--><node name='n'><label>L</label>"
                   "<description language='de'>D</description></node><node name='plain'/>"
                   "<anchor name='a' child='true'><command execute='run' notification='Maya'/>"
                   "</anchor><geometry name='g' version='2'><label>G</label>"
                   "<!--alt--><alternate lod='Low'/><alternate lod='High' version='2'/>"
                   "<command execute='go' notification='BindingChanged'/></geometry>"
                   "<node name='last' version='3'/></template>"),
              Names{});
    const std::string saved = Saved();
    EXPECT_NE(saved.find("<alternate lod='High' version='2'/>"), std::string::npos) << saved;
    EXPECT_LT(saved.find("<!--alt-->"), saved.find("<alternate lod='Low'/>")) << saved;
    ExpectSameAgain();
    auto* shape = Member<OviGeometryProperty>("g", 3);
    ASSERT_NE(shape, nullptr);
    EXPECT_EQ(OviGeometryProperty_GetAlternateCount(shape), 2);
    EXPECT_STREQ(OviNamedObject_GetComment(OviGeometryProperty_GetAlternate(shape, "Low")), "alt");
    EXPECT_STREQ(OviNamedObject_GetComment(Member<OviNodeProperty>("plain")), "c")
        << "a comment goes on to the members behind it";
}

} // namespace
