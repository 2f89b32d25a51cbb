#include <vector>

#include "api/SceneHost.h"

namespace {

class InstanceTest : public SceneTest {};

} // namespace

TEST_F(InstanceTest, StartsEmpty) {
    OviInstance* instance = OviInstance_New("free");
    EXPECT_STREQ(OviNamedObject_GetName(instance), "free");
    EXPECT_EQ(OviInstance_GetTemplateCount(instance), 0);
    EXPECT_EQ(OviInstance_GetTemplateAt(instance, 0), nullptr);
    EXPECT_EQ(OviInstance_GetParentPropertyInstance(instance), nullptr);
    EXPECT_EQ(OviInstance_GetParentAsset(instance), nullptr);
    EXPECT_TRUE(OviInstance_IsValid(instance));
    OviObject_Delete(instance);
}

TEST_F(InstanceTest, TakesOnlyValidNamesWhenMade) {
    for (const char* name : {"a.b", "", "a b", "a-b"}) {
        OviInstance* instance = OviInstance_New(name);
        ASSERT_NE(instance, nullptr);
        EXPECT_STREQ(OviNamedObject_GetName(instance), "") << name;
        OviObject_Delete(instance);
    }
    OviInstance* unnamed = OviInstance_New(nullptr);
    EXPECT_STREQ(OviNamedObject_GetName(unnamed), "");
    OviObject_Delete(unnamed);
}

TEST_F(InstanceTest, IsAnInstanceAndANamedObject) {
    OviInstance* instance = OviInstance_New("free");
    OviAsset* asset = OviAssetManager_NewAsset("asset");
    EXPECT_EQ(OviObject_GetClass(instance), OVI_CLASS_INSTANCE);
    EXPECT_EQ(OviObject_GetClass(asset), OVI_CLASS_ASSET);
    for (int id = 0; id <= 45; ++id) {
        const bool base =
            id == OVI_CLASS_INSTANCE || id == OVI_CLASS_NAMED_OBJECT || id == OVI_CLASS_OBJECT;
        EXPECT_EQ(OviObject_ImplementsClass(instance, id), base) << id;
        EXPECT_EQ(OviObject_ImplementsClass(asset, id), base || id == OVI_CLASS_ASSET) << id;
    }
    OviObject_Delete(instance);
}

TEST_F(InstanceTest, ClonesToABareObject) {
    OviInstance* instance = OviInstance_New("free");
    OviAsset* asset = OviAssetManager_NewAsset("asset");
    for (OviInstance* source : {instance, static_cast<OviInstance*>(asset)}) {
        OviObject* clone = OviObject_Clone(source);
        EXPECT_EQ(OviObject_GetClass(clone), OVI_CLASS_OBJECT);
        OviObject_Delete(clone);
    }
    OviObject_Delete(instance);
}

TEST_F(InstanceTest, AnnouncesANameBeforeTheNameRuleIsApplied) {
    OviInstance* instance = OviInstance_New("old");
    StartRecording();
    EXPECT_TRUE(OviNamedObject_SetName(instance, "new"));
    EXPECT_FALSE(OviNamedObject_SetName(instance, "not valid"));
    EXPECT_FALSE(OviNamedObject_SetName(instance, ""));
    EXPECT_FALSE(OviNamedObject_SetName(instance, nullptr));
    EXPECT_TRUE(OviNamedObject_SetName(instance, "new"));
    EXPECT_EQ(Events(), (Lines{"0x1007 old new", "0x1007 new not valid", "0x1007 new ",
                               "0x1007 new ", "0x1007 new new"}));
    EXPECT_STREQ(OviNamedObject_GetName(instance), "new");
    OviObject_Delete(instance);
}

TEST_F(InstanceTest, TakesTheNameAsGivenWhateverCallbacksDo) {
    OviAsset* asset = OviAssetManager_NewAsset("a_name_too_long_for_any_small_buffer");
    const Reaction rename([&](OviObject*, int event, void* argument) {
        if (event != OVI_EVENT_INSTANCE_RENAMED)
            return;
        static_cast<char*>(argument)[0] = '.';
        OviNamedObject_SetName(asset, "meanwhile");
    });
    // Its own name as the new one: the callback's renaming must not pull it away.
    EXPECT_TRUE(OviNamedObject_SetName(asset, OviNamedObject_GetName(asset)));
    EXPECT_STREQ(OviNamedObject_GetName(asset), "a_name_too_long_for_any_small_buffer");
    EXPECT_EQ(OviAssetManager_GetAsset("a_name_too_long_for_any_small_buffer"), asset);
    EXPECT_EQ(OviAssetManager_GetAsset("meanwhile"), nullptr);
}

TEST_F(InstanceTest, OfAnAssetHasItselfAsParentAsset) {
    OviAsset* asset = OviAssetManager_NewAsset("asset");
    EXPECT_EQ(OviInstance_GetParentAsset(asset), asset);
    EXPECT_EQ(OviInstance_GetParentPropertyInstance(asset), nullptr);
}

TEST_F(InstanceTest, NullHandlesAreHarmless) {
    uint32_t size = 7;
    EXPECT_EQ(OviInstance_AddTemplate(nullptr, TemplateOf("Object")), -1);
    EXPECT_EQ(OviInstance_RemoveTemplate(nullptr, nullptr), -1);
    EXPECT_EQ(OviInstance_UpdateTemplate(nullptr, nullptr), -1);
    EXPECT_EQ(OviInstance_GetTemplate(nullptr, "Object"), nullptr);
    EXPECT_EQ(OviInstance_GetTemplateAt(nullptr, 0), nullptr);
    EXPECT_EQ(OviInstance_GetTemplateCount(nullptr), 0);
    EXPECT_EQ(OviInstance_GetPropertyInstance(nullptr, "a.b", true), nullptr);
    EXPECT_FALSE(OviInstance_IsPropertyInstanceValid(nullptr, "a.b"));
    EXPECT_FALSE(OviInstance_IsValid(nullptr));
    EXPECT_EQ(OviInstance_GetSize(nullptr), 0u);
    EXPECT_EQ(OviInstance_WriteToBinary(nullptr, &size, sizeof size), 0u);
    EXPECT_EQ(OviInstance_GetParentAsset(nullptr), nullptr);
    EXPECT_EQ(OviInstance_GetParentPropertyInstance(nullptr), nullptr);
    OviInstance_WriteToXML(nullptr, 0, &size, nullptr);
    EXPECT_EQ(size, 7u);
}

TEST_F(InstanceTest, TakesNoNullTemplateAndNoIndexOutOfRange) {
    OviAsset* asset = OviAssetManager_NewAsset("asset");
    EXPECT_EQ(OviInstance_AddTemplate(asset, nullptr), -1);
    EXPECT_EQ(OviInstance_RemoveTemplate(asset, nullptr), -1);
    EXPECT_EQ(OviInstance_UpdateTemplate(asset, nullptr), -1);
    EXPECT_EQ(OviInstance_GetTemplate(asset, nullptr), nullptr);
    EXPECT_EQ(OviInstance_GetPropertyInstance(asset, nullptr, true), nullptr);
    EXPECT_EQ(OviInstance_GetTemplateAt(asset, -1), nullptr);
    EXPECT_EQ(OviInstance_WriteToBinary(asset, nullptr, 100), 0u);
    OviInstance_WriteToXML(asset, 0, nullptr, nullptr);
}

TEST_F(InstanceTest, WritesItsTemplatesAndPropertyInstancesAsXML) {
    Schema("<template name='A'><attribute name='x' type='INT32' default='3'/></template>"
           "<template name='B'><attribute name='y' type='STRING'/></template>");
    OviAsset* asset = AssetOf("B", "thing");
    OviInstance_AddTemplate(asset, TemplateOf("A"));
    OviAttributeInstance_GetValue(AttributeOf(asset, "A.x"));
    OviAttributeInstance_SetBinding(AttributeOf(asset, "B.y"), "node.<y>");
    EXPECT_EQ(XMLOf(asset), "\n<asset name='thing'>"
                            "\n\t<implements template='A' version='1'/>"
                            "\n\t<implements template='B' version='1'/>"
                            "\n\t<attribute property='A.x' binding='' value='3'/>"
                            "\n\t<attribute property='B.y' binding='node.&lt;y&gt;'/>"
                            "\n</asset>");
}

TEST_F(InstanceTest, WritesAsDeeplyIndentedAsAskedAtOnce) {
    const std::string element = "<asset name='thing'/>";
    OviAsset* asset = OviAssetManager_NewAsset("thing");
    uint32_t size = 0;
    OviInstance_WriteToXML(asset, 200'000, &size, nullptr);
    EXPECT_EQ(size, 1 + 200'000 + element.size() + 1);
    std::string text(size, '#');
    OviInstance_WriteToXML(asset, 200'000, &size, text.data());
    EXPECT_EQ(text, "\n" + std::string(200'000, '\t') + element + '\0');
}

// Deeper than that nothing is indented, so that the size can tell how long a line is.
TEST_F(InstanceTest, WritesNothingDeeperThanAnIntegerCounts) {
    OviAsset* asset = OviAssetManager_NewAsset("thing");
    uint32_t size = 0;
    char start[4] = "###";
    OviInstance_WriteToXML(asset, 0xFFFFFFFF, &size, nullptr);
    EXPECT_EQ(size, 1 + 0x7FFFFFFFu + sizeof "<asset name='thing'/>");
    size = 3;
    OviInstance_WriteToXML(asset, 0x7FFFFFFF, &size, start);
    EXPECT_STREQ(start, "\n\t\t");
    EXPECT_EQ(size, 1 + 0x7FFFFFFFu + sizeof "<asset name='thing'/>");
}

TEST_F(InstanceTest, LeavesSizeAndBufferWhenNoSizeCouldTellTheLength) {
    OviAsset* asset = OviAssetManager_NewAsset("thing");
    OviInstance_AddTemplate(asset, TemplateOf("Object")); // three lines of 2^31 tabs
    uint32_t size = 2;
    char buffer[3] = "##";
    OviInstance_WriteToXML(asset, 0x7FFFFFFF, &size, buffer);
    EXPECT_EQ(size, 2u);
    EXPECT_STREQ(buffer, "##");
}

TEST_F(InstanceTest, GivesTheSizeNeededAndAnUnterminatedPrefixWhenTheBufferIsTooSmall) {
    OviAsset* asset = OviAssetManager_NewAsset("thing");
    const std::string text = XMLOf(asset);
    const auto needed = static_cast<uint32_t>(text.size() + 1);
    std::vector<char> buffer(text.size() + 1, '#');
    for (uint32_t given : {0u, 1u, 5u, needed - 1}) {
        std::fill(buffer.begin(), buffer.end(), '#');
        uint32_t size = given;
        OviInstance_WriteToXML(asset, 0, &size, buffer.data());
        EXPECT_EQ(size, needed);
        EXPECT_EQ(std::string(buffer.data(), given), text.substr(0, given));
        EXPECT_EQ(buffer[given], '#') << "behind the end of " << given;
    }
    for (uint32_t given : {needed, needed + 100}) {
        uint32_t size = given;
        OviInstance_WriteToXML(asset, 0, &size, buffer.data());
        EXPECT_EQ(size, given);
        EXPECT_STREQ(buffer.data(), text.c_str());
    }
}

TEST_F(InstanceTest, IsIndentedAsDeepAsAskedInXML) {
    OviAsset* asset = OviAssetManager_NewAsset("thing");
    char buffer[100] = {};
    uint32_t size = sizeof buffer;
    OviInstance_WriteToXML(asset, 2, &size, buffer);
    EXPECT_STREQ(buffer, "\n\t\t<asset name='thing'/>");
}

TEST_F(InstanceTest, HeldByTheHostOutlivesTheLibrary) {
    Schema("<template name='A'><attribute name='x' type='STRING' default='kept'/></template>"
           "<template name='B'><extends template='A'/></template>");
    OviInstance* held = OviInstance_New("held");
    OviInstance_AddTemplate(held, TemplateOf("B"));
    OviAttributeInstance_GetValue(AttributeOf(held, "A.x"));
    Ovi_Terminate();
    EXPECT_STREQ(OviType_GetFullName(OviInstance_GetTemplateAt(held, 0)), "B");
    EXPECT_STREQ(ValueOf<char*>(AttributeOf(held, "A.x")), "kept");
    EXPECT_STREQ(
        OviType_GetFullName(OviTemplate_GetParentAt(OviInstance_GetTemplateAt(held, 0), 0)), "A");
    OviObject_Delete(held);
    Ovi_Initialize();
}

TEST_F(InstanceTest, RemovedFromTheSceneOutlivesTheLibraryToo) {
    Schema("<template name='A'><attribute name='x' type='STRING' default='kept'/></template>");
    OviAsset* asset = AssetOf("A", "removed");
    OviAssetManager_RemoveAsset(asset);
    OviAttributeInstance_GetValue(AttributeOf(asset, "A.x"));
    Ovi_Terminate();
    EXPECT_STREQ(ValueOf<char*>(AttributeOf(asset, "A.x")), "kept");
    EXPECT_TRUE(OviNamedObject_SetName(asset, "renamed"));
    OviObject_Delete(asset);
    Ovi_Initialize();
}
