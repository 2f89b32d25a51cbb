// What the elements of scene files mean.

#include "api/SceneHost.h"

namespace {

class SceneFormatReading : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        Schema("<type name='V' type='INT32' dim='3'/><type name='L' type='INT32' dim='0'/>"
               "<type name='S' type='STRING' dim='0'/>"
               "<template name='N'><attribute name='n' type='INT32'/></template>"
               "<type name='N2' type='N' dim='2'/>"
               "<template name='T'><attribute name='a' type='INT32'/><attribute name='v' type='V'/>"
               "<attribute name='l' type='L'/><attribute name='s' type='S'/><attribute name='n' "
               "type='N'/><attribute name='m' type='N2'/></template>"
               "<template name='O'><attribute name='o' type='INT32'/></template>");
        ASSERT_EQ(Errors(), Lines{});
    }

    /// Loads an asset "x" of template T with these elements.
    OviAsset* LoadAsset(const std::string& elements) {
        EXPECT_TRUE(Load("<asset name='x'><implements template='T'/>" + elements + "</asset>"));
        EXPECT_EQ(Errors(), Lines{});
        return OviAssetManager_GetAsset("x");
    }

    /// The numbers of an attribute's value.
    static std::vector<int> Numbers(OviAsset* asset, const char* fullName) {
        OviAttributeInstance* attribute = AttributeOf(asset, fullName);
        std::vector<int> numbers;
        for (int i = 0; i < OviAttributeInstance_GetDimension(attribute); ++i)
            numbers.push_back(ValueOf<int>(attribute, i));
        return numbers;
    }
};

using Ints = std::vector<int>;

// -- assets -----------------------------------------------------------------------------------

TEST_F(SceneFormatReading, KnowsElementsInAnyCase) {
    EXPECT_TRUE(Load("<ASSET name='x'><Implements template='T'/><ATTRIBUTE property='T.v'>"
                     "<Value>4</Value></ATTRIBUTE></ASSET><ASSETREF name='y'/>"));
    EXPECT_EQ(Numbers(OviAssetManager_GetAsset("x"), "T.v"), (Ints{4, 0, 0}));
    EXPECT_TRUE(OviAssetManager_GetAsset("y"));
}

TEST_F(SceneFormatReading, ContinuesAnAssetWhoseNameIsInUse) {
    OviAssetManager_NewAsset("x");
    EXPECT_TRUE(Load("<asset name='x'><implements template='T'/></asset>"
                     "<asset name='x'><attribute property='T.a' value='5'/></asset>"));
    EXPECT_EQ(Errors(), Lines{});
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 1);
    EXPECT_EQ(Numbers(OviAssetManager_GetAsset("x"), "T.a"), Ints{5});
}

TEST_F(SceneFormatReading, AnnouncesTheReferenceOfAnAsset) {
    StartRecording();
    EXPECT_TRUE(Load("<asset name='x' reference='f'/><asset name='x' reference='g'/>"));
    EXPECT_EQ(Events(), (Lines{"0x1005 x 0", "0x100A x f", "0x1008 x f", "0x100A x g", "0x1009 x f",
                               "0x1008 x g"}));
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 1);
}

TEST_F(SceneFormatReading, AssetRefMakesAnAssetThatIsMissing) {
    EXPECT_TRUE(Load("<assetRef name='x'/><assetRef name='x'/><asset name='y'>"
                     "<assetRef name='z'/><implements template='T'/></asset>"));
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 3);
    EXPECT_EQ(OviInstance_GetTemplateCount(OviAssetManager_GetAsset("y")), 1);
}

TEST_F(SceneFormatReading, AddsTemplatesWithoutEvents) {
    OviAssetManager_NewAsset("x");
    StartRecording();
    LoadAsset("");
    EXPECT_EQ(Events(), Lines{});
}

TEST_F(SceneFormatReading, ResolvesTheExactVersion) {
    Schema("<template name='W'><attribute name='a' type='INT32' version='3'/></template>", "w");
    EXPECT_TRUE(Load("<asset name='x'><implements template='W' version='1'/></asset>"
                     "<asset name='y'><implements template='W' version='3rd'/></asset>"
                     "<asset name='z'><implements template='W'/></asset>"));
    const auto version = [](const char* name) {
        return OviTemplate_GetVersion(OviInstance_GetTemplateAt(OviAssetManager_GetAsset(name), 0));
    };
    EXPECT_EQ(version("x"), 1);
    EXPECT_EQ(version("y"), 3);
    EXPECT_EQ(version("z"), 3);
}

TEST_F(SceneFormatReading, AddsAPropertyThatNoImplementedTemplateHas) {
    OviAsset* asset = LoadAsset("<attribute property='O.o' value='6'/>");
    EXPECT_EQ(Numbers(asset, "O.o"), Ints{6});
    EXPECT_EQ(OviInstance_GetTemplateCount(asset), 1);
}

TEST_F(SceneFormatReading, AssetInsideAnAttributeThatHoldsNoInstancesIsAnAssetOfTheScene) {
    OviAsset* asset = LoadAsset("<attribute property='T.v'><value>1</value><asset name='y'>"
                                "<implements template='T'/><attribute property='T.a' value='2'/>"
                                "</asset></attribute><attribute property='T.a' value='3'/>");
    EXPECT_EQ(Numbers(asset, "T.v"), (Ints{1, 0, 0}));
    EXPECT_EQ(Numbers(asset, "T.a"), Ints{3});
    EXPECT_EQ(Numbers(OviAssetManager_GetAsset("y"), "T.a"), Ints{2});
}

// -- values -----------------------------------------------------------------------------------

TEST_F(SceneFormatReading, ValueIsTheFirstElementAndTheDimensionOfAVariableLength) {
    OviAsset* asset = LoadAsset("<attribute property='T.a' value='-8'/><attribute property='T.v' "
                                "value='4'/><attribute property='T.l' value='5'/>");
    EXPECT_EQ(Numbers(asset, "T.a"), Ints{-8});
    EXPECT_EQ(Numbers(asset, "T.v"), (Ints{4, 0, 0}));
    EXPECT_EQ(Numbers(asset, "T.l"), Ints{5});
}

TEST_F(SceneFormatReading, ValuesFillTheElementsInOrder) {
    OviAsset* asset = LoadAsset(
        "<attribute property='T.v'><value>1</value><!-- c --><value>2</value></attribute>"
        "<attribute property='T.a'><value>3</value><value>4</value></attribute>"
        "<attribute property='T.l'><value>5</value> <value/>\n<value>7</value></attribute>");
    EXPECT_EQ(Numbers(asset, "T.v"), (Ints{1, 2, 0}));
    EXPECT_EQ(Numbers(asset, "T.a"), Ints{3});
    EXPECT_EQ(Numbers(asset, "T.l"), (Ints{5, 0, 7}));
}

TEST_F(SceneFormatReading, TextsAreKeptAsTheyStandPiecesAndBlanksIncluded) {
    OviAsset* asset = LoadAsset("<attribute property='T.s'><value> a &lt;<!-- c -->b\n</value>"
                                "<value></value></attribute>");
    OviAttributeInstance* attribute = AttributeOf(asset, "T.s");
    ASSERT_EQ(OviAttributeInstance_GetDimension(attribute), 2);
    EXPECT_STREQ(ValueOf<const char*>(attribute, 0), " a <b\n");
    EXPECT_EQ(OviType_GetValueAsString(OviTemplateManager_GetType("S"),
                                       OviAttributeInstance_GetValue(attribute), 1, nullptr),
              0);
}

TEST_F(SceneFormatReading, AnnouncesValueThenBindingThenLocks) {
    LoadAsset("");
    StartRecording();
    EXPECT_TRUE(Load("<asset name='x'><attribute lockValue='1' lockBinding='0' binding='b' "
                     "value='7' property='T.a'/></asset>"));
    EXPECT_EQ(Events(),
              (Lines{"0x4000 T.a 7", "0x3000 T.a b", "0x2000 T.a false", "0x2001 T.a true"}));
}

TEST_F(SceneFormatReading, LockTextIsTrueUnlessEmptyOrBeginningWithZeroOrASmallF) {
    const std::pair<const char*, bool> kTexts[] = {
        {"", false}, {"0", false}, {"01", false},  {"f", false},  {"fx", false},
        {"F", true}, {"1", true},  {"true", true}, {"yes", true}, {" ", true}};
    for (const auto& [text, expected] : kTexts) {
        OviAsset* asset = LoadAsset(std::string("<attribute property='T.a' lockValue='") + text +
                                    "' lockBinding='" + text + "'/>");
        EXPECT_EQ(OviPropertyInstance_IsValueLocked(PropertyOf(asset, "T.a")), expected) << text;
        EXPECT_EQ(OviPropertyInstance_IsBindingLocked(PropertyOf(asset, "T.a")), expected) << text;
    }
}

TEST_F(SceneFormatReading, KeepsTheValuesOfAnAttributeWhoseEndTagIsMissing) {
    EXPECT_TRUE(Load("<asset name='x'><implements template='T'/><attribute property='T.v'>"
                     "<value>1</value><value>2</value></atribute><attribute property='T.a' "
                     "value='3'/></asset>"));
    EXPECT_EQ(Numbers(OviAssetManager_GetAsset("x"), "T.v"), (Ints{1, 2, 0}));
    EXPECT_EQ(Numbers(OviAssetManager_GetAsset("x"), "T.a"), Ints{3});
}

// -- nested instances -------------------------------------------------------------------------

TEST_F(SceneFormatReading, NestedAssetsBecomeTheElementsThemselves) {
    OviAsset* asset = LoadAsset("<attribute property='T.m' value='ignored'><asset name='p'/>"
                                "<asset name='q'><implements template='N'/><attribute "
                                "property='N.n' value='4'/></asset></attribute>");
    OviInstance* first = NestedIn(asset, "T.m", 0);
    OviInstance* second = NestedIn(asset, "T.m", 1);
    EXPECT_EQ(OviObject_GetClass(first), OVI_CLASS_INSTANCE);
    EXPECT_EQ(OviInstance_GetParentPropertyInstance(first), PropertyOf(asset, "T.m"));
    EXPECT_EQ(OviInstance_GetParentAsset(second), asset);
    EXPECT_EQ(ValueOf<int>(AttributeOf(second, "N.n")), 4);
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 1);
}

TEST_F(SceneFormatReading, NestedAssetsBeyondTheDimensionAreIgnoredWithAllTheyContain) {
    OviAsset* asset = LoadAsset(
        "<attribute property='T.n'><asset name='p'/><asset name='q'><nonsense/><implements "
        "template='none'/><attribute property='none'><asset name='r'/></attribute></asset>"
        "</attribute><attribute property='T.a' value='9'/>");
    EXPECT_STREQ(OviNamedObject_GetName(NestedIn(asset, "T.n")), "p");
    EXPECT_EQ(OviAttributeInstance_GetDimension(AttributeOf(asset, "T.n")), 1);
    EXPECT_EQ(Numbers(asset, "T.a"), Ints{9});
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 1);
}

TEST_F(SceneFormatReading, BindsAndLocksAttributesOfNestedInstances) {
    OviAsset* asset = LoadAsset("<attribute property='T.n' binding='b'><asset name='p'>"
                                "<implements template='N'/><attribute property='N.n' binding='c' "
                                "lockValue='1'/></asset></attribute>");
    EXPECT_STREQ(OviAttributeInstance_GetBinding(AttributeOf(asset, "T.n")), "b");
    OviInstance* nested = NestedIn(asset, "T.n");
    EXPECT_STREQ(OviAttributeInstance_GetBinding(AttributeOf(nested, "N.n")), "c");
    EXPECT_TRUE(OviPropertyInstance_IsValueLocked(PropertyOf(nested, "N.n")));
}

// -- what goes away while it is read ----------------------------------------------------------

TEST_F(SceneFormatReading, AFileMayReplaceTheValueItIsIn) {
    Schema("<template name='I'><attribute name='y' type='STRING'/></template>"
           "<template name='X'><attribute name='child' type='I'/></template>",
           "replaced");
    EXPECT_TRUE(Load("<asset name='A'><implements template='X'/><attribute property='X.child'>"
                     "<asset name='B'><implements template='I'/><attribute property='I.y'>"
                     "<asset name='A'><attribute property='X.child'><asset name='C'/></attribute>"
                     "</asset><value>5</value><asset name='D'/></attribute></asset></attribute>"
                     "</asset>"));
    EXPECT_EQ(Errors(), Lines{});
    EXPECT_STREQ(OviNamedObject_GetName(NestedIn(OviAssetManager_GetAsset("A"), "X.child")), "C");
    EXPECT_EQ(OviAssetManager_GetAsset("D"), nullptr) << "its attribute is gone";
}

TEST_F(SceneFormatReading, AHostMayDeleteWhatIsOpen) {
    const Reaction clear([](OviObject*, int event, void*) {
        if (event == OVI_EVENT_ASSET_ADDED && OviAssetManager_GetAsset("last"))
            OviAssetManager_NewScene();
    });
    EXPECT_TRUE(Load("<asset name='x'><implements template='T'/><attribute property='T.v'>"
                     "<value>1</value><asset name='y'><implements template='T'/>"
                     "<attribute property='T.n'><asset name='p'><implements template='N'/>"
                     "<attribute property='N.n'><asset name='last'><implements template='T'/>"
                     "<attribute property='T.a' value='1'/></asset><value>2</value></attribute>"
                     "<attribute property='N.n' value='3'/></asset><asset name='q'/></attribute>"
                     "<implements template='T'/><node property='T.a' binding='b'/></asset>"
                     "<value>2</value></attribute><geometry property='T.a'><alternate lod='a' "
                     "binding='b'/></geometry></asset><asset name='z'/>"));
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 1);
    EXPECT_NE(OviAssetManager_GetAsset("z"), nullptr);
}

TEST_F(SceneFormatReading, AHostMayLoadASceneWhileAnotherIsRead) {
    const auto inner = WriteFile(
        "inner.asset", kHeader + std::string("<assets><asset name='x'><attribute "
                                             "property='T.v'><value>8</value></attribute>"
                                             "<attribute property='T.a'><asset name='in'>"));
    const Reaction load([&](OviObject*, int event, void*) {
        if (event == OVI_EVENT_ASSET_ADDED && OviAssetManager_GetAsset("y"))
            OviAssetManager_LoadScene(inner.c_str());
    });
    EXPECT_TRUE(Load("<asset name='x'><implements template='T'/><attribute property='T.v'>"
                     "<asset name='y'/><value>1</value><value>2</value></attribute>"
                     "<attribute property='T.a' value='3'/></asset>"));
    EXPECT_EQ(Numbers(OviAssetManager_GetAsset("x"), "T.v"), (Ints{1, 2, 0}));
    EXPECT_EQ(Numbers(OviAssetManager_GetAsset("x"), "T.a"), Ints{3});
    EXPECT_NE(OviAssetManager_GetAsset("in"), nullptr);
}

// -- attributes that are skipped --------------------------------------------------------------

TEST_F(SceneFormatReading, AssetsInASkippedAttributeAreSkippedWithAllTheyContain) {
    for (const char* skipped : {"property='T.gone'", "", "property='Mesh.shape'"}) {
        OviAssetManager_NewScene();
        Load(std::string("<asset name='w'><implements template='N'/><attribute property='N.n' "
                         "value='1'/></asset><asset name='x'><attribute ") +
             skipped +
             "><asset name='w'><attribute property='N.n' value='2'><asset name='z'/></attribute>"
             "</asset><asset name='y'/></attribute></asset>");
        EXPECT_EQ(Numbers(OviAssetManager_GetAsset("w"), "N.n"), Ints{1}) << skipped;
        EXPECT_EQ(OviAssetManager_GetAssetCount(), 2) << skipped;
    }
}

TEST_F(SceneFormatReading, ASkippedAttributeEndsWithItsElement) {
    EXPECT_TRUE(Load("<asset name='x'><implements template='T'/><attribute property='T.gone'>"
                     "<asset name='w'/></attribute><attribute property='T.n'><asset name='p'/>"
                     "</attribute><asset name='y'/><attribute property='T.gone'/></asset>"
                     "<asset name='z'/>"));
    EXPECT_STREQ(OviNamedObject_GetName(NestedIn(OviAssetManager_GetAsset("x"), "T.n")), "p");
    EXPECT_NE(OviAssetManager_GetAsset("y"), nullptr);
    EXPECT_NE(OviAssetManager_GetAsset("z"), nullptr);
    EXPECT_EQ(OviAssetManager_GetAsset("w"), nullptr);
}

TEST_F(SceneFormatReading, ASkippedAttributeTakesNothingForTheOneThatItStandsIn) {
    EXPECT_TRUE(Load("<asset name='x'><implements template='T'/><attribute property='T.m'>"
                     "<asset name='p'/></atribute><attribute property='T.gone'><asset name='w'/>"
                     "</attribute></asset>"));
    OviAsset* asset = OviAssetManager_GetAsset("x");
    EXPECT_STREQ(OviNamedObject_GetName(NestedIn(asset, "T.m", 0)), "p");
    EXPECT_EQ(NestedIn(asset, "T.m", 1), nullptr);
}

// -- types that changed -----------------------------------------------------------------------

TEST_F(SceneFormatReading, ThePresentTypeDecidesHowAValueIsRead) {
    OviAsset* asset = LoadAsset("<attribute property='T.n'><asset name='p'/></attribute>");
    auto* property = static_cast<OviAttributeProperty*>(
        OviPropertyInstance_GetProperty(PropertyOf(asset, "T.n")));
    OviAttributeProperty_SetType(property, OviTemplateManager_GetType("INT32"));
    LoadAsset("<attribute property='T.n' value='5'/>");
    EXPECT_EQ(Numbers(asset, "T.n"), Ints{5});
    OviAttributeProperty_SetType(property, TemplateOf("N"));
    LoadAsset("<attribute property='T.n' value='6'><asset name='q'/></attribute>");
    EXPECT_STREQ(OviNamedObject_GetName(NestedIn(asset, "T.n")), "q");
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 1);
}

} // namespace
