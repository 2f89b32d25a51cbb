// What all kinds of properties share, seen through attribute properties.

#include <algorithm>

#include "api/Schema.h"

namespace {

class PropertyTest : public SchemaTest {};

TEST_F(PropertyTest, AFreePropertyIsCalledByItsNameAlone) {
    OviAttributeProperty* points = NewAttribute("points");
    EXPECT_STREQ(OviProperty_GetFullName(points), "points");
    EXPECT_EQ(OviProperty_GetTemplate(points), nullptr);
    OviObject_Delete(points);
}

TEST_F(PropertyTest, TheFullNameLeavesOutThePackage) {
    OviTemplate* mesh = Make("studio.geo.Mesh");
    OviAttributeProperty* points = AddAttribute(mesh, "points");
    EXPECT_STREQ(OviProperty_GetFullName(points), "Mesh.points");
    EXPECT_EQ(OviProperty_GetTemplate(points), mesh);
}

TEST_F(PropertyTest, ARenamedPropertyKeepsItsFullNameUntilItsOwnerIsSetAgain) {
    OviTemplate* mesh = Make("Mesh");
    OviAttributeProperty* points = AddAttribute(mesh, "points");
    OviNamedObject_SetName(points, "vertices");
    EXPECT_STREQ(OviProperty_GetFullName(points), "Mesh.points");
    OviTemplate_RemoveProperty(mesh, points);
    OviTemplate_AddProperty(mesh, points, -1);
    EXPECT_STREQ(OviProperty_GetFullName(points), "Mesh.vertices");
}

TEST_F(PropertyTest, ACloneHasNoOwnerAndKeepsTextsLockAndFullName) {
    OviAttributeProperty* points = AddAttribute(Make("Mesh"), "points");
    OviNamedObject_SetComment(points, "where they are");
    OviNamedObject_SetDescription(points, "en", "Points");
    OviLockable_SetLockState(OviObject_GetLockable(points), -5);
    OviAttributeProperty* clone = CloneOf(points);
    EXPECT_EQ(OviObject_GetClass(clone), OVI_CLASS_ATTRIBUTE_PROPERTY);
    EXPECT_EQ(OviProperty_GetTemplate(clone), nullptr);
    EXPECT_STREQ(OviNamedObject_GetName(clone), "points");
    EXPECT_STREQ(OviProperty_GetFullName(clone), "Mesh.points");
    EXPECT_STREQ(OviNamedObject_GetComment(clone), "where they are");
    EXPECT_STREQ(OviNamedObject_GetDescription(clone, "en_GB"), "Points");
    EXPECT_EQ(OviLockable_GetLockState(OviObject_GetLockable(clone)), -5);
    OviObject_Delete(clone);
}

TEST_F(PropertyTest, TheLockStateStoresAnyNumber) {
    OviAttributeProperty* points = NewAttribute("points");
    OviLockable* lock = OviObject_GetLockable(points);
    EXPECT_EQ(OviLockable_GetLockState(lock), 0);
    for (const int state : {1, -1, 2147483647}) {
        OviLockable_SetLockState(lock, state);
        EXPECT_EQ(OviLockable_GetLockState(lock), state);
    }
    OviObject_Delete(points);
}

TEST_F(PropertyTest, NullIsHarmless) {
    OviAttributeProperty* points = NewAttribute("points");
    EXPECT_STREQ(OviProperty_GetFullName(nullptr), "");
    EXPECT_EQ(OviProperty_GetTemplate(nullptr), nullptr);
    EXPECT_EQ(OviProperty_AddCommand(nullptr, nullptr), -1);
    EXPECT_EQ(OviProperty_AddCommand(points, nullptr), -1);
    EXPECT_EQ(OviProperty_RemoveCommand(points, nullptr), -1);
    EXPECT_EQ(OviProperty_GetCommandCount(nullptr), 0);
    EXPECT_EQ(OviProperty_GetCommandAt(points, 0), nullptr);
    EXPECT_EQ(OviProperty_GetCommandAt(points, -1), nullptr);
    OviObject_Delete(points);
}

TEST_F(PropertyTest, ThatGetsAnotherOwnerIsFoundUnderItsNewFullNameByInstances) {
    OviTemplate* mesh = Make("Mesh");
    OviAttributeProperty* a = AddAttribute(mesh, "a");
    AddAttribute(mesh, "b");
    OviInstance* instance = OviInstance_New("instance");
    OviInstance_AddTemplate(instance, mesh);
    OviPropertyInstance* ofA = OviInstance_GetPropertyInstance(instance, "Mesh.a", false);
    OviPropertyInstance* ofB = OviInstance_GetPropertyInstance(instance, "Mesh.b", false);
    OviTemplate_AddProperty(Make("Zoo"), a, -1);
    EXPECT_EQ(OviInstance_GetPropertyInstance(instance, "Zoo.a", false), ofA);
    EXPECT_EQ(OviInstance_GetPropertyInstance(instance, "Mesh.b", false), ofB);
    OviObject_Delete(instance);
}

// -- commands, which only files can make ----------------------------------------------------------

class CommandsOfPropertiesTest : public PropertyTest {
protected:
    void SetUp() override {
        PropertyTest::SetUp();
        const std::string file =
            WriteSchema("Commands.template", R"(<templates><template name="Mesh">
                <attribute name="points" type="INT32">
                    <command execute="Refresh" notification="AttributeValueChanged"/>
                    <command execute="Bake" notification="TemplateAdded"/>
                </attribute>
                <attribute name="other" type="INT32">
                    <command execute="Refresh" notification="BindingChanged"/>
                </attribute></template></templates>)");
        ASSERT_TRUE(OviTemplateManager_LoadTemplateFile(file.c_str()));
        OviTemplate* mesh = OviTemplateManager_GetTemplate("Mesh");
        points = OviTemplate_GetProperty(mesh, "points");
        other = OviTemplate_GetProperty(mesh, "other");
    }

    /// Properties never delete their commands: the test does so in the end.
    void TearDown() override {
        for (OviCommand* command : commands)
            OviObject_Delete(command);
        PropertyTest::TearDown();
    }

    OviCommand* CommandAt(OviProperty* property, int index) {
        OviCommand* command = OviProperty_GetCommandAt(property, index);
        if (std::find(commands.begin(), commands.end(), command) == commands.end())
            commands.push_back(command);
        return command;
    }

    Names CommandsOf(OviProperty* property) {
        Names names;
        for (int i = 0; i < OviProperty_GetCommandCount(property); ++i)
            names.push_back(NameOf(CommandAt(property, i)));
        return names;
    }

    OviProperty* points = nullptr;
    OviProperty* other = nullptr;
    std::vector<OviCommand*> commands;
};

TEST_F(CommandsOfPropertiesTest, StandInNameOrder) {
    EXPECT_EQ(CommandsOf(points), (Names{"Bake", "Refresh"}));
    EXPECT_EQ(CommandsOf(other), Names{"Refresh"});
    OviCommand* bake = CommandAt(points, 0);
    EXPECT_EQ(OviObject_GetClass(bake), OVI_CLASS_COMMAND);
    EXPECT_TRUE(OviObject_ImplementsClass(bake, OVI_CLASS_NAMED_OBJECT));
    EXPECT_EQ(OviProperty_AddCommand(other, bake), 0);
    EXPECT_EQ(CommandsOf(other), (Names{"Bake", "Refresh"}));
}

TEST_F(CommandsOfPropertiesTest, OneOfTheSameNameOverwritesTheOlderOne) {
    OviCommand* older = CommandAt(points, 1);
    OviCommand* newer = CommandAt(other, 0);
    EXPECT_EQ(OviProperty_AddCommand(points, newer), ~1);
    EXPECT_EQ(CommandsOf(points), (Names{"Bake", "Refresh"}));
    EXPECT_EQ(OviProperty_GetCommandAt(points, 1), newer);
    EXPECT_EQ(NameOf(older), "Refresh");
}

TEST_F(CommandsOfPropertiesTest, RemovalGoesByNameAndDeletesNothing) {
    OviCommand* bake = CommandAt(points, 0);
    OviCommand* namesake = CommandAt(other, 0);
    CommandsOf(points);
    EXPECT_EQ(OviProperty_RemoveCommand(other, bake), ~0);
    EXPECT_EQ(OviProperty_RemoveCommand(points, namesake), 1);
    EXPECT_EQ(CommandsOf(points), Names{"Bake"});
    EXPECT_EQ(OviProperty_RemoveCommand(points, bake), 0);
    EXPECT_EQ(OviProperty_RemoveCommand(points, bake), ~0);
    EXPECT_EQ(NameOf(bake), "Bake");
}

TEST_F(CommandsOfPropertiesTest, RemovalTakesTheCommandItselfWhereTwoShareAName) {
    OviCommand* bake = CommandAt(points, 0);
    OviCommand* refresh = CommandAt(points, 1);
    OviNamedObject_SetName(bake, "Refresh"); // both stay
    OviCommand* second = OviProperty_GetCommandAt(points, 1);
    OviCommand* first = second == bake ? refresh : bake;
    EXPECT_EQ(OviProperty_RemoveCommand(points, second), 1);
    EXPECT_EQ(OviProperty_GetCommandCount(points), 1);
    EXPECT_EQ(OviProperty_GetCommandAt(points, 0), first);
}

TEST_F(CommandsOfPropertiesTest, KeepTheirOrderWhenRenamedAndLeaveTheListWhenDeleted) {
    OviCommand* bake = OviProperty_GetCommandAt(points, 0);
    CommandAt(points, 1);
    EXPECT_TRUE(OviNamedObject_SetName(bake, "Zip"));
    EXPECT_FALSE(OviNamedObject_SetName(bake, "not a name"));
    EXPECT_EQ(OviProperty_GetCommandAt(points, 1), bake);
    EXPECT_EQ(OviProperty_RemoveCommand(points, bake), 1);
    EXPECT_EQ(OviProperty_AddCommand(points, bake), 1);
    OviObject_Delete(bake);
    EXPECT_EQ(CommandsOf(points), Names{"Refresh"});
}

TEST_F(CommandsOfPropertiesTest, AClonedPropertyHasCopiesOfThem) {
    OviProperty* clone = CloneOf(points);
    EXPECT_EQ(CommandsOf(clone), CommandsOf(points));
    EXPECT_NE(OviProperty_GetCommandAt(clone, 0), OviProperty_GetCommandAt(points, 0));
    OviObject_Delete(clone);
    EXPECT_EQ(CommandsOf(points), (Names{"Bake", "Refresh"}));
}

} // namespace
