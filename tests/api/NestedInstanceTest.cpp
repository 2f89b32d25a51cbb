#include "api/SceneHost.h"

namespace {

/// Outer has an attribute of type Inner, one that refers to Outer, and a list of Inner.
class NestedInstanceTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        Schema("<template name='Inner'><attribute name='x' type='INT32' default='5'/></template>"
               "<template name='Mixin'/><type name='Pair' type='Inner' dim='2'/>"
               "<type name='Inners' type='Inner' dim='0'/>"
               "<template name='Outer'><attribute name='one' type='Inner'/>"
               "<attribute name='self' type='Outer' reference='true'/>"
               "<attribute name='pair' type='Pair'/><attribute name='list' type='Inners'/>"
               "</template>");
        ASSERT_TRUE(Errors().empty());
        asset_ = AssetOf("Outer", "asset");
        one_ = AttributeOf(asset_, "Outer.one");
        StartRecording();
    }

    /// Sets an attribute to one instance, of which it takes a copy.
    static void Set(OviAttributeInstance* attribute, OviInstance* source) {
        OviAttributeInstance_SetValue(attribute, &source);
    }

    OviAsset* asset_ = nullptr;
    OviAttributeInstance* one_ = nullptr;
};

} // namespace

TEST_F(NestedInstanceTest, IsMadeOnDemandWithTheTemplateOfItsType) {
    OviInstance* nested = NestedIn(asset_, "Outer.one");
    EXPECT_EQ(Events(), Lines{"0x1007  "}); // the renaming that comes with the parent
    EXPECT_EQ(OviObject_GetClass(nested), OVI_CLASS_INSTANCE);
    EXPECT_STREQ(OviNamedObject_GetName(nested), "");
    EXPECT_EQ(OviInstance_GetTemplateAt(nested, 0), TemplateOf("Inner"));
    EXPECT_EQ(ValueOf<int32_t>(AttributeOf(nested, "Inner.x")), 5);
    EXPECT_EQ(OviInstance_GetParentPropertyInstance(nested), one_);
    EXPECT_EQ(OviInstance_GetParentAsset(nested), asset_);
    EXPECT_TRUE(OviPropertyInstance_IsValid(one_));
}

TEST_F(NestedInstanceTest, OfAnInstanceThatIsNoAssetHasNoParentAsset) {
    OviInstance* held = OviInstance_New("held");
    OviInstance_AddTemplate(held, TemplateOf("Outer"));
    OviInstance* nested = NestedIn(held, "Outer.one");
    EXPECT_EQ(OviInstance_GetParentPropertyInstance(nested), PropertyOf(held, "Outer.one"));
    EXPECT_EQ(OviInstance_GetParentAsset(nested), nullptr);
    EXPECT_EQ(OviInstance_GetParentAsset(held), nullptr);
    OviObject_Delete(nested);
    OviObject_Delete(held);
}

TEST_F(NestedInstanceTest, IsACopyOfTheInstanceSet) {
    OviInstance* source = OviInstance_New("source");
    OviInstance_AddTemplate(source, TemplateOf("Inner"));
    OviInstance_AddTemplate(source, TemplateOf("Mixin"));
    OviNamedObject_SetComment(source, "remark");
    OviNamedObject_SetLabel(source, "de", "Quelle");
    OviNamedObject_SetDescription(source, "", "text");
    OviAttributeInstance* x = AttributeOf(source, "Inner.x");
    OviAttributeInstance_SetBinding(x, "bound");
    OviPropertyInstance_SetValueLocked(x, true);
    OviNamedObject_SetComment(x, "about x");
    const int32_t seven = 7;
    OviAttributeInstance_SetValue(x, &seven);
    TakeEvents();
    Set(one_, source);
    // The copying itself is silent.
    EXPECT_EQ(Events(), (Lines{"0x4000 Outer.one source", "0x1007 source ", "0x1001 source Inner#1",
                               "0x1001 source Mixin#1"}));
    OviObject_Delete(source);
    OviInstance* nested = NestedIn(asset_, "Outer.one");
    EXPECT_STREQ(OviNamedObject_GetName(nested), "source");
    EXPECT_STREQ(OviNamedObject_GetComment(nested), "remark");
    EXPECT_STREQ(OviNamedObject_GetLabel(nested, "de"), "Quelle");
    EXPECT_STREQ(OviNamedObject_GetDescription(nested, nullptr), "text");
    OviAttributeInstance* copy = AttributeOf(nested, "Inner.x");
    EXPECT_EQ(ValueOf<int32_t>(copy), 7);
    EXPECT_STREQ(OviAttributeInstance_GetBinding(copy), "bound");
    EXPECT_STREQ(OviNamedObject_GetComment(copy), "about x");
    EXPECT_TRUE(OviPropertyInstance_IsValueLocked(copy));
    EXPECT_FALSE(OviPropertyInstance_IsBindingLocked(copy));
    EXPECT_EQ(OviInstance_GetParentPropertyInstance(nested), one_);
}

TEST_F(NestedInstanceTest, OfAnAssetIsAPlainInstance) {
    Set(one_, AssetOf("Inner", "source"));
    OviInstance* nested = NestedIn(asset_, "Outer.one");
    EXPECT_EQ(OviObject_GetClass(nested), OVI_CLASS_INSTANCE);
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 2);
}

TEST_F(NestedInstanceTest, LosesItsTemplatesAndItsParentWhenItIsReplaced) {
    OviInstance* source = OviInstance_New("new");
    OviInstance* old = NestedIn(asset_, "Outer.one");
    OviInstance_AddTemplate(old, TemplateOf("Mixin"));
    TakeEvents();
    Set(one_, source);
    EXPECT_EQ(Events(), (Lines{"0x4000 Outer.one new", "0x2006  Inner.x", "0x1002  Inner#1",
                               "0x1002  Mixin#1", "0x1007 new "}));
    EXPECT_NE(NestedIn(asset_, "Outer.one"), old);
    // It is not freed: the host may still hold it.
    EXPECT_EQ(OviInstance_GetTemplateCount(old), 0);
    EXPECT_EQ(OviInstance_GetParentPropertyInstance(old), nullptr);
    EXPECT_EQ(OviInstance_GetParentAsset(old), nullptr);
    OviObject_Delete(old);
    OviObject_Delete(source);
}

TEST_F(NestedInstanceTest, MayBeSetToItself) {
    const int32_t seven = 7;
    OviAttributeInstance_SetValue(AttributeOf(NestedIn(asset_, "Outer.one"), "Inner.x"), &seven);
    OviAttributeInstance_SetValue(one_, OviAttributeInstance_GetValue(one_));
    OviInstance* nested = NestedIn(asset_, "Outer.one");
    EXPECT_EQ(ValueOf<int32_t>(AttributeOf(nested, "Inner.x")), 7);
    EXPECT_EQ(OviInstance_GetTemplateCount(nested), 1);
}

TEST_F(NestedInstanceTest, MayBeSetToTheInstanceAroundIt) {
    OviAttributeInstance* self = AttributeOf(asset_, "Outer.self");
    for (int i = 0; i < 3; ++i)
        Set(self, asset_);
    OviInstance* at = asset_;
    int depth = 0;
    while (XMLOf(at).find("property='Outer.self' binding=''>") != std::string::npos) {
        at = NestedIn(at, "Outer.self");
        EXPECT_EQ(OviInstance_GetParentAsset(at), asset_);
        ++depth;
    }
    EXPECT_EQ(depth, 3);
}

TEST_F(NestedInstanceTest, OfNullMakesANewOneOrNone) {
    OviAttributeInstance_SetValue(one_, nullptr);
    OviInstance* nested = NestedIn(asset_, "Outer.one");
    EXPECT_EQ(OviInstance_GetTemplateAt(nested, 0), TemplateOf("Inner"));
    Set(one_, nullptr);
    EXPECT_EQ(NestedIn(asset_, "Outer.one"), nullptr);
    EXPECT_FALSE(OviPropertyInstance_IsValid(one_));
    EXPECT_EQ(Events(), (Lines{"0x4000 Outer.one ", "0x1007  ", "0x1001  Inner#1",
                               "0x4000 Outer.one ", "0x2006  Inner.x", "0x1002  Inner#1"}));
}

TEST_F(NestedInstanceTest, IsUnsetInACopyWhenItWasUnset) {
    Set(AttributeOf(asset_, "Outer.self"), asset_);
    EXPECT_EQ(XMLOf(NestedIn(asset_, "Outer.self")).find("<asset", 2), std::string::npos);
}

TEST_F(NestedInstanceTest, LinksOnlyTheFirstOfSeveralMadeOnDemand) {
    OviAttributeInstance* pair = AttributeOf(asset_, "Outer.pair");
    EXPECT_EQ(OviAttributeInstance_GetDimension(pair), 2);
    EXPECT_EQ(OviInstance_GetParentPropertyInstance(NestedIn(asset_, "Outer.pair", 0)), pair);
    EXPECT_EQ(OviInstance_GetParentPropertyInstance(NestedIn(asset_, "Outer.pair", 1)), nullptr);
    EXPECT_EQ(Events(), Lines{"0x1007  "});
}

TEST_F(NestedInstanceTest, LeavesItsPlaceWhenTheHostDeletesIt) {
    OviObject_Delete(NestedIn(asset_, "Outer.one"));
    EXPECT_EQ(NestedIn(asset_, "Outer.one"), nullptr);
    EXPECT_FALSE(OviPropertyInstance_IsValid(one_));
    EXPECT_NE(XMLOf(asset_).find("property='Outer.one' binding=''/>"), std::string::npos);
    Set(one_, OviAssetManager_NewAsset("other"));
    EXPECT_STREQ(OviNamedObject_GetName(NestedIn(asset_, "Outer.one")), "other");
}

TEST_F(NestedInstanceTest, LeavesItsPlaceAlsoBehindTheFirst) {
    OviInstance* first = NestedIn(asset_, "Outer.pair", 0);
    OviObject_Delete(NestedIn(asset_, "Outer.pair", 1));
    EXPECT_EQ(NestedIn(asset_, "Outer.pair", 0), first);
    EXPECT_EQ(NestedIn(asset_, "Outer.pair", 1), nullptr);
    EXPECT_FALSE(OviPropertyInstance_IsValid(PropertyOf(asset_, "Outer.pair")));
}

TEST_F(NestedInstanceTest, LivesOnWhenItsHolderGoes) {
    OviInstance* ofScene = NestedIn(asset_, "Outer.one");
    OviInstance* ofTemplate = NestedIn(AssetOf("Outer", "b"), "Outer.one");
    OviInstance* ofDimension = nullptr;
    OviAttributeInstance* list = AttributeOf(asset_, "Outer.list");
    OviAttributeInstance_SetDimension(list, 1);
    ofDimension = NestedIn(asset_, "Outer.list");
    TakeEvents();
    OviAttributeInstance_SetDimension(list, 2);
    EXPECT_TRUE(Events().empty());
    OviInstance_RemoveTemplate(OviAssetManager_GetAsset("b"), TemplateOf("Outer"));
    TakeEvents();
    OviAssetManager_NewScene();
    EXPECT_TRUE(Events().empty());
    for (OviInstance* nested : {ofScene, ofTemplate, ofDimension}) {
        EXPECT_EQ(OviInstance_GetParentPropertyInstance(nested), nullptr);
        EXPECT_EQ(OviInstance_GetTemplateCount(nested), 1);
        EXPECT_NE(OviAttributeInstance_GetValue(AttributeOf(nested, "Inner.x")), nullptr);
        OviObject_Delete(nested);
    }
}

TEST_F(NestedInstanceTest, LeftBehindLosesTheSchemaWithTheLibrary) {
    OviInstance* nested = NestedIn(asset_, "Outer.one");
    Ovi_Terminate();
    EXPECT_EQ(OviInstance_GetTemplateCount(nested), 0);
    EXPECT_EQ(OviInstance_GetTemplateAt(nested, 0), nullptr);
    EXPECT_TRUE(PropertiesOf(nested).empty());
    OviObject_Delete(nested);
    Ovi_Initialize();
}

TEST_F(NestedInstanceTest, KeepsATemplateThatGoesWithItsLastUser) {
    OviAttributeProperty* property = OviAttributeProperty_New("held", 1);
    OviAttributeProperty_SetType(property, TemplateOf("Inner"));
    Ovi_Terminate(); // the template is left to the property
    OviType* type = OviAttributeProperty_GetType(property);
    OviInstance* nested = *static_cast<OviInstance**>(OviType_NewValue(type, nullptr, 1));
    ASSERT_NE(nested, nullptr);
    OviObject_Delete(property);
    EXPECT_STREQ(OviType_GetFullName(OviInstance_GetTemplateAt(nested, 0)), "Inner");
    OviInstance_RemoveTemplate(nested, OviInstance_GetTemplateAt(nested, 0));
    EXPECT_EQ(OviInstance_GetTemplateCount(nested), 0);
    OviObject_Delete(nested);
    Ovi_Initialize();
}

TEST_F(NestedInstanceTest, LosesATemplateThatWentWithItsLastUserToTheNextEnd) {
    OviAttributeProperty* property = OviAttributeProperty_New("held", 1);
    OviAttributeProperty_SetType(property, TemplateOf("Inner"));
    Ovi_Terminate();
    void* value = OviType_NewValue(OviAttributeProperty_GetType(property), nullptr, 1);
    OviInstance* nested = *static_cast<OviInstance**>(value);
    ASSERT_NE(nested, nullptr);
    OviAttributeProperty_SetDefaultValue(property, value);
    OviObject_Delete(property);
    EXPECT_STREQ(OviType_GetFullName(OviInstance_GetTemplateAt(nested, 0)), "Inner");
    Ovi_Initialize();
    Ovi_Terminate();
    EXPECT_EQ(OviInstance_GetTemplateCount(nested), 0);
    OviObject_Delete(nested);
    Ovi_Initialize();
}

TEST_F(NestedInstanceTest, KeepsATemplateThatStaysWhenAnotherFileIsUnloaded) {
    Schema("<template name='Other'/>", "other");
    const std::string other = OviType_GetFileName(TemplateOf("Other"));
    OviInstance* nested = NestedIn(asset_, "Outer.one");
    OviInstance* ofBoth = NestedIn(AssetOf("Outer", "second"), "Outer.one");
    OviInstance_AddTemplate(ofBoth, TemplateOf("Other"));
    OviAssetManager_NewScene();
    EXPECT_TRUE(OviTemplateManager_UnloadTemplateFile(other.c_str()));
    EXPECT_EQ(OviInstance_GetTemplateCount(nested), 1);
    EXPECT_EQ(ValueOf<int32_t>(AttributeOf(nested, "Inner.x")), 5);
    EXPECT_EQ(OviInstance_GetTemplateCount(ofBoth), 0);
    OviObject_Delete(nested);
    OviObject_Delete(ofBoth);
}

TEST_F(NestedInstanceTest, KeepsItsTemplatesWhenTheSchemaOfAnEarlierLifeGoes) {
    OviInstance* former = OviInstance_New("former");
    OviInstance_AddTemplate(former, TemplateOf("Inner"));
    Ovi_Terminate();
    Ovi_Initialize();
    Schema("<template name='Inner'><attribute name='x' type='INT32' default='6'/></template>"
           "<template name='Outer'><attribute name='one' type='Inner'/></template>");
    OviInstance* nested = NestedIn(AssetOf("Outer", "asset"), "Outer.one");
    OviAssetManager_NewScene();
    OviObject_Delete(former); // and with it its schema
    EXPECT_EQ(OviInstance_GetTemplateAt(nested, 0), TemplateOf("Inner"));
    EXPECT_EQ(ValueOf<int32_t>(AttributeOf(nested, "Inner.x")), 6);
    OviObject_Delete(nested);
}

TEST_F(NestedInstanceTest, ComesFromScenesAsTheValueItself) {
    ASSERT_TRUE(Load("<asset name='asset'><attribute property='Outer.pair'>"
                     "<asset name='p'><implements template='Inner'/></asset><asset name='q'/>"
                     "<asset name='r'><attribute property='Inner.x' value='9'/></asset>"
                     "</attribute><attribute property='Outer.list'><asset name='s'/>"
                     "<asset name='t'/><asset name='u'/></attribute></asset>"));
    EXPECT_EQ(Events(),
              (Lines{"0x4000 Outer.pair p", "0x1007 p ", "0x4000 Outer.pair p", "0x1007 q ",
                     "0x4000 Outer.list s", "0x1007 s ", "0x4000 Outer.list s", "0x1007 t ",
                     "0x4000 Outer.list s", "0x1007 u "}));
    OviAttributeInstance* list = AttributeOf(asset_, "Outer.list");
    EXPECT_EQ(OviAttributeInstance_GetDimension(list), 3);
    EXPECT_STREQ(OviNamedObject_GetName(NestedIn(asset_, "Outer.list", 2)), "u");
    EXPECT_STREQ(OviNamedObject_GetName(NestedIn(asset_, "Outer.pair", 1)), "q");
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(OviInstance_GetParentPropertyInstance(NestedIn(asset_, "Outer.list", i)), list);
    EXPECT_EQ(OviAssetManager_GetAssetCount(), 1); // the third of the pair is ignored
    EXPECT_TRUE(Errors().empty());
}

TEST_F(NestedInstanceTest, IsReplacedBySceneAfterScene) {
    const char* scene = "<asset name='asset'><attribute property='Outer.one'><asset name='n'>"
                        "<implements template='Inner'/></asset></attribute></asset>";
    ASSERT_TRUE(Load(scene));
    OviInstance* first = NestedIn(asset_, "Outer.one");
    TakeEvents();
    ASSERT_TRUE(Load(scene));
    EXPECT_EQ(Events(),
              (Lines{"0x4000 Outer.one n", "0x2006 n Inner.x", "0x1002 n Inner#1", "0x1007 n "}));
    EXPECT_NE(NestedIn(asset_, "Outer.one"), first);
    OviObject_Delete(first);
}

TEST_F(NestedInstanceTest, LetsCallbacksSetTheSameValueOnTheWay) {
    OviInstance* source = OviInstance_New("given");
    OviInstance* between = OviInstance_New("between");
    OviInstance_AddTemplate(source, TemplateOf("Inner"));
    OviInstance_AddTemplate(between, TemplateOf("Inner"));
    NestedIn(asset_, "Outer.one");
    for (int on : {OVI_EVENT_ATTRIBUTE_VALUE_CHANGED, OVI_EVENT_PROPERTY_REMOVED,
                   OVI_EVENT_TEMPLATE_REMOVED}) {
        const Reaction interfere([&](OviObject*, int event, void*) {
            if (event == on)
                Set(one_, between);
        });
        Set(one_, source);
        EXPECT_STREQ(OviNamedObject_GetName(NestedIn(asset_, "Outer.one")), "given") << on;
        EXPECT_EQ(OviInstance_GetTemplateCount(NestedIn(asset_, "Outer.one")), 1);
    }
    OviObject_Delete(source);
    OviObject_Delete(between);
}

TEST_F(NestedInstanceTest, KeepsTheTemplatesThatCallbacksAddWhileItIsReplaced) {
    OviInstance* source = OviInstance_New("given");
    OviInstance* old = NestedIn(asset_, "Outer.one");
    const Reaction add([&](OviObject*, int event, void*) {
        if (event == OVI_EVENT_TEMPLATE_REMOVED)
            OviInstance_AddTemplate(old, TemplateOf("Mixin"));
    });
    Set(one_, source);
    EXPECT_EQ(OviInstance_GetTemplateAt(old, 0), TemplateOf("Mixin"));
    OviObject_Delete(old);
    OviObject_Delete(source);
}
