#include "api/SceneHost.h"

namespace {

class PropertyInstanceTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        Schema("<template name='Base'><attribute name='x' type='INT32' default='5'/></template>"
               "<template name='T'><extends template='Base'/>"
               "<attribute name='y' type='INT32' default='5'/></template>");
        asset_ = AssetOf("T", "asset");
        StartRecording();
    }

    OviAsset* asset_ = nullptr;
};

} // namespace

TEST_F(PropertyInstanceTest, KnowsItsPropertyAndTheTemplateImplemented) {
    OviPropertyInstance* own = PropertyOf(asset_, "T.y");
    EXPECT_EQ(OviPropertyInstance_GetProperty(own), OviTemplate_GetProperty(TemplateOf("T"), "y"));
    EXPECT_EQ(OviPropertyInstance_GetTemplate(own), TemplateOf("T"));
    // The owner of an inherited property is not implemented itself.
    EXPECT_EQ(OviPropertyInstance_GetTemplate(PropertyOf(asset_, "Base.x")), nullptr);
    OviInstance_AddTemplate(asset_, TemplateOf("Base"));
    EXPECT_EQ(OviPropertyInstance_GetTemplate(PropertyOf(asset_, "Base.x")), TemplateOf("Base"));
}

TEST_F(PropertyInstanceTest, IsAnAttributeInstance) {
    OviPropertyInstance* own = PropertyOf(asset_, "T.y");
    EXPECT_EQ(OviObject_GetClass(own), OVI_CLASS_ATTRIBUTE_INSTANCE);
    for (int id = 0; id <= 45; ++id)
        EXPECT_EQ(OviObject_ImplementsClass(own, id),
                  id == OVI_CLASS_ATTRIBUTE_INSTANCE || id == OVI_CLASS_PROPERTY_INSTANCE ||
                      id == OVI_CLASS_NAMED_OBJECT || id == OVI_CLASS_OBJECT)
            << id;
    EXPECT_EQ(OviObject_GetLockable(own), nullptr);
}

TEST_F(PropertyInstanceTest, NeverHasAName) {
    OviPropertyInstance* own = PropertyOf(asset_, "T.y");
    EXPECT_STREQ(OviNamedObject_GetName(own), "");
    for (const char* name : {"y", "asset.y", "a_perfectly_valid_name"})
        EXPECT_FALSE(OviNamedObject_SetName(own, name));
    EXPECT_STREQ(OviNamedObject_GetName(own), "");
    EXPECT_TRUE(Events().empty());
}

TEST_F(PropertyInstanceTest, CarriesTextsLikeAnyNamedObject) {
    OviPropertyInstance* own = PropertyOf(asset_, "T.y");
    OviNamedObject_SetComment(own, "a remark");
    OviNamedObject_SetLabel(own, "de", "Wert");
    EXPECT_STREQ(OviNamedObject_GetComment(own), "a remark");
    EXPECT_STREQ(OviNamedObject_GetLabel(own, "de_AT"), "Wert");
}

TEST_F(PropertyInstanceTest, IsFoundByTheFullNameOnly) {
    EXPECT_NE(PropertyOf(asset_, "T.y"), nullptr);
    for (const char* name : {"y", "T.x", "t.y", "T#1.y", "T.", "", "T.y "})
        EXPECT_EQ(PropertyOf(asset_, name), nullptr) << name;
}

TEST_F(PropertyInstanceTest, IsMadeOnDemandWhenThePropertyIsKnown) {
    Schema("<template name='Other'><attribute name='z' type='INT32'/>"
           "<attribute name='z' type='INT32' version='2'/></template>",
           "other");
    EXPECT_EQ(OviInstance_GetPropertyInstance(asset_, "Other.z", false), nullptr);
    OviPropertyInstance* made = OviInstance_GetPropertyInstance(asset_, "Other.z", true);
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(OviPropertyInstance_GetProperty(made),
              OviTemplate_GetProperty(VersionOf("Other", 2), "z"));
    EXPECT_EQ(OviInstance_GetPropertyInstance(asset_, "Other.z", true), made);
    // Found under another name for the same property, too: there is one for each full name.
    EXPECT_EQ(OviInstance_GetPropertyInstance(asset_, "Other#1.z", true), made);
    EXPECT_EQ(OviPropertyInstance_GetTemplate(made), nullptr);
    EXPECT_EQ(OviInstance_GetTemplateCount(asset_), 1);
    for (const char* name : {"Other.q", "Nobody.z", "z", "Other", ""})
        EXPECT_EQ(OviInstance_GetPropertyInstance(asset_, name, true), nullptr) << name;
    EXPECT_TRUE(Events().empty());
}

TEST_F(PropertyInstanceTest, OfAnInheritedPropertyIsFoundThroughTheHeir) {
    // The lookup of properties searches ancestors; the result goes by the ancestor's name.
    EXPECT_EQ(OviInstance_GetPropertyInstance(asset_, "T.x", true), PropertyOf(asset_, "Base.x"));
}

TEST_F(PropertyInstanceTest, IsTakenFromItsInstanceWhenTheHostDeletesIt) {
    OviObject_Delete(PropertyOf(asset_, "T.y"));
    EXPECT_EQ(PropertyOf(asset_, "T.y"), nullptr);
    EXPECT_EQ(PropertiesOf(asset_), Lines{"Base.x"});
    EXPECT_TRUE(Events().empty());
    EXPECT_EQ(OviInstance_RemoveTemplate(asset_, TemplateOf("T")), 0);
    EXPECT_EQ(Events(), Lines{"0x1002 asset T#1"});
}

TEST_F(PropertyInstanceTest, KeepsLocksThatItAnnounces) {
    OviPropertyInstance* own = PropertyOf(asset_, "T.y");
    EXPECT_FALSE(OviPropertyInstance_IsBindingLocked(own));
    EXPECT_FALSE(OviPropertyInstance_IsValueLocked(own));
    EXPECT_TRUE(OviPropertyInstance_SetBindingLocked(own, true));
    EXPECT_TRUE(OviPropertyInstance_IsBindingLocked(own));
    EXPECT_FALSE(OviPropertyInstance_IsValueLocked(own));
    EXPECT_TRUE(OviPropertyInstance_SetValueLocked(own, true));
    EXPECT_TRUE(OviPropertyInstance_SetValueLocked(own, true));
    EXPECT_TRUE(OviPropertyInstance_SetBindingLocked(own, false));
    EXPECT_FALSE(OviPropertyInstance_IsBindingLocked(own));
    EXPECT_TRUE(OviPropertyInstance_IsValueLocked(own));
    EXPECT_EQ(Events(),
              (Lines{"0x2000 T.y true", "0x2001 T.y true", "0x2001 T.y true", "0x2000 T.y false"}));
}

TEST_F(PropertyInstanceTest, StoresTheLockThatCallbacksLeaveInTheFlag) {
    OviPropertyInstance* own = PropertyOf(asset_, "T.y");
    bool before = false;
    const Reaction invert([&](OviObject*, int, void* argument) {
        before = OviPropertyInstance_IsBindingLocked(own);
        *static_cast<bool*>(argument) = !*static_cast<bool*>(argument);
    });
    EXPECT_TRUE(OviPropertyInstance_SetBindingLocked(own, true));
    EXPECT_FALSE(OviPropertyInstance_IsBindingLocked(own));
    EXPECT_TRUE(OviPropertyInstance_SetValueLocked(own, false));
    EXPECT_TRUE(OviPropertyInstance_IsValueLocked(own));
    EXPECT_FALSE(before); // told before it is stored
}

TEST_F(PropertyInstanceTest, PassesTheFlagFromCallbackToCallback) {
    OviPropertyInstance* own = PropertyOf(asset_, "T.y");
    static int chain[2];
    const auto invert = [](void*, void*, int, void* argument) {
        *static_cast<bool*>(argument) = !*static_cast<bool*>(argument);
    };
    OviNotificationManager_RegisterPropertyInstanceCallback(invert, &chain[0]);
    OviNotificationManager_RegisterPropertyInstanceCallback(invert, &chain[1]);
    OviPropertyInstance_SetValueLocked(own, true);
    EXPECT_TRUE(OviPropertyInstance_IsValueLocked(own));
    OviNotificationManager_UnregisterPropertyInstanceCallback(&chain[0]);
    OviPropertyInstance_SetValueLocked(own, true);
    EXPECT_FALSE(OviPropertyInstance_IsValueLocked(own));
    OviNotificationManager_UnregisterPropertyInstanceCallback(&chain[1]);
}

TEST_F(PropertyInstanceTest, StoresLocksWithoutEnforcingThem) {
    OviAttributeInstance* own = AttributeOf(asset_, "T.y");
    OviPropertyInstance_SetBindingLocked(own, true);
    OviPropertyInstance_SetValueLocked(own, true);
    const int32_t nine = 9;
    OviAttributeInstance_SetValue(own, &nine);
    OviAttributeInstance_SetBinding(own, "node");
    EXPECT_EQ(ValueOf<int32_t>(own), 9);
    EXPECT_STREQ(OviAttributeInstance_GetBinding(own), "node");
}

TEST_F(PropertyInstanceTest, NullHandlesAreHarmless) {
    EXPECT_EQ(OviPropertyInstance_GetProperty(nullptr), nullptr);
    EXPECT_EQ(OviPropertyInstance_GetTemplate(nullptr), nullptr);
    EXPECT_FALSE(OviPropertyInstance_IsValid(nullptr));
    EXPECT_FALSE(OviPropertyInstance_IsBindingLocked(nullptr));
    EXPECT_FALSE(OviPropertyInstance_IsValueLocked(nullptr));
    EXPECT_FALSE(OviPropertyInstance_SetBindingLocked(nullptr, true));
    EXPECT_FALSE(OviPropertyInstance_SetValueLocked(nullptr, true));
    EXPECT_TRUE(Events().empty());
}
