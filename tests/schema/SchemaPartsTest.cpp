#include <memory>

#include <gtest/gtest.h>

#include "schema/AttributeProperty.h"
#include "schema/Command.h"
#include "schema/GeometryAlternate.h"
#include "schema/GeometryProperty.h"
#include "schema/LOD.h"
#include "schema/SchemaParts.h"

using namespace Kor;

namespace {

/// Counts the parts of one kind that are there.
template <class Part> struct Counted : Part {
    template <class... Arguments> explicit Counted(Arguments... arguments) : Part(arguments...) {
        ++count;
    }
    ~Counted() override { --count; }

    static inline int count = 0;
};

using CountedCommand = Counted<Command>;
using CountedLevel = Counted<LOD>;
using CountedAlternate = Counted<GeometryAlternate>;

TEST(SchemaPartsTest, EndWithTheirSchemaWhoeverListsThem) {
    AttributeProperty property("size", 1);
    GeometryProperty geometry("shape", 1);
    {
        SchemaPartList<LOD> levels;
        SchemaPartList<GeometryAlternate> alternates;
        SchemaPartList<Command> commands;
        auto* command = new CountedCommand("run", 1u, 2u);
        property.AddCommand(command);
        commands.Add(*command);
        command->BecomeKnown();
        auto* level = new CountedLevel("High");
        levels.Add(*level);
        auto* alternate = new CountedAlternate(level, 1);
        geometry.AddAlternate(alternate);
        alternates.Add(*alternate);
        ASSERT_EQ(CountedCommand::count + CountedLevel::count + CountedAlternate::count, 3);
    }
    EXPECT_EQ(CountedCommand::count, 0);
    EXPECT_EQ(CountedLevel::count, 0);
    EXPECT_EQ(CountedAlternate::count, 0);
    EXPECT_EQ(property.GetCommandCount(), 0);
    EXPECT_EQ(geometry.GetAlternateCount(), 0);
}

TEST(SchemaPartsTest, AreFreedByWhoeverDeletesThemFirst) {
    SchemaPartList<Command> commands;
    auto* first = new CountedCommand("first", 1u, 2u);
    auto* second = new CountedCommand("second", 1u, 2u);
    commands.Add(*first);
    commands.Add(*second);
    delete first;
    commands.EndAll();
    EXPECT_EQ(CountedCommand::count, 0);
    commands.EndAll();
}

TEST(SchemaPartsTest, AnUnknownOneEndsWithTheLastPropertyThatListsIt) {
    SchemaPartList<Command> commands;
    auto* command = new CountedCommand("run", 1u, 2u);
    auto first = std::make_unique<AttributeProperty>("first", 1);
    auto second = std::make_unique<AttributeProperty>("second", 1);
    first->AddCommand(command);
    second->AddCommand(command);
    commands.Add(*command);
    first.reset();
    EXPECT_EQ(CountedCommand::count, 1);
    second->AddCommand(command); // replaces itself
    EXPECT_EQ(CountedCommand::count, 1);
    second.reset();
    EXPECT_EQ(CountedCommand::count, 0);
}

TEST(SchemaPartsTest, AnUnknownOneEndsWhenAnotherTakesItsPlace) {
    SchemaPartList<GeometryAlternate> alternates;
    LOD level("High");
    GeometryProperty geometry("shape", 1);
    auto* first = new CountedAlternate(&level, 1);
    geometry.AddAlternate(first);
    alternates.Add(*first);
    auto* second = new CountedAlternate(&level, 2);
    geometry.AddAlternate(second);
    alternates.Add(*second);
    EXPECT_EQ(CountedAlternate::count, 1);
    EXPECT_EQ(geometry.GetAlternateAt(0), second);
    geometry.AddAlternate(second);
    EXPECT_EQ(CountedAlternate::count, 1);
    geometry.RemoveAlternate(second);
    EXPECT_EQ(CountedAlternate::count, 0);
}

TEST(SchemaPartsTest, AKnownOneOutlivesThePropertiesThatListIt) {
    SchemaPartList<Command> commands;
    auto* command = new CountedCommand("run", 1u, 2u);
    auto property = std::make_unique<AttributeProperty>("size", 1);
    property->AddCommand(command);
    commands.Add(*command);
    command->BecomeKnown();
    property.reset();
    EXPECT_EQ(CountedCommand::count, 1);
    EXPECT_STREQ(command->GetName(), "run");
}

TEST(SchemaPartsTest, AnUnknownLevelStaysWhileItIsRegisteredOrAnAlternateStandsForIt) {
    SchemaPartList<LOD> levels;
    auto* level = new CountedLevel("High");
    level->SetRegistered(true);
    levels.Add(*level);
    auto alternate = std::make_unique<GeometryAlternate>(level, 1);
    alternate.reset();
    EXPECT_EQ(CountedLevel::count, 1);
    alternate = std::make_unique<GeometryAlternate>(level, 1);
    level->SetRegistered(false);
    EXPECT_EQ(CountedLevel::count, 1);
    alternate.reset();
    EXPECT_EQ(CountedLevel::count, 0);
}

TEST(SchemaPartsTest, AHostsOwnPartsAreLeftToIt) {
    auto property = std::make_unique<AttributeProperty>("size", 1);
    CountedCommand command("run", 1u, 2u);
    property->AddCommand(&command);
    property.reset();
    EXPECT_EQ(CountedCommand::count, 1);
}

TEST(SchemaPartsTest, CopiesOfAPropertyTakeTheirPartsFromTheSameSchema) {
    AttributeProperty property("size", 1);
    std::unique_ptr<Object> copy;
    {
        SchemaPartList<Command> commands;
        auto* command = new CountedCommand("run", 1u, 2u);
        property.AddCommand(command);
        commands.Add(*command);
        copy = property.Clone();
        ASSERT_EQ(static_cast<Property&>(*copy).GetCommandCount(), 1);
    }
    EXPECT_EQ(static_cast<Property&>(*copy).GetCommandCount(), 0);
}

} // namespace
