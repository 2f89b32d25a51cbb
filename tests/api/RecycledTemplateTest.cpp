// Templates that outlive the file that defined them, because instances use them or to be defined
// anew.

#include "api/UnloadHost.h"

namespace {

class RecycledTemplateTest : public UnloadHost {};

TEST_F(RecycledTemplateTest, ARecycledTemplateIsEmptyAndFoundAsItsFirstVersion) {
    const std::string file = Load("a.template", "<template name='Base'/><template name='A'>"
                                                "<extends template='Base'/>"
                                                "<attribute name='x' type='INT32'/>"
                                                "<attribute name='y' type='INT32' version='2'/>"
                                                "</template>");
    OviTemplate* first = OviTemplateManager_GetTemplateVersion("A", 1);
    OviTemplate_CreateView(first, "Main");
    AddAttribute(Make("User"), "a", first);
    EXPECT_FALSE(Unload(file));
    EXPECT_EQ(Find("A"), first);
    EXPECT_TRUE(IsRecycled(first));
    EXPECT_EQ(ParentsOf(first), Names{});
    EXPECT_EQ(PropertiesAsDeclared(first), Names{});
    EXPECT_EQ(OviTemplate_GetViewCount(first), 0);
    EXPECT_EQ(OviTemplateManager_GetTemplateVersion("A", 2), nullptr);
}

TEST_F(RecycledTemplateTest, ARecycledTemplateMayBeDefinedAnewFromAnyFile) {
    const std::string file = Load("a.template", kOne);
    OviTemplate* one = Find("One");
    AddAttribute(Make("User"), "one", one);
    Unload(file);
    const std::string other = Load("b.template", "<template name='One'>"
                                                 "<attribute name='y' type='STRING'/>"
                                                 "<attribute name='z' type='STRING' version='2'/>"
                                                 "</template>");
    OviTemplate* first = OviTemplateManager_GetTemplateVersion("One", 1);
    EXPECT_EQ(first, one);
    EXPECT_FALSE(IsRecycled(one));
    EXPECT_EQ(ParentsOf(one), Names{"Object#1"});
    EXPECT_EQ(PropertiesByName(one), Names{"One.y"});
    EXPECT_EQ(PropertiesByName(Find("One")), (Names{"One.y", "One.z"}));
    EXPECT_STREQ(OviType_GetFileName(one), other.c_str());
    EXPECT_EQ(TypeOf("User.one"), one);
    EXPECT_FALSE(Unload(file)) << "nothing of it is left";
    EXPECT_NE(Find("One"), nullptr);
}

TEST_F(RecycledTemplateTest, OtherFilesMayExtendItAndUseItAsAType) {
    const std::string file = Load("a.template", kOne);
    OviTemplate* one = Find("One");
    AddAttribute(Make("User"), "one", one);
    Unload(file);
    Load("b.template", "<template name='Heir'><extends template='One'/></template>"
                       "<template name='Holder'><attribute name='one' type='One'/></template>");
    EXPECT_EQ(ParentsOf(Find("Heir")), Names{"One#1"});
    EXPECT_EQ(TypeOf("Holder.one"), one);
    EXPECT_TRUE(IsRecycled(one)) << "to be named does not define it";
}

TEST_F(RecycledTemplateTest, AVersionCopiedFromARecycledTemplateIsNotRecycled) {
    const std::string file = Load("a.template", kOne);
    AddAttribute(Make("User"), "one", Find("One"));
    Unload(file);
    OviTemplate* second = OviTemplateManager_CreateTemplateVersion("One", 2);
    EXPECT_FALSE(IsRecycled(second));
    EXPECT_EQ(OviTemplate_GetVersion(Find("One")), 1) << "while version 1 is recycled";
    OviTemplate* first = OviTemplateManager_GetTemplateVersion("One", 1);
    EXPECT_EQ(OviTemplateManager_CreateTemplate("One"), first);
    EXPECT_FALSE(IsRecycled(first));
    EXPECT_EQ(Find("One"), second) << "which was made meanwhile and is the latest";
    EXPECT_EQ(OviTemplate_GetLatestVersion(first), 2);
    OviTemplate* third = OviTemplateManager_CreateTemplateVersion("One", 3);
    EXPECT_EQ(Find("One"), third);
    EXPECT_EQ(OviTemplate_GetLatestVersion(first), 3);
}

// -- living instances -----------------------------------------------------------------------------

TEST_F(RecycledTemplateTest, ATemplateOfALivingInstanceStaysWithItsProperties) {
    const std::string file = Load("a.template", "<template name='Base'>"
                                                "<attribute name='b' type='STRING'/></template>"
                                                "<template name='A'><extends template='Base'/>"
                                                "<attribute name='x' type='INT32' default='7'/>"
                                                "</template><template name='Unused'/>");
    OviAsset* asset = OviAssetManager_NewAsset("Asset");
    OviInstance_AddTemplate(asset, Find("A"));
    Unload(file);
    EXPECT_EQ(Templates(), (Names{"A#1", "Base#1", "Object#1"}));
    EXPECT_TRUE(IsRecycled(Find("A")));
    EXPECT_TRUE(IsRecycled(Find("Base")));
    auto* x =
        static_cast<OviAttributeInstance*>(OviInstance_GetPropertyInstance(asset, "A.x", false));
    EXPECT_EQ(*static_cast<int*>(OviAttributeInstance_GetValue(x)), 7);
    OviAssetManager_NewScene();
    EXPECT_TRUE(Unload(file));
    EXPECT_EQ(Templates(), Names{"Object#1"});
}

TEST_F(RecycledTemplateTest, APropertyInstanceAloneKeepsItsTemplate) {
    const std::string file = Load("a.template", kOne);
    OviInstance* instance = OviInstance_New("Free");
    EXPECT_NE(OviInstance_GetPropertyInstance(instance, "One.x", true), nullptr);
    EXPECT_EQ(OviInstance_GetTemplateCount(instance), 0);
    EXPECT_FALSE(Unload(file));
    EXPECT_NE(OviTemplateManager_GetProperty("One.x"), nullptr);
    OviObject_Delete(instance);
    EXPECT_TRUE(Unload(file));
}

TEST_F(RecycledTemplateTest, ATemplateInUseCanBeRedefinedWithoutHarmToTheInstance) {
    const std::string file = Load("a.template", kOne);
    OviInstance* instance = OviInstance_New("Free");
    OviInstance_AddTemplate(instance, Find("One"));
    OviPropertyInstance* x = OviInstance_GetPropertyInstance(instance, "One.x", false);
    OviProperty* old = OviPropertyInstance_GetProperty(x);
    Unload(file);
    Load("a.template", "<template name='One'><attribute name='x' type='STRING'/></template>");
    EXPECT_NE(OviTemplateManager_GetProperty("One.x"), old);
    EXPECT_EQ(OviPropertyInstance_GetProperty(x), old);
    EXPECT_NE(OviAttributeInstance_GetValue(static_cast<OviAttributeInstance*>(x)), nullptr);
    OviObject_Delete(instance);
    OviObject_Delete(old); // a host may delete what was put aside once nothing uses it
    EXPECT_TRUE(Unload(file));
}

TEST_F(RecycledTemplateTest, OneVersionInUseDoesNotKeepTheOthers) {
    const std::string file = Load("a.template", "<template name='A'>"
                                                "<attribute name='x' type='INT32'/>"
                                                "<attribute name='y' type='INT32' version='2'/>"
                                                "<attribute name='z' type='INT32' version='3'/>"
                                                "</template>");
    for (const unsigned used : {3U, 2U}) {
        OviInstance* instance = OviInstance_New("Free");
        OviInstance_AddTemplate(instance, OviTemplateManager_GetTemplateVersion("A", used));
        Unload(file);
        EXPECT_NE(OviTemplateManager_GetTemplateVersion("A", used), nullptr) << used;
        EXPECT_EQ(OviTemplateManager_GetTemplateVersion("A", 5 - used), nullptr) << used;
        EXPECT_TRUE(OviTemplateManager_LoadTemplateFile(file.c_str()));
        EXPECT_EQ(OviTemplate_GetVersion(Find("A")), 3);
        EXPECT_EQ(PropertiesByName(Find("A")), (Names{"A.x", "A.y", "A.z"}));
        OviObject_Delete(instance);
    }
    EXPECT_TRUE(Unload(file));
}

TEST_F(RecycledTemplateTest, WhatOnlyDefaultsOfTheFileUseGoesInAnyOrderOfNames) {
    for (const char* names : {"ABC", "CBA", "BCA", "CAB"}) {
        const std::string base(1, names[0]), heir(1, names[1]), user(1, names[2]);
        const std::string file =
            Load("a.template", "<template name='" + base +
                                   "'><attribute name='x' type='INT32'/>"
                                   "<attribute name='y' type='INT32' version='2'/></template>"
                                   "<template name='" +
                                   heir + "'><extends template='" + base + "'/></template>" +
                                   "<template name='" + user + "'><attribute name='h' type='" +
                                   heir + "' default=''/></template>");
        EXPECT_TRUE(Unload(file)) << names;
        EXPECT_EQ(Templates(), Names{"Object#1"}) << names;
    }
}

} // namespace
