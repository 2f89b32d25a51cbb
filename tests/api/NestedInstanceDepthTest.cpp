// How deep instances are nested is decided by whoever writes the scene: nothing may depend on the
// size of the stack. Hosts call from threads with small ones.
#include <filesystem>

#include "api/SceneHost.h"
#include "support/SmallThread.h"

namespace {

constexpr int kDepth = 10000;

/// The asset "top" with instances of "Link" nested in the attribute "next", each in the one before.
class NestedInstanceDepthTest : public SceneTest {
protected:
    /// `attribute` is the name under which instances know the property.
    static std::string Chain(const std::string& attribute, int depth = kDepth) {
        std::string text;
        const std::string implements = "<implements template='Link' version='1'/>";
        for (int i = 0; i <= depth; ++i)
            text += "<asset name='" + (i == 0 ? "top" : "n" + std::to_string(i)) + "'>" +
                    implements + (i < depth ? "<attribute property='" + attribute + "'>" : "");
        for (int i = 0; i <= depth; ++i)
            text += i < depth ? "</asset></attribute>" : "</asset>";
        return text;
    }

    static int CountOf(const std::string& text, const std::string& part) {
        int count = 0;
        for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
            ++count;
        return count;
    }

    static OviInstance* DeepestIn(OviInstance* instance, const char* fullName, int depth) {
        for (int i = 0; i < depth; ++i)
            instance = NestedIn(instance, fullName);
        return instance;
    }
};

} // namespace

TEST_F(NestedInstanceDepthTest, IsLoadedCopiedWrittenAndDeletedOnASmallStack) {
    Schema("<template name='Link'><attribute name='next' type='Link' reference='true'/>"
           "</template><template name='Box'><attribute name='content' type='Link'/></template>");
    RunOnSmallStack([this] {
        ASSERT_TRUE(Load(Chain("Link.next")));
        EXPECT_TRUE(Errors().empty());
        OviAsset* top = OviAssetManager_GetAsset("top");
        OviInstance* deepest = DeepestIn(top, "Link.next", kDepth);
        EXPECT_EQ(OviNamedObject_GetName(deepest), "n" + std::to_string(kDepth));
        EXPECT_EQ(OviInstance_GetParentAsset(deepest), top);
        EXPECT_GT(OviInstance_GetSize(top) + 1, 0u);
        OviInstance_IsValid(top);

        OviAsset* box = AssetOf("Box", "box");
        const void* source = top;
        OviAttributeInstance_SetValue(AttributeOf(box, "Box.content"), &source);
        OviInstance* copy = DeepestIn(NestedIn(box, "Box.content"), "Link.next", kDepth);
        EXPECT_NE(copy, deepest);
        EXPECT_STREQ(OviNamedObject_GetName(copy), OviNamedObject_GetName(deepest));
        EXPECT_EQ(OviInstance_GetParentAsset(copy), box);

        // Half a gigabyte of indentation, most of it: only counted.
        uint32_t bytes = 0;
        OviInstance_WriteToXML(top, 0, &bytes, nullptr);
        EXPECT_GT(bytes, uint32_t{kDepth} * kDepth);
        OviObject_Delete(top);
        OviAssetManager_NewScene();
        EXPECT_EQ(OviInstance_GetParentAsset(copy), nullptr); // it lives on without the box
        EXPECT_EQ(OviInstance_GetTemplateCount(copy), 1);
        Ovi_Terminate();
        Ovi_Initialize();
    });
}

TEST_F(NestedInstanceDepthTest, IsTheSameAfterSavingAndLoading) {
    Schema("<template name='Link'><attribute name='next' type='Link' reference='true'/>"
           "</template>");
    constexpr int kSmallDepth = 300;
    ASSERT_TRUE(Load(Chain("Link.next", kSmallDepth)));
    ASSERT_TRUE(OviAssetManager_SaveScene(PathOf("deep.asset").c_str()));
    const std::string saved = ReadFile(PathOf("deep.asset"));
    EXPECT_EQ(CountOf(saved, "<asset "), kSmallDepth + 1);
    OviAssetManager_NewScene();
    ASSERT_TRUE(OviAssetManager_LoadScene(PathOf("deep.asset").c_str()));
    ASSERT_TRUE(OviAssetManager_SaveScene(PathOf("again.asset").c_str()));
    EXPECT_TRUE(ReadFile(PathOf("again.asset")) == saved) << "the scene changed";
}

TEST_F(NestedInstanceDepthTest, IsPackedOnASmallStack) {
    // Only a property whose full name is its own name is packed: one that nobody owns.
    Schema("<template name='Link'/>");
    OviTemplate* link = TemplateOf("Link");
    OviAttributeProperty* next = OviAttributeProperty_New("next", 2);
    OviAttributeProperty* number = OviAttributeProperty_New("number", 2);
    OviAttributeProperty_SetReference(next, true);
    OviAttributeProperty_SetType(next, link);
    OviAttributeProperty_SetType(number, OviTemplateManager_GetType("INT32"));
    OviTemplate_AddProperty(link, next, -1);
    OviTemplate_AddProperty(link, number, -1);
    RunOnSmallStack([this] {
        ASSERT_TRUE(Load(Chain("next")));
        OviAsset* top = OviAssetManager_GetAsset("top");
        ASSERT_NE(AttributeOf(DeepestIn(top, "next", kDepth), "next"), nullptr);
        std::vector<int32_t> block(kDepth + 100, -1);
        const auto size = static_cast<uint32_t>(block.size() * sizeof(int32_t));
        EXPECT_EQ(OviInstance_WriteToBinary(top, block.data(), size),
                  (kDepth + 1) * sizeof(int32_t));
        EXPECT_EQ(block[kDepth], 0);
        EXPECT_EQ(block[kDepth + 1], -1);
        OviAssetManager_NewScene();
    });
    Ovi_Terminate();
    OviObject_Delete(next);
    OviObject_Delete(number);
    Ovi_Initialize();
}
