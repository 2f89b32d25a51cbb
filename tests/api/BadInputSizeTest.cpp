// Files of a size or depth that nobody writes: they are read like any other.

#include <algorithm>

#include "api/SceneHost.h"

namespace {

constexpr size_t kLong = 20 * 1024 * 1024;
constexpr int kDeep = 1000000;

std::string Repeated(const std::string& text, int count) {
    std::string repeated;
    repeated.reserve(text.size() * static_cast<size_t>(count));
    for (int i = 0; i < count; ++i)
        repeated += text;
    return repeated;
}

class BadInputSize : public SceneTest {
protected:
    bool LoadTemplates(const std::string& content) {
        const std::string path = WriteFile("big.template", "<?xml version='1.0'?><templates>" +
                                                               content + "</templates>");
        const bool loaded = OviTemplateManager_LoadTemplateFile(path.c_str());
        std::filesystem::remove(path);
        return loaded;
    }

    static int CountErrors() { return OviErrorManager_GetErrorItemCount(3); }
};

// -- one long line ----------------------------------------------------------------------------

TEST_F(BadInputSize, LongTextsInATemplateFileAreKept) {
    const std::string text(kLong, 'x');
    EXPECT_TRUE(LoadTemplates("<!--" + text + "--><template name='T'><label>" + text +
                              "</label><attribute name='a' type='STRING' default='" + text +
                              "'/></template>"));
    EXPECT_EQ(CountErrors(), 0);
    EXPECT_EQ(OviNamedObject_GetComment(TemplateOf("T")), text);
    EXPECT_EQ(OviNamedObject_GetLabel(TemplateOf("T"), nullptr), text);
}

TEST_F(BadInputSize, LongNamesAreReportedWhole) {
    const std::string name(kLong, '-');
    EXPECT_TRUE(LoadTemplates("<template name='" + name + "'/>"));
    ASSERT_EQ(CountErrors(), 1);
    EXPECT_GT(std::string(OviErrorItem_GetMessage(OviErrorManager_GetErrorItemAt(0))).size(),
              kLong);
}

TEST_F(BadInputSize, LongTagsWithoutEndAreReported) {
    const std::string path = WriteFile("big.template", "<?xml version='1.0'?>\n<templates>\n<" +
                                                           std::string(kLong, 'x'));
    EXPECT_FALSE(OviTemplateManager_LoadTemplateFile(path.c_str()));
    EXPECT_EQ(Errors(), (Lines{"1 3 Element opened on line 3 has no closing bracket",
                               "1 -1 Unable to open file '" + path + "' for reading"}));
}

TEST_F(BadInputSize, ManyAttributesInOneTagAreRead) {
    std::string tag = "<template";
    for (int i = 0; tag.size() < kLong; ++i)
        tag += " a" + std::to_string(i) + "=''";
    EXPECT_TRUE(LoadTemplates(tag + " name='T'/>"));
    EXPECT_TRUE(TemplateOf("T"));
}

TEST_F(BadInputSize, LongValuesInASceneAreKept) {
    Schema("<template name='T'><attribute name='a' type='STRING'/></template>");
    const std::string text(kLong, 'y');
    EXPECT_TRUE(Load("<asset name='x'><implements template='T'/><attribute property='T.a' value='" +
                     text + "'/></asset>"));
    EXPECT_EQ(ValueOf<const char*>(AttributeOf(OviAssetManager_GetAsset("x"), "T.a")), text);
}

TEST_F(BadInputSize, ManyAssetsInOneLineAreRead) {
    std::string assets;
    for (int i = 0; assets.size() < kLong / 10; ++i)
        assets += "<asset name='a" + std::to_string(i) + "'/>";
    EXPECT_TRUE(Load(assets));
    EXPECT_EQ(OviAssetManager_GetAssetCount(),
              static_cast<int>(std::count(assets.begin(), assets.end(), '/')));
}

// -- deep nesting -----------------------------------------------------------------------------

TEST_F(BadInputSize, DeeplyNestedUnknownElementsAreReportedEach) {
    EXPECT_TRUE(
        LoadTemplates(Repeated("<a>", kDeep) + "<template name='T'/>" + Repeated("</a>", kDeep)));
    EXPECT_EQ(CountErrors(), kDeep);
    EXPECT_TRUE(TemplateOf("T"));
}

TEST_F(BadInputSize, DeeplyNestedTemplatesAreSkippedWithARefusedOne) {
    EXPECT_TRUE(LoadTemplates("<template name='a b'>" + Repeated("<template name='t'>", kDeep) +
                              Repeated("</template>", kDeep) + "</template><template name='T'/>"));
    EXPECT_EQ(CountErrors(), 1);
    EXPECT_FALSE(TemplateOf("t"));
    EXPECT_TRUE(TemplateOf("T"));
}

TEST_F(BadInputSize, DeeplyNestedElementsOfASceneAreIgnored) {
    EXPECT_TRUE(Load(Repeated("<a>", kDeep) + "<asset name='x'/>" + Repeated("</a>", kDeep)));
    EXPECT_EQ(CountErrors(), 0);
    EXPECT_TRUE(OviAssetManager_GetAsset("x"));
}

TEST_F(BadInputSize, DeeplyNestedAssetsWithoutNamesAreReported) {
    EXPECT_TRUE(Load(Repeated("<asset>", kDeep / 10)));
    EXPECT_EQ(CountErrors(), kDeep / 10 + 1); // and the end tag of the root
}

// Written, each level is indented by another tab, so that the file grows with the depth's square.
TEST_F(BadInputSize, DeeplyNestedInstancesAreReadAndWritten) {
    Schema("<template name='B'/><template name='T'><attribute name='a' type='B'/></template>");
    for (const int depth : {1000, kDeep / 10}) {
        OviAssetManager_NewScene();
        ASSERT_TRUE(Load("<asset name='x'>" +
                         Repeated("<implements template='T'/><attribute property='T.a'>"
                                  "<asset name='n'>",
                                  depth) +
                         Repeated("</asset></attribute>", depth) + "</asset>"));
        OviInstance* innermost = OviAssetManager_GetAsset("x");
        for (int i = 0; i < depth; ++i) {
            innermost = NestedIn(innermost, "T.a");
            ASSERT_TRUE(innermost) << i;
        }
        EXPECT_EQ(OviInstance_GetParentAsset(innermost), OviAssetManager_GetAsset("x"));
        if (depth > 1000)
            continue;
        const std::string path = PathOf("deep.asset");
        EXPECT_TRUE(OviAssetManager_SaveScene(path.c_str()));
        OviAssetManager_NewScene();
        EXPECT_TRUE(OviAssetManager_LoadScene(path.c_str()));
    }
    EXPECT_EQ(CountErrors(), 0);
}

TEST_F(BadInputSize, LongChainsOfTypesAndParentsAreReadAndSaved) {
    std::string content = "<type name='V0' type='FLOAT'/><template name='T0'/>";
    for (int i = 1; i <= 3000; ++i) {
        const std::string below = std::to_string(i - 1);
        const std::string name = std::to_string(i);
        content += "<type name='V" + name + "' type='V" + below + "'/><template name='T" + name +
                   "'><extends template='T" + below + "'/></template>";
    }
    EXPECT_TRUE(LoadTemplates(content));
    EXPECT_EQ(CountErrors(), 0);
    EXPECT_TRUE(OviTemplate_IsDescendantOf(TemplateOf("T3000"), TemplateOf("T0")));
    const std::string path = PathOf("big.template");
    EXPECT_TRUE(OviTemplateManager_SaveTemplateFile(path.c_str(), nullptr));
    EXPECT_TRUE(OviTemplateManager_UnloadTemplateFile(path.c_str()));
    EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(path.c_str()));
    EXPECT_EQ(CountErrors(), 0);
}

// -- names that nobody knows ------------------------------------------------------------------

TEST_F(BadInputSize, NamesThatDoNotExistAreReportedEachWithItsLine) {
    EXPECT_TRUE(LoadTemplates("\n<template name='T'>\n<extends template='Nope'/>\n"
                              "<attribute name='a' type='Nope'/>\n</template>\n"
                              "<type name='V' type='Nope'/>\n<enum name='E' type='Nope'/>"));
    EXPECT_TRUE(Load("\n<asset name='x'>\n<implements template='Nope'/>\n<implements template='T' "
                     "version='4'/>\n<attribute property='Nope.a' value='1'/>\n<attribute "
                     "property='Nope#1.a'/></asset>"));
    EXPECT_EQ(Errors(),
              (Lines{"1 3 Template not found: 'Nope'",
                     "2 4 Unknown type 'Nope', creating custom type dynamically",
                     "1 6 Unknown type: Nope", "1 7 Type not found: 'Nope'",
                     "1 4 Unknown template: 'Nope'", "1 5 Unknown template: 'T' version 4",
                     "1 6 Unknown property: 'Nope.a'", "1 7 Unknown property: 'Nope#1.a'"}));
}

} // namespace
