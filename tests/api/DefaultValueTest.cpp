// Defaults that come before the type, and those of types of variable length.

#include "api/SceneHost.h"

namespace {

class DefaultValueTest : public SceneTest {
protected:
    void SetUp() override {
        SceneTest::SetUp();
        Schema("<type name='Ints' type='INT32' dim='0'/><type name='Bools' type='BOOL' dim='0'/>"
               "<type name='Floats' type='FLOAT' dim='0'/><type name='Texts' type='STRING' "
               "dim='0'/><template name='N'/><type name='Ns' type='N' dim='0'/>"
               "<type name='Triple' type='STRING' dim='3'/>"
               "<enum name='E' type='INT32'><item name='I' value='7'/></enum>"
               "<type name='Es' type='E' dim='0'/>"
               "<template name='T'/>");
    }

    static OviType* TypeNamed(const char* name) { return OviTemplateManager_ResolveType(name); }

    /// A new property of that type with a default that it was given before the type.
    static OviAttributeProperty* WithEarlyDefault(OviType* type, void* value) {
        OviAttributeProperty* property = OviAttributeProperty_New("a", 1);
        OviAttributeProperty_SetDefaultValue(property, value);
        EXPECT_TRUE(OviAttributeProperty_SetType(property, type));
        return property;
    }

    /// The attribute of a new asset for a property, which the template "T" owns from now on.
    static OviAttributeInstance* InstanceOf(OviAttributeProperty* property) {
        OviTemplate_AddProperty(TemplateOf("T"), property, -1);
        return AttributeOf(AssetOf("T", "x"), "T.a");
    }

    /// An attribute of a new asset, with a default of one element, and three elements.
    OviAttributeInstance* ThreeOf(const char* type, const void* one) {
        OviAttributeProperty* property = OviAttributeProperty_New("a", 1);
        OviAttributeProperty_SetType(property, TypeNamed(type));
        OviAttributeProperty_SetDefaultValue(property, OviType_NewValue(TypeNamed(type), one, 1));
        OviAttributeInstance* attribute = InstanceOf(property);
        EXPECT_TRUE(OviAttributeInstance_SetDimension(attribute, 3));
        return attribute;
    }
};

TEST_F(DefaultValueTest, IsKeptFromBeforeTheTypeAndTakenOverWithIt) {
    OviType* type = TypeNamed("STRING");
    const char* text = "first";
    void* value = OviType_NewValue(type, &text, 1);
    OviAttributeProperty* property = OviAttributeProperty_New("a", 1);
    OviAttributeProperty_SetDefaultValue(property, value);
    EXPECT_EQ(OviAttributeProperty_GetDefaultValue(property), value);
    OviAttributeProperty_SetType(property, type);
    EXPECT_EQ(OviAttributeProperty_GetDefaultValue(property), value);
    OviTemplate_AddProperty(TemplateOf("T"), property, -1); // which frees it in the end
    EXPECT_STREQ(ValueOf<const char*>(AttributeOf(AssetOf("T", "x"), "T.a")), "first");
}

TEST_F(DefaultValueTest, FromBeforeATypeOfSeveralElementsHasThemAll) {
    OviType* type = TypeNamed("Triple");
    const char* texts[] = {"a text that is kept", "another such text", "one more such text"};
    OviAttributeInstance* attribute =
        InstanceOf(WithEarlyDefault(type, OviType_NewValue(type, texts, 3)));
    for (int i = 0; i < 3; ++i)
        EXPECT_STREQ(ValueOf<const char*>(attribute, i), texts[i]);
}

TEST_F(DefaultValueTest, FromBeforeATypeOfVariableLengthHasOneElement) {
    OviType* type = TypeNamed("Ints");
    const int seven = 7;
    OviAttributeInstance* attribute =
        InstanceOf(WithEarlyDefault(type, OviType_NewValue(type, &seven, 1)));
    EXPECT_TRUE(OviAttributeInstance_SetDimension(attribute, 3));
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(ValueOf<int>(attribute, i), 7);
}

TEST_F(DefaultValueTest, BoundsFromBeforeTheTypeHoldWithIt) {
    OviType* type = TypeNamed("INT32");
    const int two = 2;
    const int four = 4;
    OviAttributeProperty* property = OviAttributeProperty_New("a", 1);
    OviAttributeProperty_SetMinValue(property, OviType_NewValue(type, &two, 1));
    OviAttributeProperty_SetMaxValue(property, OviType_NewValue(type, &four, 1));
    EXPECT_TRUE(OviAttributeProperty_SetType(property, type)); // and frees them in the end
    for (int value = 0; value < 7; ++value)
        EXPECT_EQ(OviAttributeProperty_IsValueValid(property, &value), value >= 2 && value <= 4)
            << value;
    OviObject_Delete(property);
}

TEST_F(DefaultValueTest, StaysTheCallersWithoutAType) {
    OviType* type = TypeNamed("INT32");
    void* values[] = {OviType_NewValue(type, nullptr, 1), OviType_NewValue(type, nullptr, 1),
                      OviType_NewValue(type, nullptr, 1)};
    OviAttributeProperty* property = OviAttributeProperty_New("a", 1);
    OviAttributeProperty_SetDefaultValue(property, values[0]);
    OviAttributeProperty_SetDefaultValue(property, values[1]);
    OviAttributeProperty_SetMinValue(property, values[2]);
    EXPECT_EQ(OviAttributeProperty_GetMinValue(property), values[2]);
    EXPECT_EQ(OviAttributeProperty_GetMaxValue(property), nullptr);
    OviObject_Delete(property);
    for (void* value : values)
        OviType_DeleteValue(type, value, 1);
}

TEST_F(DefaultValueTest, OfNumbersOfVariableLengthStandsInEveryPlace) {
    const int seven = 7;
    OviAttributeInstance* attribute = ThreeOf("Ints", &seven);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(ValueOf<int>(attribute, i), 7);
}

TEST_F(DefaultValueTest, OfTruthValuesOfVariableLengthStandsInEveryPlace) {
    const bool yes = true;
    OviAttributeInstance* attribute = ThreeOf("Bools", &yes);
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(ValueOf<bool>(attribute, i));
}

TEST_F(DefaultValueTest, OfAnEnumerationOfNumbersOfVariableLengthStandsInEveryPlace) {
    const int seven = 7;
    OviAttributeInstance* attribute = ThreeOf("Es", &seven);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(ValueOf<int>(attribute, i), 7);
}

TEST_F(DefaultValueTest, OfACloneOfVariableLengthIsNone) {
    OviType* type = TypeNamed("Ints");
    const int seven = 7;
    OviAttributeProperty* source = WithEarlyDefault(type, OviType_NewValue(type, &seven, 1));
    auto* clone = static_cast<OviAttributeProperty*>(OviObject_Clone(source));
    OviObject_Delete(source);
    EXPECT_EQ(OviAttributeProperty_GetDefaultValue(clone), nullptr);
    EXPECT_EQ(OviAttributeProperty_GetMinValue(clone), nullptr);
    EXPECT_EQ(OviAttributeProperty_GetMaxValue(clone), nullptr);
    OviAttributeInstance* attribute = InstanceOf(clone);
    EXPECT_TRUE(OviAttributeInstance_SetDimension(attribute, 3));
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(ValueOf<int>(attribute, i), 0);
}

TEST_F(DefaultValueTest, OfOtherTypesOfVariableLengthIsTheFirstAndTheRestIsZero) {
    const float half = 0.5f;
    OviAttributeInstance* floats = ThreeOf("Floats", &half);
    EXPECT_EQ(ValueOf<float>(floats, 0), 0.5f);
    EXPECT_EQ(ValueOf<float>(floats, 1), 0.0f);
    EXPECT_EQ(ValueOf<float>(floats, 2), 0.0f);
}

TEST_F(DefaultValueTest, OfTextsOfVariableLengthIsTheFirst) {
    const char* text = "one";
    OviAttributeInstance* texts = ThreeOf("Texts", &text);
    EXPECT_STREQ(ValueOf<const char*>(texts, 0), "one");
    EXPECT_EQ(ValueOf<const char*>(texts, 1), nullptr);
    EXPECT_EQ(ValueOf<const char*>(texts, 2), nullptr);
}

TEST_F(DefaultValueTest, OfTemplatesOfVariableLengthIsTheFirst) {
    OviAttributeInstance* nested = ThreeOf("Ns", nullptr);
    EXPECT_EQ(OviInstance_GetTemplateCount(ValueOf<OviInstance*>(nested, 0)), 1);
    EXPECT_EQ(ValueOf<OviInstance*>(nested, 1), nullptr);
}

} // namespace
