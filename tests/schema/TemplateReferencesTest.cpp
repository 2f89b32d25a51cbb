// Which types a template depends on.

#include "schema/Managed.h"

#include "types/CustomType.h"
#include "types/Enumeration.h"

namespace Kor {
namespace {

class TemplateReferencesTest : public ManagedTest {
protected:
    /// A registered custom type.
    static CustomType& Custom(const char* name, Type* base) {
        auto* made = new CustomType(name, 1);
        made->SetBaseType(base);
        Manager().AddType(made);
        return *made;
    }
};

TEST_F(TemplateReferencesTest, ATemplateRefersToItselfItsBaseAndItsAncestors) {
    Template& a = Make("A");
    Template& b = Make("B", {&a});
    Template& c = Make("C", {&b});
    c.SetBaseType(Int32());
    for (const Type* type : {static_cast<Type*>(&c), Int32(), static_cast<Type*>(&b),
                             static_cast<Type*>(&a), static_cast<Type*>(Manager().GetRoot())})
        EXPECT_TRUE(c.RefersTo(type, nullptr));
    EXPECT_FALSE(a.RefersTo(&c, nullptr));
    EXPECT_FALSE(c.RefersTo(nullptr, nullptr));
    EXPECT_FALSE(c.RefersTo(Manager().GetType("BOOL"), nullptr));
    c.SetBaseType(nullptr);
}

TEST_F(TemplateReferencesTest, ATemplateRefersToTheTypesOfItsProperties) {
    Template& a = Make("A");
    Template& b = Make("B");
    CustomType& custom = Custom("Custom", Int32());
    AddAttribute(a, "custom", &custom);
    AddAttribute(b, "a", &a);
    EXPECT_TRUE(a.RefersTo(&custom, nullptr));
    EXPECT_TRUE(a.RefersTo(Int32(), nullptr)) << "the base of the custom type";
    EXPECT_TRUE(b.RefersTo(&a, nullptr));
    EXPECT_TRUE(b.RefersTo(&custom, nullptr)) << "through the property's template";
}

// Only for templates are the parents asked.
TEST_F(TemplateReferencesTest, PlainTypesOfInheritedPropertiesDoNotCount) {
    Template& a = Make("A");
    AddAttribute(a, "x", Int32());
    Template& heir = Make("Heir", {&a});
    EXPECT_FALSE(heir.RefersTo(Int32(), nullptr));
    Template& other = Make("Other");
    AddAttribute(a, "other", &other);
    EXPECT_TRUE(heir.RefersTo(&other, nullptr));
}

TEST_F(TemplateReferencesTest, ReferencesDoNotCount) {
    Template& a = Make("A");
    Template& b = Make("B");
    AttributeProperty& property = AddAttribute(a, "b", &b);
    property.SetReference(true);
    EXPECT_FALSE(a.RefersTo(&b, nullptr));
    EXPECT_FALSE(property.RefersTo(&b, nullptr));
    property.SetReference(false);
    EXPECT_TRUE(property.RefersTo(&b, nullptr));
}

TEST_F(TemplateReferencesTest, WhatTheExcludedFileDefinesNeverRefersToAnything) {
    Template& a = Make("A");
    Template& b = Make("B", {&a});
    Template& c = Make("C", {&b});
    b.SetFileName("Middle.template");
    EXPECT_FALSE(b.RefersTo(&b, "MIDDLE.TEMPLATE"));
    EXPECT_FALSE(c.RefersTo(&a, "middle.template")) << "the way goes through that file";
    EXPECT_TRUE(c.RefersTo(&a, "other.template"));
    CustomType& custom = Custom("Custom", Int32());
    custom.SetFileName("Types.template");
    AddAttribute(a, "x", &custom);
    EXPECT_FALSE(a.RefersTo(&custom, "types.template"));
    EXPECT_TRUE(a.RefersTo(&custom, "other.template"));
}

TEST_F(TemplateReferencesTest, CirclesThroughLaterPropertiesEnd) {
    Template& a = Make("A");
    Template& b = Make("B");
    AttributeProperty& back = AddAttribute(b, "a", &a);
    back.SetReference(true);
    AddAttribute(a, "b", &b);
    back.SetReference(false); // by hand, a circle after all
    EXPECT_TRUE(a.RefersTo(&b, nullptr));
    EXPECT_FALSE(a.RefersTo(Int32(), nullptr));
    EXPECT_EQ(a.GetValueSize(nullptr, 1), 0);
}

TEST_F(TemplateReferencesTest, PackagesAreThoseOfThePropertiesTypesAlone) {
    Template& a = Make("own.A");
    AddAttribute(a, "color", &Custom("colors.Color", &Custom("basic.Base", Int32())));
    AddAttribute(a, "plain", Int32());
    AttributeProperty& reference = AddAttribute(a, "ref", &Custom("refs.Ref", Int32()));
    reference.SetReference(true);
    AddAttribute(a, "none", nullptr);
    std::set<std::string> packages;
    a.CollectPackages(packages);
    EXPECT_EQ(packages, (std::set<std::string>{"", "basic", "colors"}));
}

} // namespace
} // namespace Kor
