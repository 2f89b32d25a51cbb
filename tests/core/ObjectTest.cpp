// Class numbers and copies of the classes that hosts never see bare.

#include <memory>
#include <set>

#include <gtest/gtest.h>

#include "core/ErrorItem.h"
#include "core/NamedObject.h"
#include "instances/Asset.h"
#include "instances/AttributeInstance.h"
#include "schema/AttributeProperty.h"
#include "schema/LOD.h"
#include "schema/Template.h"
#include "schema/View.h"
#include "schema/ViewItem.h"
#include "types/CustomType.h"

namespace {

using namespace Kor;

/// The class numbers that an object, seen as a T, implements.
template <class T> std::set<int> ClassesOf(const T& object) {
    std::set<int> classes;
    for (int id = -5; id <= 100; ++id) {
        if (object.T::ImplementsClass(id))
            classes.insert(id);
    }
    return classes;
}

using Classes = std::set<int>;

TEST(Object, BareClassesAnswerWithTheirNumbers) {
    EXPECT_EQ(Object().GetClass(), 0);
    EXPECT_EQ(ClassesOf(Object()), (Classes{0}));
    EXPECT_EQ(NamedObject("a").GetClass(), 31);
    EXPECT_EQ(ClassesOf(NamedObject("a")), (Classes{31, 0}));
    EXPECT_EQ(ErrorItem(1, "", 1, "").GetClass(), 32);
    EXPECT_EQ(ClassesOf(ErrorItem(1, "", 1, "")), (Classes{32, 0}));
    EXPECT_EQ(LOD("near").GetClass(), 12);
    EXPECT_EQ(ClassesOf(LOD("near")), (Classes{12, 31, 0}));
    EXPECT_EQ(ViewItem("item").GetClass(), 37);
    EXPECT_EQ(ClassesOf(ViewItem("item")), (Classes{37, 31, 0}));
}

TEST(Object, AbstractClassesAnswerWithTheirNumbers) {
    const CustomType type("Type", 1);
    EXPECT_EQ(type.Type::GetClass(), 20);
    EXPECT_EQ(ClassesOf<Type>(type), (Classes{20, 31, 0}));
    AttributeProperty property("size", 1);
    EXPECT_EQ(property.Property::GetClass(), 15);
    EXPECT_EQ(ClassesOf<Property>(property), (Classes{15, 31, 0}));
    Instance instance("Thing");
    const std::unique_ptr<PropertyInstance> member = property.CreateInstance(instance);
    EXPECT_EQ(member->PropertyInstance::GetClass(), 16);
    EXPECT_EQ(ClassesOf<PropertyInstance>(*member), (Classes{16, 31, 0}));
}

TEST(Object, ABareNamedObjectIsCopiedAsABareObject) {
    const NamedObject named("name");
    const std::unique_ptr<Object> copy = named.Clone();
    EXPECT_EQ(copy->GetClass(), 0);
    EXPECT_FALSE(copy->ImplementsClass(31));
}

TEST(Object, CastsFollowTheClasses) {
    CustomType type("Type", 1);
    Object* object = &type;
    EXPECT_EQ(ObjectCast<CustomType>(object), &type);
    EXPECT_EQ(ObjectCast<Type>(object), &type);
    EXPECT_EQ(ObjectCast<NamedObject>(object), &type);
    EXPECT_EQ(ObjectCast<Template>(object), nullptr);
    EXPECT_EQ(ObjectCast<Type>(static_cast<Object*>(nullptr)), nullptr);
    const Object* constant = object;
    EXPECT_EQ(ObjectCast<Type>(constant), &type);
}

TEST(Object, ANameOutsideTheRuleLeavesANewObjectNameless) {
    EXPECT_STREQ(NamedObject("not a name").GetName(), "");
    EXPECT_STREQ(NamedObject("").GetName(), "");
    EXPECT_STREQ(NamedObject("9lives").GetName(), "9lives");
}

} // namespace
