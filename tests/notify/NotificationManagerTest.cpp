#include "notify/NotificationManager.h"

#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "instances/AttributeInstance.h"
#include "instances/Instance.h"
#include "manager/TemplateManager.h"
#include "schema/AttributeProperty.h"
#include "schema/Command.h"

using namespace Kor;

namespace {

struct NamedCode {
    const char* name;
    int code;

    friend void PrintTo(const NamedCode& named, std::ostream* out) { *out << named.name; }
};

class EventNameTest : public ::testing::TestWithParam<NamedCode> {
protected:
    void SetUp() override { NotificationManager::Get()->Initialize(); }
    void TearDown() override { NotificationManager::Get()->Terminate(); }
};

/// An instance with one attribute, whose property gets commands.
class CommandFiringTest : public ::testing::Test {
protected:
    void SetUp() override {
        NotificationManager::Get()->Initialize();
        TemplateManager::Get()->Initialize();
        property_.SetType(TemplateManager::Get()->GetType("INT32"));
        attribute_ =
            static_cast<AttributeInstance*>(instance_->AddPropertyInstance(property_, false));
        NotificationManager::Get()->RegisterPropertyInstanceCallback(&Note, this);
    }

    void TearDown() override {
        instance_.reset();
        property_.SetType(nullptr);
        while (Command* command = property_.GetCommandAt(0)) {
            property_.RemoveCommand(command);
            delete command;
        }
        TemplateManager::Get()->Terminate();
        NotificationManager::Get()->Terminate();
    }

    void Add(const char* name, unsigned hosts, unsigned trigger) {
        property_.AddCommand(new Command(name, hosts, trigger));
    }

    /// What one setting of the value in a host brings.
    std::vector<std::string> EventsIn(int host) {
        events_.clear();
        NotificationManager::Get()->SetDCC(host);
        const int value = 7;
        attribute_->SetValue(&value);
        return events_;
    }

    using Lines = std::vector<std::string>;

    AttributeProperty property_{"x", 1};
    std::unique_ptr<Instance> instance_ = std::make_unique<Instance>("instance");
    AttributeInstance* attribute_ = nullptr;

private:
    static void Note(void* self, void* object, int event, void* argument) {
        auto* test = static_cast<CommandFiringTest*>(self);
        EXPECT_EQ(object, test->attribute_);
        test->events_.push_back(std::to_string(event) + " " + static_cast<const char*>(argument));
    }

    std::vector<std::string> events_;
};

} // namespace

TEST_P(EventNameTest, HasItsCode) {
    NotificationManager& manager = *NotificationManager::Get();
    EXPECT_EQ(manager.GetEventCode(GetParam().name), GetParam().code);
    EXPECT_EQ(manager.GetEventCode(GetParam().name), GetParam().code);
}

INSTANTIATE_TEST_SUITE_P(
    Names, EventNameTest,
    ::testing::Values(NamedCode{"TemplateAdded", 0x1001}, NamedCode{"TemplateRemoved", 0x1002},
                      NamedCode{"TemplateUpdated", 0x1003}, NamedCode{"TemplateDeprecated", 0x1004},
                      NamedCode{"ReferenceFile", 0x1008}, NamedCode{"UnreferenceFile", 0x1009},
                      NamedCode{"BindingLockedChanged", 0x2000},
                      NamedCode{"ValueLockedChanged", 0x2001}, NamedCode{"PropertyUpdated", 0x2002},
                      NamedCode{"PropertyRenamed", 0x2003}, NamedCode{"PropertyDeprecated", 0x2004},
                      NamedCode{"PropertyAdded", 0x2005}, NamedCode{"PropertyRemoved", 0x2006},
                      NamedCode{"ExecuteCommand", 0x2009}, NamedCode{"BindingChanged", 0x3000},
                      NamedCode{"AttributeValueChanged", 0x4000},
                      // Codes that the library sends but that no file can name.
                      NamedCode{"AssetAdded", 0}, NamedCode{"AssetRemoved", 0},
                      NamedCode{"InstanceRenamed", 0}, NamedCode{"ReferenceChanged", 0},
                      NamedCode{"templateadded", 0}, NamedCode{"TemplateAdded ", 0},
                      NamedCode{"", 0}, NamedCode{"Maya", 0}));

TEST_F(CommandFiringTest, KnowsTheHostsByTheirExactNames) {
    NotificationManager& manager = *NotificationManager::Get();
    EXPECT_EQ(manager.GetDCCCode("Maya"), 1);
    EXPECT_EQ(manager.GetDCCCode("3dsMax"), 2);
    for (const char* name : {"maya", "3dsmax", "AttributeValueChanged", ""}) {
        EXPECT_EQ(manager.GetDCCCode(name), 0);
        EXPECT_EQ(manager.GetDCCCode(name), 0);
    }
    EXPECT_EQ(manager.GetEventCode("AttributeValueChanged"), 0x4000); // a map of its own
}

TEST_F(CommandFiringTest, FollowsTheEventInTheHostsThatTheMaskNames) {
    Add("run", kMaya, kAttributeValueChanged);
    EXPECT_EQ(EventsIn(1), (Lines{"16384 7", "8201 run"}));
    EXPECT_EQ(EventsIn(3), (Lines{"16384 7", "8201 run"}));
    EXPECT_EQ(EventsIn(2), Lines{"16384 7"});
    EXPECT_EQ(EventsIn(0), Lines{"16384 7"});
}

TEST_F(CommandFiringTest, RunsCommandsInNameOrder) {
    Add("b", kMaya | k3dsMax, kAttributeValueChanged);
    Add("a", k3dsMax, kAttributeValueChanged);
    Add("c", k3dsMax, kBindingChanged);
    EXPECT_EQ(EventsIn(2), (Lines{"16384 7", "8201 a", "8201 b"}));
    EXPECT_EQ(EventsIn(1), (Lines{"16384 7", "8201 b"}));
}

TEST_F(CommandFiringTest, CallsEveryCallbackForTheEventAndThenForTheCommand) {
    static std::string calls;
    static char keys[2];
    calls.clear();
    const auto note = [](void* key, void*, int event, void*) {
        calls += static_cast<char>('0' + (static_cast<char*>(key) - keys));
        calls += event == kExecuteCommand ? "c " : "e ";
    };
    NotificationManager::Get()->RegisterPropertyInstanceCallback(note, &keys[1]);
    NotificationManager::Get()->RegisterPropertyInstanceCallback(note, &keys[0]);
    Add("run", kMaya, kAttributeValueChanged);
    EventsIn(1);
    EXPECT_EQ(calls, "0e 1e 0c 1c ");
}

TEST_F(CommandFiringTest, KeepsBothCodesInAClone) {
    const Command command("run", 3, 0x4000);
    const auto clone = command.Clone();
    const auto* copy = ObjectCast<Command>(clone.get());
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->GetHostMask(), 3u);
    EXPECT_EQ(copy->GetTrigger(), 0x4000u);
}

TEST_F(CommandFiringTest, LetsCallbacksDeleteCommandsAndWriteIntoTheTextThatTheyGet) {
    struct First {
        AttributeProperty* property;
        std::vector<std::string> names;
        static void Call(void* self, void*, int event, void* argument) {
            auto& first = *static_cast<First*>(self);
            if (event != kExecuteCommand)
                return;
            auto* text = static_cast<char*>(argument);
            first.names.emplace_back(text);
            text[0] = '#';
            if (Command* command =
                    first.names.size() == 1 ? first.property->GetCommandAt(0) : nullptr) {
                first.property->RemoveCommand(command);
                delete command;
            }
        }
    };
    First first{&property_, {}};
    NotificationManager::Get()->UnregisterPropertyInstanceCallback(this);
    NotificationManager::Get()->RegisterPropertyInstanceCallback(&First::Call, &first);
    Add("a", kMaya, kAttributeValueChanged);
    Add("b", kMaya, kAttributeValueChanged);
    static std::vector<std::string> seen;
    static char* lastKey = reinterpret_cast<char*>(~std::uintptr_t{0});
    seen.clear();
    NotificationManager::Get()->RegisterPropertyInstanceCallback(
        [](void*, void*, int event, void* argument) {
            if (event == kExecuteCommand)
                seen.emplace_back(static_cast<const char*>(argument));
        },
        lastKey);
    EventsIn(1);
    EXPECT_EQ(first.names, (Lines{"a", "b"}));
    EXPECT_EQ(seen, (Lines{"#", "#"})); // one text for all callbacks, as with every event
    ASSERT_EQ(property_.GetCommandCount(), 1);
    EXPECT_STREQ(property_.GetCommandAt(0)->GetName(), "b");
}

TEST_F(CommandFiringTest, LetsACommandCallBackIntoTheLibrary) {
    static char key;
    NotificationManager::Get()->RegisterPropertyInstanceCallback(
        [](void*, void* object, int event, void*) {
            if (event == kExecuteCommand)
                static_cast<AttributeInstance*>(object)->SetBinding("by the command");
        },
        &key);
    Add("run", kMaya, kAttributeValueChanged);
    EXPECT_EQ(EventsIn(1).size(), 3u);
    EXPECT_STREQ(attribute_->GetBinding(), "by the command");
    EXPECT_EQ(*static_cast<int*>(attribute_->GetValue()), 7);
}
