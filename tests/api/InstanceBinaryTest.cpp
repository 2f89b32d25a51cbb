#include <algorithm>

#include "api/SceneHost.h"

namespace {

/// A template "B" whose properties nobody owns: only such are packed, since the values are looked
/// for under the properties' short names.
class InstanceBinaryTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        template_ = OviTemplateManager_CreateTemplate("B");
        std::fill(std::begin(block_), std::end(block_), kUntouched);
    }

    void TearDown() override {
        OviAssetManager_NewScene();
        Ovi_Terminate();
        for (OviAttributeProperty* property : properties_)
            OviObject_Delete(property);
        Ovi_Initialize();
        SceneTest::TearDown();
    }

    /// A property of version 2, which version 1 of the template does not come to own.
    void AddProperty(const char* name, OviType* type, OviTemplate* owner = nullptr) {
        properties_.push_back(OviAttributeProperty_New(name, 2));
        OviAttributeProperty_SetReference(properties_.back(), true);
        OviAttributeProperty_SetType(properties_.back(), type);
        OviTemplate_AddProperty(owner ? owner : template_, properties_.back(), -1);
    }
    void AddProperty(const char* name, const char* typeName) {
        AddProperty(name, OviTemplateManager_ResolveType(typeName));
    }

    template <class T> static void Set(OviInstance* instance, const char* name, T value) {
        OviAttributeInstance_SetValue(AttributeOf(instance, name), &value);
    }

    /// The bytes from a place on, as numbers.
    std::vector<int> Bytes(uint32_t from, uint32_t to) const {
        return {block_ + from, block_ + to};
    }

    uint32_t Pack(OviInstance* instance, uint32_t at = 0, uint32_t size = 64) {
        return OviInstance_WriteToBinary(instance, block_ + at, size);
    }

    using Numbers = std::vector<int>;
    static constexpr unsigned char kUntouched = 0xEE;

    OviTemplate* template_ = nullptr;
    std::vector<OviAttributeProperty*> properties_;
    alignas(64) unsigned char block_[256];
};

} // namespace

TEST_F(InstanceBinaryTest, ABlockOfMoreThanTwoGigabytesIsNotFull) {
    AddProperty("a", "INT32");
    OviAsset* asset = AssetOf("B");
    for (const uint32_t size : {0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
        Set<int32_t>(asset, "a", static_cast<int32_t>(size % 7) + 1);
        EXPECT_EQ(Pack(asset, 0, size), 4u) << size;
        EXPECT_EQ(block_[0], size % 7 + 1) << size;
    }
}

TEST_F(InstanceBinaryTest, IsEmptyWithoutTemplates) {
    OviAsset* asset = OviAssetManager_NewAsset("a");
    EXPECT_EQ(Pack(asset), 0u);
    EXPECT_EQ(OviInstance_GetSize(asset), 0u);
    EXPECT_EQ(block_[0], kUntouched);
}

TEST_F(InstanceBinaryTest, PacksNoPropertyThatItsTemplateOwns) {
    Schema("<template name='T'><attribute name='x' type='INT32' default='7'/></template>");
    OviAsset* asset = AssetOf("T");
    OviAttributeInstance_GetValue(AttributeOf(asset, "T.x"));
    EXPECT_EQ(Pack(asset), 0u);
    EXPECT_EQ(OviInstance_GetSize(asset), 4u);
}

TEST_F(InstanceBinaryTest, PutsValuesInNameOrderAtTheirAlignment) {
    AddProperty("b", "INT8");
    AddProperty("c", "INT16");
    AddProperty("a", "INT32");
    OviAsset* asset = AssetOf("B");
    Set<int32_t>(asset, "a", 0x01020304);
    Set<int8_t>(asset, "b", 5);
    Set<int16_t>(asset, "c", 6);
    const auto used = Pack(asset);
    const auto alignment =
        static_cast<uint32_t>(OviType_GetAlignment(OviTemplateManager_GetType("INT16")));
    const uint32_t at = (5 + alignment - 1) / alignment * alignment;
    EXPECT_EQ(used, at + 2);
    EXPECT_EQ(Bytes(0, 5), (Numbers{4, 3, 2, 1, 5}));
    EXPECT_EQ(Bytes(at, at + 2), (Numbers{6, 0}));
}

TEST_F(InstanceBinaryTest, LeavesTheGapInFrontOfAValueUntouched) {
    auto* wide = OviCustomType_New("Wide", 1);
    OviType_SetBaseType(wide, OviTemplateManager_GetType("INT32"));
    OviType_SetAlignment(wide, 16);
    AddProperty("a", "INT8");
    AddProperty("b", wide);
    OviAsset* asset = AssetOf("B");
    Set<int8_t>(asset, "a", 5);
    Set<int32_t>(asset, "b", 7);
    // Counted from the start of the block, wherever that lies.
    for (uint32_t at : {0u, 1u, 7u}) {
        std::fill(std::begin(block_), std::end(block_), kUntouched);
        Pack(asset, at);
        EXPECT_EQ(block_[at], 5);
        EXPECT_EQ(Bytes(at + 1, at + 16), Numbers(15, kUntouched)) << at;
    }
}

TEST_F(InstanceBinaryTest, ClosesATemplateWithZeroesCountedOnTheAddress) {
    OviType_SetAlignment(template_, 8);
    OviAsset* asset = AssetOf("B");
    for (uint32_t at = 0; at <= 8; ++at) {
        std::fill(std::begin(block_), std::end(block_), kUntouched);
        const uint32_t padding = (8 - at % 8) % 8;
        EXPECT_EQ(Pack(asset, at), padding) << at;
        EXPECT_EQ(Bytes(at, at + padding), Numbers(padding, 0)) << at;
        EXPECT_EQ(block_[at + padding], kUntouched) << at;
    }
}

// With an odd alignment that does not divide the high half of an address, the low half alone has
// another remainder.
TEST_F(InstanceBinaryTest, CountsTheClosingZeroesOnTheWholeAddress) {
    const auto start = static_cast<uint64_t>(reinterpret_cast<uintptr_t>(block_));
    uint64_t alignment = 3;
    while (start >> 32 != 0 && (start >> 32) % alignment == 0)
        alignment += 2;
    OviType_SetAlignment(template_, static_cast<int>(alignment));
    OviAsset* asset = AssetOf("B");
    for (uint32_t at = 0; at <= alignment; ++at)
        EXPECT_EQ(Pack(asset, at), (alignment - (start + at) % alignment) % alignment) << at;
}

TEST_F(InstanceBinaryTest, WritesTheClosingZeroesPastTheEndOfTheBlock) {
    OviType_SetAlignment(template_, 8);
    OviAsset* asset = AssetOf("B");
    EXPECT_EQ(Pack(asset, 3, 0), 5u);
    EXPECT_EQ(Bytes(3, 9), (Numbers{0, 0, 0, 0, 0, kUntouched}));
}

TEST_F(InstanceBinaryTest, WritesNoValueThatDoesNotFit) {
    AddProperty("a", "INT32");
    AddProperty("b", "INT32");
    OviAsset* asset = AssetOf("B");
    Set<int32_t>(asset, "a", 1);
    Set<int32_t>(asset, "b", 2);
    EXPECT_EQ(Pack(asset, 0, 8), 8u);
    EXPECT_EQ(block_[4], 2);
    std::fill(std::begin(block_), std::end(block_), kUntouched);
    EXPECT_EQ(Pack(asset, 0, 7), 4u);
    EXPECT_EQ(block_[0], 1);
    EXPECT_EQ(Bytes(4, 12), Numbers(8, kUntouched));
    EXPECT_EQ(Pack(asset, 0, 0), 0u);
}

TEST_F(InstanceBinaryTest, WritesAnAbsentValueAsZeroes) {
    AddProperty("a", "INT32");
    AddProperty("b", "INT8");
    OviAsset* asset = AssetOf("B");
    Set<int8_t>(asset, "b", 5);
    EXPECT_EQ(Pack(asset), 5u);
    EXPECT_EQ(Bytes(0, 6), (Numbers{0, 0, 0, 0, 5, kUntouched}));
    // Packing made no value.
    EXPECT_FALSE(OviPropertyInstance_IsValid(AttributeOf(asset, "a")));
}

TEST_F(InstanceBinaryTest, SkipsPropertiesWithoutAPropertyInstanceOrType) {
    AddProperty("a", static_cast<OviType*>(nullptr));
    AddProperty("b", "INT8");
    AddProperty("c", "INT8");
    OviAsset* asset = AssetOf("B");
    Set<int8_t>(asset, "c", 5);
    OviObject_Delete(PropertyOf(asset, "b"));
    EXPECT_EQ(Pack(asset), 1u);
    EXPECT_EQ(block_[0], 5);
}

TEST_F(InstanceBinaryTest, FollowsTheOrderOfTheTemplates) {
    AddProperty("x", "INT8");
    OviTemplate* earlier = OviTemplateManager_CreateTemplate("A");
    AddProperty("y", OviTemplateManager_GetType("INT8"), earlier);
    OviType_SetAlignment(earlier, 4);
    OviAsset* asset = AssetOf("B");
    OviInstance_AddTemplate(asset, earlier);
    Set<int8_t>(asset, "x", 1);
    Set<int8_t>(asset, "y", 2);
    EXPECT_EQ(Pack(asset), 5u);
    EXPECT_EQ(Bytes(0, 6), (Numbers{2, 0, 0, 0, 1, kUntouched}));
}

TEST_F(InstanceBinaryTest, PutsNestedInstancesInPlace) {
    AddProperty("number", "INT8");
    OviTemplate* outer = OviTemplateManager_CreateTemplate("Outer");
    AddProperty("after", OviTemplateManager_GetType("INT8"), outer);
    AddProperty("b", template_, outer);
    OviType_SetAlignment(template_, 4);
    OviAsset* asset = AssetOf("Outer");
    Set<int8_t>(asset, "after", 1);
    Set<int8_t>(NestedIn(asset, "b"), "number", 2);
    // "after" comes first by its name; the nested template is closed to 4.
    EXPECT_EQ(Pack(asset), 8u);
    EXPECT_EQ(Bytes(0, 9),
              (Numbers{1, kUntouched, kUntouched, kUntouched, 2, 0, 0, 0, kUntouched}));
}

TEST_F(InstanceBinaryTest, AgreesWithPackingTheValueAlone) {
    Schema("<template name='V'/><type name='List' type='V' dim='0'/>");
    OviTemplate* element = TemplateOf("V");
    OviTemplate* outer = OviTemplateManager_CreateTemplate("Outer");
    auto* list = OviTemplateManager_ResolveType("List");
    AddProperty("number", OviTemplateManager_GetType("INT16"), element);
    AddProperty("list", list, outer);
    OviAsset* asset = AssetOf("Outer");
    OviAsset* source = AssetOf("V");
    Set<int16_t>(source, "number", 0x0102);
    OviAttributeInstance* attribute = AttributeOf(asset, "list");
    OviAttributeInstance_SetDimension(attribute, 2);
    OviAsset* sources[] = {source, source};
    OviAttributeInstance_SetValue(attribute, sources);
    for (uint32_t size : {0u, 3u, 4u, 5u, 6u, 7u, 8u, 64u}) {
        std::fill(std::begin(block_), std::end(block_), kUntouched);
        EXPECT_EQ(Pack(asset, 0, size),
                  OviType_WriteValueToBinary(list, OviAttributeInstance_GetValue(attribute), 2,
                                             block_ + 128, static_cast<int>(size)));
        EXPECT_EQ(Bytes(0, 64), Bytes(128, 192)) << size;
    }
    EXPECT_EQ(Bytes(0, 8), (Numbers{2, 0, 0, 0, 2, 1, 2, 1}));
}

TEST_F(InstanceBinaryTest, MeasuresWithInheritedPropertiesAndMakesTheirPropertyInstances) {
    Schema("<template name='P'><attribute name='p' type='INT64'/></template>"
           "<template name='T'><extends template='P'/><attribute name='a' type='INT8'/>"
           "<attribute name='b' type='INT32'/></template>");
    OviAsset* asset = AssetOf("T");
    OviObject_Delete(PropertyOf(asset, "P.p"));
    OviObject_Delete(PropertyOf(asset, "T.b"));
    StartRecording();
    const uint32_t size = OviInstance_GetSize(asset);
    const auto alignment =
        static_cast<uint32_t>(OviType_GetAlignment(OviTemplateManager_GetType("INT32")));
    EXPECT_EQ(size, 8 + (alignment == 1 ? 1u : 4u) + 4);
    EXPECT_NE(PropertyOf(asset, "P.p"), nullptr);
    EXPECT_NE(PropertyOf(asset, "T.b"), nullptr);
    EXPECT_TRUE(Events().empty());
    OviInstance_AddTemplate(asset, TemplateOf("P"));
    EXPECT_EQ(OviInstance_GetSize(asset), size + 8);
}
