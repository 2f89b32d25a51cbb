#include <algorithm>

#include "api/SceneHost.h"

namespace {

/// T has the properties a and b; version 2 redefines a, loses b and adds c and d.
class UpdateTemplateTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        Schema("<template name='T'>"
               "<attribute name='a' type='INT32' default='1'/>"
               "<attribute name='b' type='INT32' default='2'/>"
               "<attribute name='a' type='INT32' default='10' version='2'/>"
               "<attribute name='d' type='INT32' default='4' version='2'/>"
               "<attribute name='c' type='INT32' default='3' version='2'/>"
               "</template>");
        first_ = OviTemplateManager_GetTemplateVersion("T", 1);
        second_ = OviTemplateManager_GetTemplateVersion("T", 2);
        OviProperty* dropped = OviTemplate_GetProperty(second_, "b");
        OviTemplate_RemoveProperty(second_, dropped);
        OviObject_Delete(dropped);
        asset_ = OviAssetManager_NewAsset("asset");
        OviInstance_AddTemplate(asset_, first_);
        StartRecording();
    }

    OviTemplate* first_ = nullptr;
    OviTemplate* second_ = nullptr;
    OviAsset* asset_ = nullptr;
};

} // namespace

TEST_F(UpdateTemplateTest, MovesToTheNextVersionAndTellsOfEveryChange) {
    EXPECT_EQ(OviInstance_UpdateTemplate(asset_, first_), 0);
    EXPECT_EQ(OviInstance_GetTemplateCount(asset_), 1);
    EXPECT_EQ(OviInstance_GetTemplateAt(asset_, 0), second_);
    EXPECT_EQ(Events(), (Lines{"0x1003 asset T#1", "0x2006 asset T.b", "0x2005 asset T.c",
                               "0x2005 asset T.d"}));
    EXPECT_EQ(PropertiesOf(asset_), (Lines{"T.a", "T.b", "T.c", "T.d"}));
}

TEST_F(UpdateTemplateTest, KeepsPropertyInstancesWithTheirValues) {
    OviAttributeInstance* redefined = AttributeOf(asset_, "T.a");
    OviAttributeInstance* dropped = AttributeOf(asset_, "T.b");
    OviProperty* property = OviPropertyInstance_GetProperty(redefined);
    const int32_t seven = 7;
    OviAttributeInstance_SetValue(redefined, &seven);
    OviAttributeInstance_SetValue(dropped, &seven);
    OviInstance_UpdateTemplate(asset_, first_);
    EXPECT_EQ(AttributeOf(asset_, "T.a"), redefined);
    EXPECT_EQ(AttributeOf(asset_, "T.b"), dropped);
    EXPECT_EQ(ValueOf<int32_t>(redefined), 7);
    EXPECT_EQ(ValueOf<int32_t>(dropped), 7);
    EXPECT_EQ(OviPropertyInstance_GetProperty(redefined), property);
    EXPECT_EQ(OviPropertyInstance_GetTemplate(redefined), second_);
}

TEST_F(UpdateTemplateTest, PassesTheDroppedPropertyInsteadOfItsPropertyInstance) {
    void* argument = nullptr;
    const Reaction look([&](OviObject*, int event, void* given) {
        argument = event == OVI_EVENT_PROPERTY_REMOVED ? given : argument;
    });
    OviInstance_UpdateTemplate(asset_, first_);
    EXPECT_EQ(argument, OviTemplate_GetProperty(first_, "b"));
}

TEST_F(UpdateTemplateTest, TellsOfTheUpdateWhenTheTemplatesAreExchangedAlready) {
    OviTemplate* seen = nullptr;
    bool added = true;
    const Reaction look([&](OviObject*, int event, void*) {
        if (event != OVI_EVENT_TEMPLATE_UPDATED)
            return;
        seen = OviInstance_GetTemplateAt(asset_, 0);
        added = PropertyOf(asset_, "T.c") != nullptr;
    });
    OviInstance_UpdateTemplate(asset_, first_);
    EXPECT_EQ(seen, second_);
    EXPECT_FALSE(added);
}

TEST_F(UpdateTemplateTest, ChangesNothingWithoutANextVersion) {
    OviInstance_UpdateTemplate(asset_, first_);
    TakeEvents();
    EXPECT_EQ(OviInstance_UpdateTemplate(asset_, second_), -1);
    EXPECT_EQ(OviInstance_GetTemplateAt(asset_, 0), second_);
    EXPECT_TRUE(Events().empty());
}

TEST_F(UpdateTemplateTest, ChangesNothingForATemplateThatIsNotImplemented) {
    OviInstance* other = OviInstance_New("other");
    EXPECT_EQ(OviInstance_UpdateTemplate(other, first_), -1);
    EXPECT_EQ(OviInstance_GetTemplateCount(other), 0);
    EXPECT_TRUE(PropertiesOf(other).empty());
    EXPECT_TRUE(Events().empty());
    OviObject_Delete(other);
}

TEST_F(UpdateTemplateTest, GivesThePositionOfANextVersionThatWasImplementedAlready) {
    OviInstance_AddTemplate(asset_, OviTemplateManager_CreateTemplate("S"));
    OviInstance_AddTemplate(asset_, second_);
    TakeEvents();
    EXPECT_EQ(OviInstance_UpdateTemplate(asset_, first_), 1);
    EXPECT_EQ(OviInstance_GetTemplateCount(asset_), 2);
    EXPECT_EQ(OviInstance_GetTemplateAt(asset_, 1), second_);
    EXPECT_EQ(Events(), (Lines{"0x1003 asset T#1", "0x2006 asset T.b"}));
}

TEST_F(UpdateTemplateTest, MovesOneVersionAtATime) {
    OviTemplate* third = VersionOf("T", 3);
    OviInstance_UpdateTemplate(asset_, first_);
    EXPECT_EQ(OviInstance_GetTemplateAt(asset_, 0), second_);
    EXPECT_EQ(OviInstance_UpdateTemplate(asset_, first_), -1);
    EXPECT_EQ(OviInstance_UpdateTemplate(asset_, second_), 0);
    EXPECT_EQ(OviInstance_GetTemplateAt(asset_, 0), third);
}

TEST_F(UpdateTemplateTest, DoesNotLeapOverAMissingVersion) {
    VersionOf("T", 4);
    OviInstance_UpdateTemplate(asset_, first_);
    EXPECT_EQ(OviInstance_UpdateTemplate(asset_, second_), -1);
}

TEST_F(UpdateTemplateTest, FindsTheNextVersionByTheFullName) {
    OviTemplate* packed = OviTemplateManager_CreateTemplate("some.pack.T");
    OviInstance* instance = OviInstance_New("packed");
    OviInstance_AddTemplate(instance, packed);
    EXPECT_EQ(OviInstance_UpdateTemplate(instance, packed), -1);
    OviTemplate* next = VersionOf("some.pack.T", 2);
    EXPECT_EQ(OviInstance_UpdateTemplate(instance, packed), 0);
    EXPECT_EQ(OviInstance_GetTemplateAt(instance, 0), next);
    OviObject_Delete(instance);
}

TEST_F(UpdateTemplateTest, LeavesWhatParentsAddToTheNextVersionToTheHost) {
    Schema("<template name='P'><attribute name='p' type='INT32'/></template>"
           "<template name='K'><extends template='P' version='2'/></template>",
           "parents");
    OviInstance* instance = OviInstance_New("kid");
    OviTemplate* old = OviTemplateManager_GetTemplateVersion("K", 1);
    OviInstance_AddTemplate(instance, old);
    EXPECT_EQ(OviInstance_UpdateTemplate(instance, old), 0);
    EXPECT_EQ(PropertyOf(instance, "P.p"), nullptr);
    OviObject_Delete(instance);
}

TEST_F(UpdateTemplateTest, LooksOnlyAtThePropertiesOfTheNextVersion) {
    Schema("<template name='K'><attribute name='old' type='INT32'/>"
           "<attribute name='new' type='INT32' version='2'/></template>",
           "older");
    OviInstance* instance = OviInstance_New("k");
    OviTemplate* first = OviTemplateManager_GetTemplateVersion("K", 1);
    OviInstance_AddTemplate(instance, first);
    OviObject_Delete(PropertyOf(instance, "K.old"));
    TakeEvents();
    EXPECT_EQ(OviInstance_UpdateTemplate(instance, first), 0);
    EXPECT_EQ(PropertiesOf(instance), Lines{"K.new"});
    EXPECT_EQ(Events(), (Lines{"0x1003 k K#1", "0x2005 k K.new"}));
    OviObject_Delete(instance);
}

TEST_F(UpdateTemplateTest, AnnouncesNoDroppedPropertyThatTheNextVersionInherits) {
    Schema("<template name='P'><attribute name='b' type='INT32'/></template>", "parent");
    OviTemplate_AddParent(second_, TemplateOf("P"));
    TakeEvents();
    EXPECT_EQ(OviInstance_UpdateTemplate(asset_, first_), 0);
    EXPECT_EQ(Events(), (Lines{"0x1003 asset T#1", "0x2005 asset T.c", "0x2005 asset T.d"}));
}

TEST_F(UpdateTemplateTest, LetsACallbackTakeTheOldValueOver) {
    const int32_t seven = 7;
    OviAttributeInstance_SetValue(AttributeOf(asset_, "T.b"), &seven);
    const Reaction migrate([&](OviObject*, int event, void* argument) {
        if (event != OVI_EVENT_PROPERTY_ADDED)
            return;
        auto* added = static_cast<OviAttributeInstance*>(argument);
        if (std::string(OviProperty_GetFullName(OviPropertyInstance_GetProperty(added))) == "T.c")
            OviAttributeInstance_SetValue(
                added, OviAttributeInstance_GetValue(AttributeOf(asset_, "T.b")));
    });
    OviInstance_UpdateTemplate(asset_, first_);
    EXPECT_EQ(ValueOf<int32_t>(AttributeOf(asset_, "T.c")), 7);
    EXPECT_EQ(ValueOf<int32_t>(AttributeOf(asset_, "T.d")), 4);
}

namespace {

/// O#2 lists the property x, which is older than that version, so that nobody owns it and its full
/// name is "x"; O#3 redefines it.
class UpdateOfAnUnownedPropertyTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        OviTemplateManager_CreateTemplate("O");
        old_ = VersionOf("O", 2);
        unowned_ = OviAttributeProperty_New("x", 1);
        OviAttributeProperty_SetType(unowned_, OviTemplateManager_GetType("INT32"));
        OviTemplate_AddProperty(old_, unowned_, -1);
        next_ = VersionOf("O", 3);
        auto* redefined = OviAttributeProperty_New("x", 3);
        OviAttributeProperty_SetType(redefined, OviTemplateManager_GetType("INT32"));
        ASSERT_EQ(OviTemplate_AddProperty(next_, redefined, -1), ~0);
        asset_ = OviAssetManager_NewAsset("asset");
        OviInstance_AddTemplate(asset_, old_);
    }

    void TearDown() override {
        StopRecording();
        OviAssetManager_NewScene();
        OviObject_Delete(unowned_);
        SceneTest::TearDown();
    }

    OviTemplate* old_ = nullptr;
    OviTemplate* next_ = nullptr;
    OviAttributeProperty* unowned_ = nullptr;
    OviAsset* asset_ = nullptr;
};

} // namespace

TEST_F(UpdateOfAnUnownedPropertyTest, OnlyAnnouncesTheNewPropertyToThePropertyInstance) {
    OviAttributeInstance* attribute = AttributeOf(asset_, "x");
    ASSERT_NE(attribute, nullptr);
    const int32_t seven = 7;
    OviAttributeInstance_SetValue(attribute, &seven);
    StartRecording();
    EXPECT_EQ(OviInstance_UpdateTemplate(asset_, old_), 0);
    EXPECT_EQ(Events(), (Lines{"0x1003 asset O#2", "0x2002 x O.x"}));
    EXPECT_EQ(AttributeOf(asset_, "x"), attribute);
    EXPECT_EQ(OviPropertyInstance_GetProperty(attribute), unowned_);
    EXPECT_EQ(ValueOf<int32_t>(attribute), 7);
    EXPECT_EQ(PropertyOf(asset_, "O.x"), nullptr);
    EXPECT_FALSE(OviInstance_IsValid(asset_));
}

TEST_F(UpdateOfAnUnownedPropertyTest, HasThePropertyInstanceOutOfTheListWhileItIsAnnounced) {
    bool listed = true;
    const Reaction look([&](OviObject*, int event, void*) {
        if (event == OVI_EVENT_PROPERTY_UPDATED)
            listed = PropertyOf(asset_, "x") != nullptr;
    });
    OviInstance_UpdateTemplate(asset_, old_);
    EXPECT_FALSE(listed);
    EXPECT_NE(PropertyOf(asset_, "x"), nullptr);
}

TEST_F(UpdateOfAnUnownedPropertyTest, GivesThePropertyInstanceToThoseWhoAskForItMeanwhile) {
    OviPropertyInstance* before = PropertyOf(asset_, "x");
    OviPropertyInstance* given = nullptr;
    const Reaction ask([&](OviObject*, int event, void*) {
        if (event != OVI_EVENT_PROPERTY_UPDATED)
            return;
        given = OviInstance_GetPropertyInstance(asset_, "O#2.x", true);
        OviInstance_AddTemplate(asset_, old_);
    });
    OviInstance_UpdateTemplate(asset_, old_);
    EXPECT_EQ(given, before);
    EXPECT_EQ(PropertyOf(asset_, "x"), before);
    const Lines properties = PropertiesOf(asset_);
    EXPECT_EQ(std::count(properties.begin(), properties.end(), "x"), 1);
}

TEST_F(UpdateOfAnUnownedPropertyTest, LeavesThePropertyInstanceToAGeometryThatTookItMeanwhile) {
    Schema("<lod name='High'/><template name='Mesh'><geometry name='shape'>"
           "<alternate lod='High'/></geometry></template>");
    OviTemplateManager_CreateTemplate("N");
    OviTemplate* second = VersionOf("N", 2);
    OviNodeProperty* unowned = OviNodeProperty_New("y", 1);
    OviTemplate_AddProperty(second, unowned, -1);
    OviTemplate_AddProperty(VersionOf("N", 3), OviNodeProperty_New("y", 3), -1);
    OviAsset* thing = AssetOf("Mesh", "thing");
    OviInstance_AddTemplate(thing, second);
    auto* shape = static_cast<OviGeometryInstance*>(PropertyOf(thing, "Mesh.shape"));
    OviObject_Delete(OviGeometryInstance_GetNodeInstanceAt(shape, 0));
    auto* node = static_cast<OviNodeInstance*>(PropertyOf(thing, "y"));
    const Reaction take([&](OviObject*, int event, void*) {
        if (event == OVI_EVENT_PROPERTY_UPDATED)
            OviGeometryInstance_SetNodeInstanceAt(shape, 0, node);
    });
    EXPECT_EQ(OviInstance_UpdateTemplate(thing, second), 1);
    EXPECT_EQ(OviGeometryInstance_GetNodeInstanceAt(shape, 0), node);
    EXPECT_EQ(PropertyOf(thing, "y"), nullptr);
    OviAssetManager_NewScene(); // which deletes the node instance once
    OviObject_Delete(unowned);
}

TEST_F(UpdateOfAnUnownedPropertyTest, GivesNoTemplateForThePropertyInstance) {
    EXPECT_EQ(OviPropertyInstance_GetTemplate(PropertyOf(asset_, "x")), nullptr);
}
