// Copies of properties that versions make when they are asked for.

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "core/Ending.h"
#include "schema/AttributeProperty.h"
#include "schema/Managed.h"
#include "schema/Template.h"

using namespace Kor;

namespace {

class InheritedPropertiesTest : public ManagedTest {
protected:
    static AttributeProperty* Add(Template& owner, const std::string& name) {
        auto* added = new AttributeProperty(name, owner.GetVersion());
        owner.AddProperty(added, -1);
        return added;
    }

    static std::unique_ptr<Template> Next(const Template& source) {
        return Template::MakeVersion(source, source.GetVersion() + 1);
    }

    static std::vector<std::string> Names(const Template& owner) {
        std::vector<std::string> names;
        for (int i = 0; i < owner.GetPropertyCount(); ++i)
            names.emplace_back(owner.GetPropertyByName(i)->GetName());
        return names;
    }

    static std::string Name(int number) { return "p" + std::to_string(1000 + number); }

    /// Versions of which each has a property more than the one before.
    static std::vector<std::unique_ptr<Template>> MakeVersions(int count) {
        std::vector<std::unique_ptr<Template>> versions;
        versions.push_back(std::make_unique<Template>("T", 1, 1));
        for (int i = 0; i < count; ++i) {
            if (i > 0)
                versions.push_back(Next(*versions.back()));
            Add(*versions.back(), Name(i));
        }
        return versions;
    }

    using Names_ = std::vector<std::string>;
};

TEST_F(InheritedPropertiesTest, AskingAgainGivesTheSameCopy) {
    Template first("T", 1, 1);
    Property* source = Add(first, "a");
    Add(first, "b");
    const auto second = Next(first);
    Property* copy = second->GetProperty("a", false);
    ASSERT_NE(copy, nullptr);
    EXPECT_NE(copy, source);
    EXPECT_EQ(second->GetPropertyByName(0), copy);
    EXPECT_EQ(second->GetDeclaredAt(0), copy);
    EXPECT_EQ(second->GetOwnProperties().GetAt(0), copy); // which makes all copies
    EXPECT_EQ(second->GetProperty("a", false), copy);
    EXPECT_EQ(copy->GetOwner(), second.get());
    EXPECT_EQ(copy->GetPrevious(), source);
}

TEST_F(InheritedPropertiesTest, ACopyShowsWhatTheSourceWasWhenTheVersionWasMade) {
    Template first("T", 1, 1);
    AttributeProperty* source = Add(first, "a");
    source->SetAutoBind("before");
    source->EditLabels().Set("", "Before");
    const auto second = Next(first);
    const auto third = Next(*second);
    source->SetName("renamed");
    source->SetAutoBind("after");
    source->EditLabels().Set("", "After");
    for (const Template* version : {second.get(), third.get()}) {
        const auto* copy = ObjectCast<AttributeProperty>(version->GetProperty("a", false));
        ASSERT_NE(copy, nullptr);
        EXPECT_STREQ(copy->GetAutoBind(), "before");
        EXPECT_EQ(copy->GetLabels().GetAt(0).text, "Before");
        EXPECT_EQ(copy->GetFullName(), "T.a");
    }
}

TEST_F(InheritedPropertiesTest, ACopyOutlivesTheSourceThatWasDeletedBeforeItWasMade) {
    auto first = std::make_unique<Template>("T", 1, 1);
    Property* source = Add(*first, "a");
    Add(*first, "b");
    const auto second = Next(*first);
    Ending::End(source);
    EXPECT_EQ(Names(*first), Names_{"b"});
    first.reset();
    EXPECT_EQ(Names(*second), (Names_{"a", "b"}));
    EXPECT_EQ(second->GetProperty("a", false)->GetPrevious(), nullptr);
}

TEST_F(InheritedPropertiesTest, WhatIsChangedInAVersionStaysThereAndInThoseMadeLater) {
    Template first("T", 1, 1);
    Add(first, "a");
    const auto second = Next(first);
    const auto before = Next(*second);
    second->GetProperty("a", false)->SetName("renamed");
    const auto after = Next(*second);
    EXPECT_EQ(Names(first), Names_{"a"});
    EXPECT_EQ(Names(*before), Names_{"a"});
    EXPECT_EQ(Names(*second), Names_{"renamed"});
    EXPECT_EQ(Names(*after), Names_{"renamed"});
}

TEST_F(InheritedPropertiesTest, ARemovedCopyIsGoneFromThatVersionAndThoseMadeLater) {
    Template first("T", 1, 1);
    for (const char* name : {"a", "b", "c"})
        Add(first, name);
    const auto second = Next(first);
    const auto before = Next(*second);
    const std::unique_ptr<Property> removed(second->GetProperty("b", false));
    EXPECT_EQ(second->RemoveProperty(removed.get()), 1);
    removed->ForgetOwner(*second);
    const auto after = Next(*second);
    EXPECT_EQ(Names(*second), (Names_{"a", "c"}));
    EXPECT_STREQ(second->GetDeclaredAt(1)->GetName(), "c");
    EXPECT_EQ(Names(*before), (Names_{"a", "b", "c"}));
    EXPECT_EQ(Names(*after), (Names_{"a", "c"}));
}

TEST_F(InheritedPropertiesTest, AnOlderDefinitionStaysDeclaredWhereANewerOneTakesItsName) {
    Template first("T", 1, 1);
    Add(first, "a");
    Add(first, "b");
    const auto second = Next(first);
    auto* newer = new AttributeProperty("a", 2);
    EXPECT_EQ(second->AddProperty(newer, -1), ~0);
    EXPECT_EQ(second->GetProperty("a", false), newer);
    EXPECT_EQ(second->GetDeclaredCount(), 3);
    EXPECT_EQ(second->GetDeclaredAt(2), newer);
    EXPECT_EQ(newer->GetPrevious(), second->GetDeclaredAt(0));
    EXPECT_EQ(Next(*second)->GetDeclaredCount(), 2);
}

TEST_F(InheritedPropertiesTest, APropertyMayBeAddedAmongInheritedOnes) {
    Template first("T", 1, 1);
    Add(first, "b");
    Add(first, "c");
    const auto second = Next(first);
    auto* added = new AttributeProperty("a", 2);
    EXPECT_EQ(second->AddProperty(added, 1), 0);
    EXPECT_EQ(second->GetDeclaredAt(1), added);
    EXPECT_EQ(Names(*second), (Names_{"a", "b", "c"}));
}

TEST_F(InheritedPropertiesTest, ACopySucceedsThatOfTheVersionBeforeWhicheverIsMadeFirst) {
    Template first("T", 1, 1);
    Property* source = Add(first, "a");
    const auto second = Next(first);
    const auto third = Next(*second);
    Property* last = third->GetProperty("a", false);
    Property* middle = second->GetProperty("a", false);
    EXPECT_EQ(last->GetPrevious(), middle);
    EXPECT_EQ(middle->GetPrevious(), source);
}

TEST_F(InheritedPropertiesTest, ManyVersionsHaveAllPropertiesInTheirPlaces) {
    const auto versions = MakeVersions(120);
    const Template& last = *versions.back();
    ASSERT_EQ(last.GetPropertyCount(), 120);
    ASSERT_EQ(last.GetDeclaredCount(), 120);
    for (int i = 0; i < 120; ++i) {
        EXPECT_EQ(last.PeekByName(i)->GetNameView(), Name(i));
        EXPECT_EQ(last.PeekDeclaredAt(i)->GetNameView(), Name(i));
        Property* copy = last.GetProperty(Name(i), false);
        EXPECT_EQ(copy, last.GetPropertyByName(i));
        EXPECT_EQ(copy, last.GetDeclaredAt(i));
        EXPECT_EQ(copy->GetVersion(), i + 1);
    }
    EXPECT_EQ(last.PeekByName(120), nullptr);
    EXPECT_EQ(last.GetDeclaredAt(-1), nullptr);
}

TEST_F(InheritedPropertiesTest, ACloneHasCopiesOfItsOwn) {
    Template first("T", 1, 1);
    Add(first, "a");
    const auto second = Next(first);
    const auto made = second->Clone();
    const auto& clone = static_cast<const Template&>(*made);
    EXPECT_EQ(Names(clone), Names_{"a"});
    EXPECT_NE(clone.GetProperty("a", false), second->GetProperty("a", false));
    EXPECT_EQ(clone.GetProperty("a", false)->GetKeeper(), &clone);
}

} // namespace
