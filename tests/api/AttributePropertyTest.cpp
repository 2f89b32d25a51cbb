// Attribute properties: type, values, bounds, reference flag.

#include "api/Schema.h"
#include "api/Values.h"

namespace {

class AttributePropertyTest : public SchemaTest {
protected:
    void SetUp() override {
        SchemaTest::SetUp();
        number = NewAttribute("number", 1, TypeNamed("INT32"));
    }

    void TearDown() override {
        OviObject_Delete(number);
        SchemaTest::TearDown();
    }

    static void* Int(const char* text) { return NewValue(TypeNamed("INT32"), text); }

    bool IsValid(int value) const { return OviAttributeProperty_IsValueValid(number, &value); }

    static int ReadInt(const void* value) { return value ? *static_cast<const int*>(value) : -99; }

    OviAttributeProperty* number = nullptr;
};

TEST_F(AttributePropertyTest, ANewOneHasNothingButItsName) {
    OviAttributeProperty* made = OviAttributeProperty_New("points", 7);
    EXPECT_EQ(OviObject_GetClass(made), OVI_CLASS_ATTRIBUTE_PROPERTY);
    for (int id = -1; id < 50; ++id) {
        const bool implemented = id == OVI_CLASS_ATTRIBUTE_PROPERTY || id == OVI_CLASS_PROPERTY ||
                                 id == OVI_CLASS_NAMED_OBJECT || id == OVI_CLASS_OBJECT;
        EXPECT_EQ(OviObject_ImplementsClass(made, id), implemented) << id;
    }
    EXPECT_STREQ(OviNamedObject_GetName(made), "points");
    EXPECT_EQ(OviAttributeProperty_GetType(made), nullptr);
    EXPECT_FALSE(OviAttributeProperty_IsReference(made));
    EXPECT_EQ(OviAttributeProperty_GetDefaultValue(made), nullptr);
    EXPECT_EQ(OviAttributeProperty_GetMinValue(made), nullptr);
    EXPECT_EQ(OviAttributeProperty_GetMaxValue(made), nullptr);
    EXPECT_STREQ(OviAttributeProperty_GetAutoBind(made), "");
    OviObject_Delete(made);
}

TEST_F(AttributePropertyTest, AnInvalidNameStaysEmpty) {
    for (const char* name : {"", "a b", "a.b", static_cast<const char*>(nullptr)}) {
        OviAttributeProperty* made = OviAttributeProperty_New(name, 1);
        EXPECT_STREQ(OviNamedObject_GetName(made), "");
        OviObject_Delete(made);
    }
}

TEST_F(AttributePropertyTest, TheFlagAndTheBindingTextAreStored) {
    OviAttributeProperty_SetReference(number, true);
    EXPECT_TRUE(OviAttributeProperty_IsReference(number));
    OviAttributeProperty_SetReference(number, false);
    EXPECT_FALSE(OviAttributeProperty_IsReference(number));
    std::string text = "any text: <&>";
    OviAttributeProperty_SetAutoBind(number, text.c_str());
    text.assign("changed");
    EXPECT_STREQ(OviAttributeProperty_GetAutoBind(number), "any text: <&>");
    OviAttributeProperty_SetAutoBind(number, nullptr);
    EXPECT_STREQ(OviAttributeProperty_GetAutoBind(number), "");
}

TEST_F(AttributePropertyTest, ValuesAreOwnedAndReplaced) {
    using Setter = void (*)(OviAttributeProperty*, void*);
    using Getter = void* (*)(OviAttributeProperty*);
    const std::pair<Setter, Getter> slots[] = {
        {&OviAttributeProperty_SetDefaultValue, &OviAttributeProperty_GetDefaultValue},
        {&OviAttributeProperty_SetMinValue, &OviAttributeProperty_GetMinValue},
        {&OviAttributeProperty_SetMaxValue, &OviAttributeProperty_GetMaxValue}};
    for (const auto& [set, get] : slots) {
        void* first = Int("1");
        set(number, first);
        EXPECT_EQ(get(number), first);
        set(number, first); // its own value again changes nothing
        EXPECT_EQ(ReadInt(get(number)), 1);
        set(number, Int("2"));
        EXPECT_EQ(ReadInt(get(number)), 2);
        set(number, nullptr);
        EXPECT_EQ(get(number), nullptr);
        set(number, Int("3"));
        set(nullptr, nullptr);
        EXPECT_EQ(get(nullptr), nullptr);
    }
}

// The blocks remember who made them, so that a change of the type does no harm.
TEST_F(AttributePropertyTest, ValuesAreFreedByTheTypeThatMadeThem) {
    OviType* text = TypeNamed("STRING");
    OviAttributeProperty_SetType(number, text);
    OviAttributeProperty_SetDefaultValue(number, NewValue(text, "a longer text on the heap"));
    EXPECT_TRUE(OviAttributeProperty_SetType(number, TypeNamed("INT8")));
    EXPECT_EQ(TextOf(text, OviAttributeProperty_GetDefaultValue(number)),
              "a longer text on the heap");
    OviAttributeProperty_SetDefaultValue(number, NewValue(TypeNamed("INT8"), "1"));
}

TEST_F(AttributePropertyTest, ValuesThatTheNewTypeCannotReadAreNotWritten) {
    OviTemplate* owner = Make("Owner");
    OviAttributeProperty* changed = AddAttribute(owner, "changed");
    OviAttributeProperty_SetDefaultValue(changed, Int("1"));
    OviAttributeProperty_SetMinValue(changed, Int("1"));
    OviAttributeProperty_SetMaxValue(changed, Int("2"));
    for (OviType* type : {TypeNamed("STRING"), static_cast<OviType*>(Make("Other"))}) {
        OviAttributeProperty_SetType(changed, type);
        EXPECT_EQ(DeclarationOf(owner),
                  "\n<template name='Owner'>\n\t<attribute name='changed' type='" +
                      std::string(OviType_GetFullName(type)) + "'/>\n</template>");
    }
    OviAttributeProperty_SetType(changed, TypeNamed("INT32"));
    EXPECT_EQ(DeclarationOf(owner), "\n<template name='Owner'>\n\t<attribute name='changed' "
                                    "type='INT32' default='1' min='1' max='2'/>\n</template>");
}

TEST_F(AttributePropertyTest, ValuesAreFreedAsTheyWereMadeWhenTheTypeGetsAnotherBase) {
    OviType* custom = OviCustomType_New("Custom", 3);
    OviType_SetBaseType(custom, TypeNamed("INT32"));
    OviAttributeProperty* property = NewAttribute("property", 1, custom);
    const int one = 1;
    OviAttributeProperty_SetDefaultValue(property, OviType_NewValue(custom, &one, 3));
    OviAttributeProperty_SetMinValue(property, OviType_NewValue(custom, &one, 3));
    OviType_SetBaseType(custom, TypeNamed("STRING"));
    const char* texts[] = {"a", "b", "c"};
    EXPECT_TRUE(OviAttributeProperty_IsValueValid(property, texts));
    OviAttributeProperty_SetMaxValue(property, OviType_NewValue(custom, texts, 3));
    OviType_SetBaseType(custom, nullptr);
    EXPECT_EQ(ReadInt(OviAttributeProperty_GetDefaultValue(property)), 1);
    OviObject_Delete(property);
}

TEST_F(AttributePropertyTest, BoundsAreInclusiveAndZeroIsNone) {
    EXPECT_TRUE(IsValid(-2147483647));
    OviAttributeProperty_SetMinValue(number, Int("0"));
    OviAttributeProperty_SetMaxValue(number, Int("10"));
    EXPECT_TRUE(IsValid(-5));
    EXPECT_TRUE(IsValid(10));
    EXPECT_FALSE(IsValid(11));
    OviAttributeProperty_SetMinValue(number, Int("2"));
    EXPECT_TRUE(IsValid(2));
    EXPECT_FALSE(IsValid(1));
    OviAttributeProperty_SetMaxValue(number, nullptr);
    EXPECT_TRUE(IsValid(2147483647));
    EXPECT_FALSE(OviAttributeProperty_IsValueValid(number, nullptr));
    OviAttributeProperty* untyped = OviAttributeProperty_New("untyped", 1);
    EXPECT_FALSE(OviAttributeProperty_IsValueValid(untyped, "x"));
    OviObject_Delete(untyped);
}

TEST_F(AttributePropertyTest, BoundsHoldForEveryElementOfTheDimension) {
    OviType* triple = OviCustomType_New("Triple", 3);
    OviType_SetBaseType(triple, TypeNamed("INT32"));
    OviAttributeProperty* property = NewAttribute("triple", 1, triple);
    int* maximum = static_cast<int*>(OviType_NewValue(triple, nullptr, 3));
    maximum[0] = 1, maximum[1] = 0, maximum[2] = 3;
    OviAttributeProperty_SetMaxValue(property, maximum);
    const int within[] = {1, 1000, 3};
    const int beyond[] = {1, 1000, 4};
    EXPECT_TRUE(OviAttributeProperty_IsValueValid(property, within));
    EXPECT_FALSE(OviAttributeProperty_IsValueValid(property, beyond));
    OviObject_Delete(property);
}

// -- the type -------------------------------------------------------------------------------------

TEST_F(AttributePropertyTest, TheTypeMayNotMakeTheOwnerContainItself) {
    OviTemplate* a = Make("A");
    OviTemplate* b = Make("B");
    OviAttributeProperty* inner = AddAttribute(b, "a", a);
    OviAttributeProperty* property = AddAttribute(a, "x");
    for (OviTemplate* refused : {a, b, Make("C", {b}), Make("D", {a})}) {
        EXPECT_FALSE(OviAttributeProperty_SetType(property, refused));
        EXPECT_EQ(OviAttributeProperty_GetType(property), TypeNamed("INT32"));
    }
    EXPECT_TRUE(OviAttributeProperty_SetType(number, b)) << "has no owner";
    OviAttributeProperty_SetReference(property, true);
    EXPECT_TRUE(OviAttributeProperty_SetType(property, b)) << "is a reference";
    OviAttributeProperty_SetReference(property, false);
    OviAttributeProperty_SetType(property, nullptr);
    OviAttributeProperty_SetReference(inner, true);
    EXPECT_TRUE(OviAttributeProperty_SetType(property, b)) << "the inner one is a reference";
}

TEST_F(AttributePropertyTest, NoTypeIsATypeToo) {
    EXPECT_TRUE(OviAttributeProperty_SetType(number, nullptr));
    EXPECT_EQ(OviAttributeProperty_GetType(number), nullptr);
    EXPECT_FALSE(OviAttributeProperty_SetType(nullptr, TypeNamed("INT32")));
    EXPECT_EQ(OviAttributeProperty_GetType(nullptr), nullptr);
}

TEST_F(AttributePropertyTest, AnUnregisteredCustomTypeGoesWithTheLastPropertyThatUsesIt) {
    OviType* custom = OviCustomType_New("Custom", 1);
    OviType_SetBaseType(custom, TypeNamed("STRING"));
    OviAttributeProperty* first = NewAttribute("first", 1, custom);
    OviAttributeProperty* second = NewAttribute("second", 1, custom);
    OviAttributeProperty_SetDefaultValue(second, NewValue(custom, "text"));
    OviObject_Delete(first);
    EXPECT_STREQ(OviNamedObject_GetName(OviAttributeProperty_GetType(second)), "Custom");
    OviObject_Delete(second);
}

TEST_F(AttributePropertyTest, ACustomTypeThatIsReplacedGoesBackToTheCaller) {
    OviType* custom = OviCustomType_New("Custom", 1);
    OviAttributeProperty_SetType(number, custom);
    OviAttributeProperty_SetType(number, TypeNamed("INT32"));
    EXPECT_STREQ(OviNamedObject_GetName(custom), "Custom");
    OviObject_Delete(custom);
}

TEST_F(AttributePropertyTest, ACustomTypeThatIsReplacedGoesBackToTheCallerAlsoWithValues) {
    OviType* custom = OviCustomType_New("Custom", 1);
    OviType_SetBaseType(custom, TypeNamed("STRING"));
    OviAttributeProperty_SetType(number, custom);
    OviAttributeProperty_SetDefaultValue(number, OviType_NewValue(custom, nullptr, 1));
    OviAttributeProperty_SetType(number, TypeNamed("INT32"));
    OviAttributeProperty_SetDefaultValue(number, nullptr);
    EXPECT_STREQ(OviNamedObject_GetName(custom), "Custom");
    OviObject_Delete(custom);
}

TEST_F(AttributePropertyTest, ARegisteredCustomTypeIsNotThePropertys) {
    OviType* custom = OviCustomType_New("Custom", 1);
    OviAttributeProperty* early = NewAttribute("early", 1, custom);
    OviTemplateManager_AddType(custom);
    OviAttributeProperty* late = NewAttribute("late", 1, custom);
    OviAttributeProperty* clone = CloneOf(late);
    EXPECT_EQ(OviAttributeProperty_GetType(clone), custom);
    for (OviAttributeProperty* property : {early, late, clone})
        OviObject_Delete(property);
    EXPECT_EQ(OviTemplateManager_GetType("Custom"), custom);
}

TEST_F(AttributePropertyTest, APropertyMayOutliveTheLibraryWithItsTypeAndValues) {
    OviAttributeProperty* survivor = NewAttribute("survivor", 1, TypeNamed("STRING"));
    OviAttributeProperty_SetDefaultValue(survivor, NewValue(TypeNamed("STRING"), "still here"));
    OviType* type = OviAttributeProperty_GetType(survivor);
    Ovi_Terminate();
    EXPECT_EQ(TextOf(type, OviAttributeProperty_GetDefaultValue(survivor)), "still here");
    OviObject_Delete(survivor);
    Ovi_Initialize();
}

// -- clones ---------------------------------------------------------------------------------------

TEST_F(AttributePropertyTest, ACloneHasTheTypesInitialValuesAndIsNoReference) {
    OviAttributeProperty_SetDefaultValue(number, Int("5"));
    OviAttributeProperty_SetReference(number, true);
    OviAttributeProperty_SetAutoBind(number, "auto");
    OviAttributeProperty* clone = CloneOf(number);
    EXPECT_EQ(OviAttributeProperty_GetType(clone), TypeNamed("INT32"));
    EXPECT_STREQ(OviAttributeProperty_GetAutoBind(clone), "auto");
    EXPECT_FALSE(OviAttributeProperty_IsReference(clone));
    EXPECT_EQ(ReadInt(OviAttributeProperty_GetDefaultValue(clone)), 0);
    EXPECT_EQ(ReadInt(OviAttributeProperty_GetMinValue(clone)), 0);
    EXPECT_EQ(ReadInt(OviAttributeProperty_GetMaxValue(clone)), 0);
    OviObject_Delete(clone);
}

TEST_F(AttributePropertyTest, TheInitialValuesOfACloneCanBeReplacedAndTakenAway) {
    OviAttributeProperty* clone = CloneOf(number);
    OviAttributeProperty_SetDefaultValue(clone, nullptr);
    OviAttributeProperty_SetMinValue(clone, Int("2"));
    EXPECT_EQ(OviAttributeProperty_GetDefaultValue(clone), nullptr);
    EXPECT_EQ(ReadInt(OviAttributeProperty_GetMinValue(clone)), 2);
    int value = 1;
    EXPECT_FALSE(OviAttributeProperty_IsValueValid(clone, &value));
    value = 2;
    EXPECT_TRUE(OviAttributeProperty_IsValueValid(clone, &value));
    OviObject_Delete(clone);
}

TEST_F(AttributePropertyTest, TheInitialValuesOfACloneAreThoseOfItsFirstType) {
    OviAttributeProperty* clone = CloneOf(number);
    OviAttributeProperty_SetType(clone, TypeNamed("STRING"));
    const void* value = OviAttributeProperty_GetDefaultValue(clone);
    EXPECT_EQ(ReadInt(value), 0);
    EXPECT_EQ(OviAttributeProperty_GetDefaultValue(clone), value) << "made once";
    OviAttributeProperty_SetType(clone, nullptr);
    EXPECT_EQ(ReadInt(OviAttributeProperty_GetMaxValue(clone)), 0);
    OviObject_Delete(clone);
}

TEST_F(AttributePropertyTest, ACopyInANewVersionHasAnInstanceOfItsTemplateAsDefault) {
    OviTemplate* part = Make("Part");
    AddAttribute(part, "size");
    AddAttribute(Make("Whole"), "part", part);
    OviTemplate* second = OviTemplateManager_CreateTemplateVersion("Whole", 2);
    auto* copy = static_cast<OviAttributeProperty*>(OviTemplate_GetProperty(second, "part"));
    auto** value = static_cast<OviInstance**>(OviAttributeProperty_GetDefaultValue(copy));
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(OviInstance_GetTemplateAt(*value, 0), part);
    EXPECT_NE(OviInstance_GetPropertyInstance(*value, "Part.size", false), nullptr);
}

TEST_F(AttributePropertyTest, ACloneWithoutATypeHasNoValues) {
    OviAttributeProperty_SetType(number, nullptr);
    OviAttributeProperty* clone = CloneOf(number);
    EXPECT_EQ(OviAttributeProperty_GetType(clone), nullptr);
    EXPECT_EQ(OviAttributeProperty_GetDefaultValue(clone), nullptr);
    OviObject_Delete(clone);
}

TEST_F(AttributePropertyTest, ACloneSharesATypeThatWasDeletedWhileInUse) {
    OviType* type = TypeNamed("INT32");
    OviObject_Delete(type); // goes with the last property that uses it
    OviAttributeProperty* clone = CloneOf(number);
    OviType* own = OviAttributeProperty_GetType(clone);
    EXPECT_EQ(own, type);
    EXPECT_STREQ(OviType_GetFullName(own), "INT32");
    EXPECT_EQ(ReadInt(OviAttributeProperty_GetDefaultValue(clone)), 0);
    OviObject_Delete(clone);
    EXPECT_STREQ(OviType_GetFullName(type), "INT32");
}

TEST_F(AttributePropertyTest, ACloneHasACustomTypeOfItsOwn) {
    OviType* custom = OviCustomType_New("pkg.Custom", 2);
    OviType_SetBaseType(custom, TypeNamed("INT32"));
    OviAttributeProperty_SetType(number, custom);
    OviAttributeProperty* clone = CloneOf(number);
    OviType* copied = OviAttributeProperty_GetType(clone);
    EXPECT_NE(copied, custom);
    EXPECT_EQ(OviObject_GetClass(copied), OVI_CLASS_CUSTOM_TYPE);
    EXPECT_STREQ(OviType_GetFullName(copied), "pkg.Custom");
    EXPECT_EQ(OviType_GetBaseType(copied), TypeNamed("INT32"));
    const auto* initial = static_cast<int*>(OviAttributeProperty_GetDefaultValue(clone));
    EXPECT_EQ(initial[1], 0);
    OviObject_Delete(clone);
}

} // namespace
