// Properties and commands as classes.

#include "schema/Managed.h"

#include "schema/Command.h"

namespace Kor {
namespace {

class PropertyTest : public ManagedTest {};

TEST_F(PropertyTest, ACommandKeepsItsCodesThroughAClone) {
    Command command("Refresh", 3U, 0x4000U);
    command.SetComment("why");
    command.SetNotification("AttributeValueChanged");
    EXPECT_EQ(command.GetClass(), 34);
    for (int id = -1; id < 50; ++id)
        EXPECT_EQ(command.ImplementsClass(id), id == 34 || id == 31 || id == 0) << id;
    const std::unique_ptr<Object> object = command.Clone();
    auto* clone = ObjectCast<Command>(object.get());
    EXPECT_EQ(clone->GetNameView(), "Refresh");
    EXPECT_EQ(clone->GetHostMask(), 3U);
    EXPECT_EQ(clone->GetTrigger(), 0x4000U);
    EXPECT_STREQ(clone->GetComment(), "why");
    EXPECT_STREQ(clone->GetNotification(), "AttributeValueChanged");
}

TEST_F(PropertyTest, ACommandWithAnInvalidNameHasNone) {
    EXPECT_EQ(Command("two words", 0, 0).GetNameView(), "");
}

TEST_F(PropertyTest, ACloneSucceedsItsSourceAndHasItsCommands) {
    AttributeProperty property("points", 3);
    Command refresh("Refresh", 1, 2), bake("Bake", 3, 4);
    EXPECT_EQ(property.AddCommand(&refresh), 0);
    EXPECT_EQ(property.AddCommand(&bake), 0);
    property.SetVersionStatus(2);
    const std::unique_ptr<Object> object = property.Clone();
    auto* clone = ObjectCast<AttributeProperty>(object.get());
    EXPECT_EQ(clone->GetVersion(), 3);
    EXPECT_EQ(clone->GetVersionStatus(), 2);
    EXPECT_EQ(clone->GetPrevious(), &property);
    EXPECT_EQ(clone->GetOwner(), nullptr);
    ASSERT_EQ(clone->GetCommandCount(), 2);
    EXPECT_EQ(clone->GetCommandAt(0)->GetTrigger(), 4U);
    for (int i = 0; i < 2; ++i)
        delete clone->GetCommandAt(0); // properties never do
}

TEST_F(PropertyTest, SizesArePaddedToTheTypesAlignment) {
    AttributeProperty property("x", 1);
    EXPECT_EQ(property.GetValueSize(), 0);
    EXPECT_EQ(property.GetPadding(3), 0);
    property.SetType(Int32());
    EXPECT_EQ(property.GetValueSize(), 4);
    const int paddings[] = {0, 3, 2, 1, 0, 3};
    for (int offset = 0; offset < 6; ++offset)
        EXPECT_EQ(property.GetPadding(offset), paddings[offset]) << offset;
    AttributeProperty three("three", 1);
    const std::unique_ptr<Object> object = Int32()->Clone();
    auto* triple = ObjectCast<Type>(object.get());
    triple->SetDimension(3);
    three.SetType(triple);
    EXPECT_EQ(three.GetValueSize(), 12);
    three.SetType(nullptr);
}

TEST_F(PropertyTest, AVersionIsAPlainNumber) {
    Template& mesh = Make("Mesh");
    AttributeProperty& property = AddAttribute(mesh, "x", Int32());
    property.SetVersion(9);
    EXPECT_EQ(property.GetVersion(), 9);
    EXPECT_EQ(mesh.GetProperty("x", false), &property);
    EXPECT_EQ(property.GetFullName(), "Mesh.x");
}

} // namespace
} // namespace Kor
