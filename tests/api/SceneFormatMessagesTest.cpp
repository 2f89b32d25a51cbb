// Every diagnostic of the scene reader, with level, line and place in the order of checks. The
// content of each case begins in line 2.

#include "api/SceneHost.h"

namespace {

struct Case {
    const char* name;
    const char* content;
    Lines errors;
};

void PrintTo(const Case& testCase, std::ostream* stream) {
    *stream << testCase.name;
}

std::string NameOf(const ::testing::TestParamInfo<Case>& info) {
    return info.param.name;
}

class SceneFormatMessages : public SceneTest, public ::testing::WithParamInterface<Case> {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        Schema("<template name='T'><attribute name='a' type='INT32'/>"
               "<attribute name='b' type='INT32' version='2'/></template>");
        OviErrorManager_Clear();
    }
};

TEST_P(SceneFormatMessages, AreReportedWithLevelAndLine) {
    EXPECT_TRUE(Load(GetParam().content));
    EXPECT_EQ(Errors(), GetParam().errors);
}

const Case kStructure[] = {
    {"NothingWrong", "<asset name='x'><implements template='T'/></asset>", {}},
    {"UnknownElementsAreIgnored", "<nonsense/><asset name='x'><lod/><view/></asset>", {}},
    {"AssetWithoutName", "\n<asset/>", {"1 3 <asset> element must have an 'name' attribute"}},
    {"AssetWithNameInCapitals",
     "<asset NAME='x'/>",
     {"1 2 <asset> element must have an 'name' attribute"}},
    {"AssetRefWithoutName",
     "<assetRef/>",
     {"1 2 <assetRef> element must have an 'name' attribute"}},
    {"ImplementsOutside",
     "<implements/>",
     {"1 2 <implements> must occur inside a <asset> element"}},
    {"ImplementsWithoutTemplate",
     "<asset name='x'><implements version='1'/></asset>",
     {"1 2 <implements> element must have an 'template' attribute"}},
    {"AttributeOutside", "<attribute/>", {"1 2 <attribute> must occur inside a <asset> element"}},
    {"AttributeWithoutProperty",
     "<asset name='x'>\n\n<attribute value='1'/></asset>",
     {"1 4 <attribute> element must have an 'property' attribute"}},
    {"AttributeBehindAnAsset",
     "<asset name='x'/><attribute property='T.a'/>",
     {"1 2 <attribute> must occur inside a <asset> element"}},
};
INSTANTIATE_TEST_SUITE_P(Structure, SceneFormatMessages, ::testing::ValuesIn(kStructure), NameOf);

const Case kLookups[] = {
    {"UnknownTemplate",
     "<asset name='x'><implements template='U'/></asset>",
     {"1 2 Unknown template: 'U'"}},
    {"UnknownVersion",
     "<asset name='x'><implements template='T' version='3'/></asset>",
     {"1 2 Unknown template: 'T' version 3"}},
    {"VersionThatIsNoNumber",
     "<asset name='x'><implements template='T' version='abc'/></asset>",
     {"1 2 Unknown template: 'T' version abc"}},
    {"EmptyVersion",
     "<asset name='x'><implements template='T' version=''/></asset>",
     {"1 2 Unknown template: 'T' version "}},
    {"NegativeVersion",
     "<asset name='x'><implements template='T' version='-1'/></asset>",
     {"1 2 Unknown template: 'T' version -1"}},
    {"VersionWithTextBehindIt",
     "<asset name='x'><implements template='T' version='2abc'/></asset>",
     {}},
    {"OlderVersion",
     "<asset name='x'>\n<implements template='T' version='1'/></asset>",
     {"2 3 Using version 1 of template 'T' while there is a version 2 that is more recent"}},
    {"UnknownProperty",
     "<asset name='x'><attribute property='T.c'/></asset>",
     {"1 2 Unknown property: 'T.c'"}},
    {"PropertyWithoutItsTemplate",
     "<asset name='x'><implements template='T'/><attribute property='a'/></asset>",
     {"1 2 Unknown property: 'a'"}},
    {"InvalidAssetName",
     "<asset name='a b'><attribute/><asset name='c'/></asset>",
     {"1 2 Invalid asset name: 'a b'. Valid characters must be in the range "
      "[A-Z][a-z][0-9][_]. Ignoring asset."}},
    {"InvalidNameInAssetRef",
     "<assetRef name='a b'/>",
     {"1 2 Invalid asset name: 'a b'. Valid characters must be in the range "
      "[A-Z][a-z][0-9][_]. Ignoring asset."}},
};
INSTANTIATE_TEST_SUITE_P(Lookups, SceneFormatMessages, ::testing::ValuesIn(kLookups), NameOf);

using SceneFormatSource = SceneTest;

TEST_F(SceneFormatSource, IsThePathWithItsForcedExtension) {
    const std::string path = WriteFile("s.asset", kHeader + std::string("<assets><asset/>"));
    EXPECT_TRUE(OviAssetManager_LoadScene(PathOf("s.other").c_str()));
    ASSERT_EQ(Errors().size(), 1u);
    EXPECT_EQ(OviErrorItem_GetSourceName(OviErrorManager_GetErrorItemAt(0)), path);
}

} // namespace
