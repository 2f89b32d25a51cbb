// Templates as classes see them: keys, copies, packed values.

#include "schema/Managed.h"

#include <cstdint>
#include <cstring>

#include "instances/Instance.h"

namespace Kor {
namespace {

class TemplateTest : public ManagedTest {};

TEST_F(TemplateTest, TheKeyFollowsNamePackageAndVersion) {
    Template made("geo.Mesh", 1, 1);
    EXPECT_EQ(made.GetKey(), "geo.Mesh#1");
    made.SetVersion(12);
    EXPECT_EQ(made.GetKey(), "geo.Mesh#12");
    made.SetPackageName("");
    EXPECT_EQ(made.GetKey(), "Mesh#12");
    made.SetName("a.b.C");
    EXPECT_EQ(made.GetKey(), "a.b.C#12");
    EXPECT_FALSE(made.SetName("a.b."));
    made.SetVersion(-3);
    EXPECT_EQ(made.GetKey(), "a.b.C#-3");
}

TEST_F(TemplateTest, ARegisteredTemplateWhoseVersionChangesIsMoved) {
    Template& base = Make("Base");
    Template& made = Make("Mesh", {&base});
    Template& heir = Make("Heir", {&made, &Make("Mesg")});
    made.SetVersion(3);
    EXPECT_EQ(Manager().GetTemplateVersion("Mesh", 1), nullptr);
    EXPECT_EQ(Manager().GetTemplateVersion("Mesh", 3), &made);
    EXPECT_EQ(base.GetChild("Mesh#3"), &made);
    EXPECT_EQ(heir.GetParent("Mesh#3"), &made);
}

TEST_F(TemplateTest, ACloneSucceedsItsSource) {
    Template& source = Make("Mesh");
    source.SetVersionStatus(VersionedObject::kDeprecated);
    source.SetDimension(5);
    source.SetAlignment(8);
    source.SetBaseType(Int32());
    source.SetRecycled(true);
    AttributeProperty& property = AddAttribute(source, "x", Int32());
    property.SetVersionStatus(VersionedObject::kRenamed);
    const std::unique_ptr<Object> object = source.Clone();
    auto* clone = ObjectCast<Template>(object.get());
    EXPECT_EQ(clone->GetPrevious(), &source);
    EXPECT_EQ(clone->GetVersionStatus(), VersionedObject::kDeprecated);
    EXPECT_EQ(clone->GetDimension(), 5);
    EXPECT_EQ(clone->GetAlignment(), 8);
    EXPECT_EQ(clone->GetBaseType(), Int32());
    EXPECT_FALSE(clone->IsRecycled());
    Property* copy = clone->GetProperty("x", false);
    EXPECT_EQ(copy->GetPrevious(), &property);
    EXPECT_EQ(copy->GetVersionStatus(), VersionedObject::kRenamed);
}

TEST_F(TemplateTest, AViewOfATakenNameStaysThatOfItsTemplateAndSoDoesTheOlderOne) {
    Template& mesh = Make("Mesh");
    Template& other = Make("Other");
    mesh.GetViews().Create("Main");
    const std::unique_ptr<View> older(mesh.GetView("Main", false));
    auto* newer = new View("Main", &other);
    EXPECT_EQ(mesh.GetViews().Add(newer), ~0);
    EXPECT_EQ(mesh.GetView("Main", false), newer);
    EXPECT_EQ(newer->GetTemplate(), &other);
    EXPECT_EQ(older->GetTemplate(), &mesh);
    EXPECT_EQ(mesh.GetViews().Remove(newer), 0);
    delete newer;
}

TEST_F(TemplateTest, AViewIsRemovedByItsNameAndLeavesItsTemplateToo) {
    Template& mesh = Make("Mesh");
    mesh.GetViews().Create("Main");
    const std::unique_ptr<View> listed(mesh.GetView("Main", false));
    View namesake("Main", &mesh);
    EXPECT_EQ(mesh.GetViews().Remove(&namesake), 0);
    EXPECT_EQ(mesh.GetViews().GetCount(), 0);
    EXPECT_EQ(listed->GetTemplate(), nullptr);
    EXPECT_EQ(namesake.GetTemplate(), nullptr);
}

TEST_F(TemplateTest, AVersionLosesTheLinkToASourceThatDies) {
    Make("Mesh");
    Template* second = Manager().CreateTemplateVersion("Mesh", 2);
    Template* first = Manager().GetTemplateVersion("Mesh", 1);
    EXPECT_EQ(second->GetPrevious(), first);
    Manager().RemoveTemplate(first);
    delete first;
    EXPECT_EQ(second->GetPrevious(), nullptr);
}

TEST_F(TemplateTest, RedefinitionsAreLinkedByVersion) {
    Template mesh("Mesh", 1, 1);
    mesh.SetVersion(4);
    AttributeProperty first("x", 1), newest("x", 5), between("x", 3);
    mesh.AddProperty(&first, -1);
    EXPECT_EQ(mesh.AddProperty(&newest, -1), ~0);
    EXPECT_EQ(newest.GetPrevious(), &first);
    EXPECT_EQ(mesh.AddProperty(&between, -1), ~0); // below the newest one
    EXPECT_EQ(newest.GetPrevious(), &between);
    EXPECT_EQ(between.GetPrevious(), &first);
    EXPECT_EQ(mesh.GetProperty("x", false), &between);
    EXPECT_EQ(mesh.GetDeclaredProperties().ToVector(),
              (std::vector<Property*>{&first, &newest, &between}));
}

TEST_F(TemplateTest, ARefusedPropertyIsToldFromAnOverwrittenFirstOne) {
    Template mesh("Mesh", 1, 1);
    mesh.SetVersion(2);
    AttributeProperty first("x", 1), second("x", 3), again("x", 2);
    bool refused = true;
    EXPECT_EQ(mesh.AddProperty(&first, -1, &refused), 0);
    EXPECT_FALSE(refused);
    EXPECT_EQ(mesh.AddProperty(&second, -1, &refused), -1) << "the complement of 0";
    EXPECT_FALSE(refused);
    EXPECT_EQ(mesh.AddProperty(&second, -1, &refused), -1) << "it is there already";
    EXPECT_TRUE(refused);
    mesh.RemoveProperty(&second);
    AddAttribute(mesh, "x", Int32());
    EXPECT_EQ(mesh.AddProperty(&again, -1, &refused), -1);
    EXPECT_TRUE(refused);
}

TEST_F(TemplateTest, PropertiesOfInstancesAreSortedAndInheritedOnesComeFirst) {
    Template& base = Make("Base");
    Property& z = AddAttribute(base, "z", Int32());
    Property& a = AddAttribute(base, "a", Int32());
    Template& heir = Make("Heir", {&base});
    Property& own = AddAttribute(heir, "m", Int32());
    EXPECT_EQ(heir.GetInstanceProperties(), (std::vector<Property*>{&a, &z, &own}));
    Template& namesake = Make("pkg.Base", {&base}); // of the same short name
    Property& hidden = AddAttribute(namesake, "a", Int32());
    EXPECT_EQ(hidden.GetFullName(), "Base.a");
    EXPECT_EQ(namesake.GetInstanceProperties(), (std::vector<Property*>{&a, &z}));
    namesake.RemoveParent(&base);
    EXPECT_EQ(namesake.GetInstanceProperties(), (std::vector<Property*>{&hidden}));
}

// -- packed values --------------------------------------------------------------------------------

class PackedTemplateTest : public TemplateTest {};

TEST_F(PackedTemplateTest, ATemplateOfVariableLengthWritesItsCountBehindThePadding) {
    Template many("Many", 0, 8);
    alignas(8) unsigned char buffer[32];
    std::memset(buffer, 0xEE, sizeof buffer);
    Instance* const none[] = {nullptr, nullptr};
    EXPECT_EQ(many.WriteValueToBinary(none, 2, buffer + 3, 20), 5 + 4);
    const unsigned char expected[] = {0xEE, 0xEE, 0xEE, 0, 0, 0, 0, 0, 2, 0, 0, 0, 0xEE};
    EXPECT_EQ(std::memcmp(buffer, expected, sizeof expected), 0);
}

TEST_F(PackedTemplateTest, TheCountIsLeftOutWhereItDoesNotFit) {
    Template many("Many", 0, 4);
    alignas(8) unsigned char buffer[8];
    std::memset(buffer, 0xEE, sizeof buffer);
    EXPECT_EQ(many.WriteValueToBinary(nullptr, 1, buffer, 3), 0);
    EXPECT_EQ(buffer[0], 0xEE);
    EXPECT_EQ(many.WriteValueToBinary(nullptr, 1, buffer, 4), 4);
    EXPECT_EQ(many.WriteValueToBinary(nullptr, 1, buffer, -1), 0);
    EXPECT_EQ(many.WriteValueToBinary(nullptr, 1, nullptr, 4), 0);
}

TEST_F(PackedTemplateTest, ATemplateOfFixedLengthWritesItsInstancesAlone) {
    Template one("One", 1, 8);
    unsigned char buffer[8];
    Instance* const none[] = {nullptr};
    EXPECT_EQ(one.WriteValueToBinary(none, 1, buffer, 8), 0);
}

} // namespace
} // namespace Kor
