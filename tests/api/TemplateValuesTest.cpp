// Templates as types: values are blocks of references to instances.

#include "api/Schema.h"

namespace {

class TemplateValuesTest : public SchemaTest {
protected:
    void SetUp() override {
        SchemaTest::SetUp();
        mesh = Make("Mesh");
    }

    static OviInstance* ElementOf(void* value, int index = 0) {
        return static_cast<OviInstance**>(value)[index];
    }

    static int SizeOf(OviTemplate* type, int count = 1) {
        return OviType_GetValueSize(type, nullptr, count);
    }

    OviTemplate* mesh = nullptr;
};

TEST_F(TemplateValuesTest, InstancesThatValuesLeftBehindLetGoOfATemplateThatIsDeleted) {
    OviAttributeProperty* member = NewAttribute("member", 1, mesh);
    void* value = OviType_NewValue(mesh, nullptr, 1);
    OviInstance* element = ElementOf(value);
    OviAttributeProperty_SetDefaultValue(member, value);
    OviObject_Delete(member); // leaves the instance to whoever knows it
    EXPECT_EQ(OviInstance_GetTemplateCount(element), 1);
    OviObject_Delete(mesh);
    EXPECT_EQ(OviInstance_GetTemplateCount(element), 0);
    OviObject_Delete(element);
}

TEST_F(TemplateValuesTest, InstancesInsideValuesThatOutliveTheLibraryKeepTheirSchema) {
    OviTemplate_AddProperty(mesh, NewAttribute("size"), -1);
    OviTemplate* box = Make("Box");
    OviTemplate_AddParent(box, mesh);
    OviAttributeProperty* survivor = NewAttribute("survivor", 1, box);
    void* value = OviType_NewValue(box, nullptr, 1);
    OviInstance* element = ElementOf(value);
    OviAttributeProperty_SetDefaultValue(survivor, value);
    Ovi_Terminate();
    OviPropertyInstance* size = OviInstance_GetPropertyInstance(element, "Mesh.size", false);
    EXPECT_STREQ(OviProperty_GetFullName(OviPropertyInstance_GetProperty(size)), "Mesh.size");
    OviObject_Delete(survivor); // and the schema with it
    EXPECT_EQ(OviInstance_GetPropertyInstance(element, "Mesh.size", false), nullptr);
    OviObject_Delete(element);
    Ovi_Initialize();
}

TEST_F(TemplateValuesTest, TheDefaultsOfATemplateThatIsDeletedLetGoOfIt) {
    OviAttributeProperty* member = NewAttribute("next", 1, nullptr);
    OviAttributeProperty_SetReference(member, true);
    OviTemplate_AddProperty(mesh, member, -1);
    OviAttributeProperty_SetType(member, mesh);
    void* value = OviType_NewValue(mesh, nullptr, 1);
    OviInstance* element = ElementOf(value);
    OviAttributeProperty_SetDefaultValue(member, value);
    OviObject_Delete(mesh);
    EXPECT_EQ(OviInstance_GetTemplateCount(element), 0);
    EXPECT_EQ(OviInstance_GetPropertyInstance(element, "Mesh.next", false), nullptr);
    OviObject_Delete(element);
}

TEST_F(TemplateValuesTest, ANewValueHoldsNamelessInstancesOfTheTemplate) {
    StartRecording();
    void* value = OviType_NewValue(mesh, nullptr, 2);
    for (int i = 0; i < 2; ++i) {
        OviInstance* element = ElementOf(value, i);
        EXPECT_EQ(OviObject_GetClass(element), OVI_CLASS_INSTANCE);
        EXPECT_EQ(NameOf(element), "");
        EXPECT_EQ(OviInstance_GetTemplateCount(element), 1);
        EXPECT_EQ(OviInstance_GetTemplateAt(element, 0), mesh);
    }
    EXPECT_EQ(Events(), Names{});
    OviType_DeleteValue(mesh, value, 2);
}

TEST_F(TemplateValuesTest, AValueWithoutElementsIsNull) {
    for (const int count : {0, -1})
        EXPECT_EQ(OviType_NewValue(mesh, nullptr, count), nullptr);
    OviType_DeleteValue(mesh, nullptr, 1);
}

TEST_F(TemplateValuesTest, ACopyHasInstancesOfItsOwn) {
    AddAttribute(mesh, "points");
    OviInstance* source = OviInstance_New("Teacup");
    OviInstance_AddTemplate(source, mesh);
    auto* points = static_cast<OviAttributeInstance*>(
        OviInstance_GetPropertyInstance(source, "Mesh.points", false));
    const int stored = 42;
    OviAttributeInstance_SetValue(points, &stored);
    OviInstance* const block[] = {source, nullptr};
    StartRecording();
    void* value = OviType_NewValue(mesh, block, 2);
    EXPECT_EQ(Events(), Names{});
    EXPECT_NE(ElementOf(value), source);
    EXPECT_EQ(NameOf(ElementOf(value)), "Teacup");
    auto* copied = static_cast<OviAttributeInstance*>(
        OviInstance_GetPropertyInstance(ElementOf(value), "Mesh.points", false));
    EXPECT_EQ(*static_cast<int*>(OviAttributeInstance_GetValue(copied)), 42);
    EXPECT_EQ(ElementOf(value, 1), nullptr);
    OviType_DeleteValue(mesh, value, 2);
    OviObject_Delete(source);
}

// Hosts may hold the instances, so neither they nor the block are freed.
TEST_F(TemplateValuesTest, DeletingAValueLeavesItsInstances) {
    void* value = OviType_NewValue(mesh, nullptr, 1);
    OviInstance* element = ElementOf(value);
    OviType_DeleteValue(mesh, value, 1);
    EXPECT_EQ(OviInstance_GetTemplateCount(element), 1);
    EXPECT_EQ(ElementOf(value), element);
    OviObject_Delete(element);
}

TEST_F(TemplateValuesTest, ValuesCompareByTheirNamesWithoutRegardToCase) {
    OviInstance* a = OviInstance_New("alpha");
    OviInstance* upper = OviInstance_New("ALPHA");
    OviInstance* b = OviInstance_New("Beta");
    const auto compare = [this](std::vector<OviInstance*> x, std::vector<OviInstance*> y) {
        return OviType_CompareValues(mesh, x.data(), y.data(), static_cast<int>(x.size()));
    };
    EXPECT_EQ(compare({a}, {upper}), 0);
    EXPECT_EQ(compare({a}, {b}), -1);
    EXPECT_EQ(compare({b}, {upper}), 1);
    EXPECT_EQ(compare({a, b}, {upper, a}), 1);
    EXPECT_EQ(compare({nullptr}, {a}), -1);
    EXPECT_EQ(OviType_CompareValues(mesh, &a, &b, 0), 0);
    for (OviInstance* instance : {a, upper, b})
        OviObject_Delete(instance);
}

TEST_F(TemplateValuesTest, AValueIsValidWhenNoElementIsNull) {
    OviAttributeProperty* property = NewAttribute("mesh", 1, mesh);
    OviInstance* instance = OviInstance_New("a");
    OviInstance* none = nullptr;
    EXPECT_TRUE(OviAttributeProperty_IsValueValid(property, &instance));
    EXPECT_FALSE(OviAttributeProperty_IsValueValid(property, &none));
    EXPECT_FALSE(OviAttributeProperty_IsValueValid(property, nullptr));
    OviObject_Delete(instance);
    OviObject_Delete(property);
}

TEST_F(TemplateValuesTest, BoundsDoNotMakeAValueInvalid) {
    OviAttributeProperty* property = NewAttribute("mesh", 1, mesh);
    OviInstance* const none = nullptr;
    OviAttributeProperty_SetMinValue(property, OviType_NewValue(mesh, &none, 1));
    OviAttributeProperty_SetMaxValue(property, OviType_NewValue(mesh, &none, 1));
    OviInstance* instance = OviInstance_New("a");
    EXPECT_TRUE(OviAttributeProperty_IsValueValid(property, &instance));
    EXPECT_FALSE(OviAttributeProperty_IsValueValid(property, &none));
    OviObject_Delete(instance);
    OviObject_Delete(property);
}

TEST_F(TemplateValuesTest, AValueWithoutElementsIsValidUnlessItIsNull) {
    const std::string file = WriteSchema("many.template", "<templates><type name='Meshes' "
                                                          "type='Mesh' dim='0'/></templates>");
    OviTemplateManager_LoadTemplateFile(file.c_str());
    OviAttributeProperty* property = NewAttribute("meshes", 1, TypeNamed("Meshes"));
    OviInstance* none = nullptr;
    EXPECT_TRUE(OviAttributeProperty_IsValueValid(property, &none)) << "no element is looked at";
    EXPECT_FALSE(OviAttributeProperty_IsValueValid(property, nullptr));
    OviObject_Delete(property);
}

TEST_F(TemplateValuesTest, TheTextOfAnElementIsItsName) {
    OviInstance* instance = OviInstance_New("Teacup");
    EXPECT_EQ(TextOf(mesh, &instance), "Teacup");
    EXPECT_EQ(TextOf(mesh, nullptr), "");
    OviObject_Delete(instance);
}

TEST_F(TemplateValuesTest, ATextMakesAnInstanceOfTheTemplateItNames) {
    OviTemplateManager_CreateTemplateVersion("Mesh", 2);
    void* value = OviType_NewValue(mesh, nullptr, 1);
    StartRecording();
    EXPECT_EQ(OviType_GetValueFromString(mesh, "Mesh", value, 0), 4);
    EXPECT_EQ(TakeEvents(), Names{"0x1001 Mesh Mesh#2"});
    EXPECT_EQ(NameOf(ElementOf(value)), "Mesh");
    EXPECT_EQ(OviTemplate_GetVersion(OviInstance_GetTemplateAt(ElementOf(value), 0)), 2);
    OviInstance* before = ElementOf(value);
    EXPECT_EQ(OviType_GetValueFromString(mesh, "Nobody", value, 0), 6);
    EXPECT_EQ(ElementOf(value), before);
    EXPECT_EQ(Events(), Names{});
    EXPECT_EQ(OviType_GetValueFromString(mesh, "Mesh", nullptr, 0), 4);
    EXPECT_EQ(OviType_GetValueFromString(mesh, nullptr, value, 0), 0);
    OviType_DeleteValue(mesh, value, 1);
}

TEST_F(TemplateValuesTest, ATextIsReadIntoTheElementItIsFor) {
    void* value = OviType_NewValue(mesh, nullptr, 2);
    OviInstance* first = ElementOf(value, 0);
    OviInstance* replaced = ElementOf(value, 1);
    OviNamedObject_SetName(replaced, "replaced");
    OviTemplateManager_AddAnchorType(replaced); // which forgets it when it is deleted
    EXPECT_EQ(OviType_GetValueFromString(mesh, "Mesh", value, 1), 4);
    EXPECT_EQ(OviTemplateManager_GetAnchorTypeCount(), 0);
    EXPECT_EQ(ElementOf(value, 0), first);
    EXPECT_EQ(TextOf(mesh, value, 0), "");
    EXPECT_EQ(TextOf(mesh, value, 1), "Mesh");
    OviType_DeleteValue(mesh, value, 2);
}

TEST_F(TemplateValuesTest, ANameWithAPackageIsNoNameForTheInstanceItMakes) {
    OviTemplate* cup = Make("pkg.Cup");
    void* value = OviType_NewValue(mesh, nullptr, 1);
    EXPECT_EQ(OviType_GetValueFromString(mesh, "pkg.Cup", value, 0), 7);
    EXPECT_EQ(NameOf(ElementOf(value)), "");
    EXPECT_EQ(OviInstance_GetTemplateAt(ElementOf(value), 0), cup);
    OviType_DeleteValue(mesh, value, 1);
}

// -- sizes ----------------------------------------------------------------------------------------

TEST_F(TemplateValuesTest, TheSizeCountsOwnPropertiesWithTheirPadding) {
    EXPECT_EQ(SizeOf(mesh), 0);
    AddAttribute(mesh, "z", TypeNamed("INT8"));
    AddAttribute(mesh, "a", TypeNamed("INT32")); // declared behind the byte
    EXPECT_EQ(SizeOf(mesh), 8);
    AddAttribute(mesh, "none", nullptr); // has no size and no padding
    EXPECT_EQ(SizeOf(mesh), 8);
    OviType_SetAlignment(mesh, 16);
    EXPECT_EQ(SizeOf(mesh), 16);
    EXPECT_EQ(SizeOf(mesh, 0), 0);
    EXPECT_EQ(SizeOf(mesh, -1), 0);
}

TEST_F(TemplateValuesTest, SeveralElementsAreCountedAgainForEachElement) {
    AddAttribute(mesh, "a", TypeNamed("INT32"));
    AddAttribute(mesh, "b", TypeNamed("INT8"));
    EXPECT_EQ(SizeOf(mesh, 1), 5);
    EXPECT_EQ(SizeOf(mesh, 2), (5 + 3 + 5) * 2);
    EXPECT_EQ(SizeOf(mesh, 3), (5 + 3 + 5 + 3 + 5) * 3);
}

TEST_F(TemplateValuesTest, ParentsCountWithTheirRoundedSizeOncePerPath) {
    AddAttribute(mesh, "x", TypeNamed("INT8"));
    OviType_SetAlignment(mesh, 4);
    OviTemplate* heir = Make("Heir", {Make("L", {mesh}), Make("R", {mesh})});
    AddAttribute(heir, "y", TypeNamed("INT8"));
    EXPECT_EQ(SizeOf(heir), 4 + 4 + 1);
}

TEST_F(TemplateValuesTest, OlderDefinitionsCountToo) {
    AddAttribute(mesh, "x", TypeNamed("INT64"));
    OviTemplate* second = OviTemplateManager_CreateTemplateVersion("Mesh", 2);
    AddAttribute(second, "x", TypeNamed("INT8"));
    EXPECT_EQ(SizeOf(second), 9);
}

TEST_F(TemplateValuesTest, ATemplateAsTypeOfAPropertyCountsWithItsSize) {
    AddAttribute(mesh, "x", TypeNamed("INT64"));
    OviTemplate* holder = Make("Holder");
    AddAttribute(holder, "flag", TypeNamed("BOOL"));
    AddAttribute(holder, "mesh", mesh);
    EXPECT_EQ(SizeOf(holder), 9); // the template's own alignment is 1
    OviType_SetAlignment(mesh, 8);
    EXPECT_EQ(SizeOf(holder), 16);
}

TEST_F(TemplateValuesTest, ATemplateMetAgainInsideItselfCountsNothing) {
    OviTemplate* other = Make("Other");
    AddAttribute(mesh, "x", TypeNamed("INT32"));
    AddAttribute(other, "y", TypeNamed("INT16"));
    for (const auto& [owner, type] : {std::pair{mesh, other}, std::pair{other, mesh}}) {
        OviAttributeProperty* reference = NewAttribute("ref", 1, type);
        OviAttributeProperty_SetReference(reference, true);
        OviTemplate_AddProperty(owner, reference, -1);
    }
    EXPECT_EQ(SizeOf(mesh), 4 + 2);
    EXPECT_EQ(SizeOf(other), 2 + 4);
}

TEST_F(TemplateValuesTest, WithInstancesTheSizeMakesMissingPropertyInstances) {
    AddAttribute(mesh, "x", TypeNamed("INT32"));
    OviInstance* empty = OviInstance_New("Empty");
    EXPECT_EQ(OviType_GetValueSize(mesh, &empty, 1), 4);
    EXPECT_NE(OviInstance_GetPropertyInstance(empty, "Mesh.x", false), nullptr);
    // Properties of packaged templates are not found by their full names.
    OviTemplate* packaged = Make("pkg.Other");
    AddAttribute(packaged, "y", TypeNamed("INT32"));
    EXPECT_EQ(OviType_GetValueSize(packaged, &empty, 1), 0);
    OviInstance* none = nullptr;
    EXPECT_EQ(OviType_GetValueSize(mesh, &none, 1), 0);
    OviObject_Delete(empty);
}

TEST_F(TemplateValuesTest, SizesBeyondAnIntStayAtItsLimit) {
    OviTemplate* below = mesh;
    AddAttribute(mesh, "x", TypeNamed("INT64"));
    for (int i = 0; i < 64; ++i) {
        const std::string level = std::to_string(i);
        OviTemplate* left = Make(("L" + level).c_str(), {below});
        OviTemplate* right = Make(("R" + level).c_str(), {below});
        below = Make(("D" + level).c_str(), {left, right});
    }
    EXPECT_EQ(SizeOf(Make("D0")), 16);
    EXPECT_EQ(SizeOf(Make("D26")), 1 << 30);
    EXPECT_EQ(SizeOf(Make("D27")), 2147483647);
    EXPECT_EQ(SizeOf(below), 2147483647);
    EXPECT_EQ(SizeOf(below, 2), 2147483647);
}

} // namespace
