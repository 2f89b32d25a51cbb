#include "formats/VersionOrder.h"

#include "manager/TemplateManager.h"
#include "schema/AttributeProperty.h"

#include <gtest/gtest.h>

using namespace Kor;

namespace {

/// Builds the versions of a template "T" step by step, as a reader does.
class VersionOrder : public ::testing::Test {
protected:
    void SetUp() override {
        TemplateManager::Get()->Initialize();
        TemplateManager::Get()->CreateTemplate("T");
    }
    void TearDown() override { TemplateManager::Get()->Terminate(); }

    static void AddProperty(const char* name, int version, Type* type = nullptr) {
        auto* property = new AttributeProperty(name, version);
        property->SetReference(true);
        property->SetType(type);
        TemplateManager::Get()->AddPropertyFromVersion("T", property);
    }

    static void AddParent(const char* name, int version) {
        TemplateManager& manager = *TemplateManager::Get();
        manager.AddParentFromVersion("T", version, manager.CreateTemplate(name));
    }

    static std::vector<const Template*> Versions() {
        const std::vector<Template*> versions = TemplateManager::Get()->GetVersions("T");
        return {versions.begin(), versions.end()};
    }

    /// The steps as "name@version" for a property, "^version" for parents, "+version" for a parent
    /// that was there already.
    static std::string Steps() {
        std::string text;
        for (const VersionStep& step : OrderVersionSteps(Versions(), nullptr)) {
            const std::string version = std::to_string(step.version->GetVersion());
            if (step.property)
                text += step.property->GetName() + ("@" + version);
            else
                text += (step.isKnown ? "+" : "^") + version;
            text += " ";
        }
        return text;
    }
};

TEST_F(VersionOrder, HasNothingForAnEmptyTemplate) {
    EXPECT_EQ(Steps(), "");
}

TEST_F(VersionOrder, IsThatOfDeclarationWithParentsFirst) {
    AddProperty("b", 1);
    AddProperty("a", 1);
    AddParent("P", 1);
    EXPECT_EQ(Steps(), "^1 b@1 a@1 ");
}

TEST_F(VersionOrder, PutsWhatALaterVersionHasCopiesOfBeforeIt) {
    AddProperty("a", 1);
    AddProperty("b", 2);
    EXPECT_EQ(Steps(), "a@1 b@2 ");
}

TEST_F(VersionOrder, PutsWhatALaterVersionSharesBehindIt) {
    AddProperty("b", 2);
    AddProperty("a", 1);
    EXPECT_EQ(Steps(), "b@2 a@1 ");
}

TEST_F(VersionOrder, PutsWhatANewerDefinitionKeptOutBehindThat) {
    AddProperty("b", 2);
    AddProperty("a", 2);
    AddProperty("a", 1);
    EXPECT_EQ(Steps(), "b@2 a@2 a@1 ");
}

TEST_F(VersionOrder, PutsAVersionInBetweenBehindOneThatDidNotSeeIt) {
    AddProperty("a", 1);
    AddProperty("c", 3);
    AddProperty("b", 2);
    EXPECT_EQ(Steps(), "a@1 c@3 b@2 ");
}

TEST_F(VersionOrder, NamesAKnownParentWhereAVersionAddsNothing) {
    AddParent("P", 1);
    TemplateManager::Get()->CreateTemplateVersion("T", 2);
    EXPECT_EQ(Steps(), "^1 +2 ");
}

TEST_F(VersionOrder, NamesAKnownParentWhereAVersionWasThereBeforeItsProperties) {
    TemplateManager::Get()->CreateTemplateVersion("T", 2);
    AddProperty("a", 1);
    AddProperty("b", 2);
    EXPECT_EQ(Steps(), "+2 a@1 b@2 ");
}

TEST_F(VersionOrder, PutsParentsBehindOlderPropertiesThatTheyWouldKeepOut) {
    auto* newer = new AttributeProperty("a", 5);
    TemplateManager::Get()->CreateTemplate("P");
    TemplateManager::Get()->AddPropertyFromVersion("P", newer);
    AddProperty("b", 2);
    AddProperty("a", 1);
    TemplateManager::Get()->AddParentFromVersion("T", 2, TemplateManager::Get()->GetTemplate("P"));
    EXPECT_EQ(Steps(), "b@2 a@1 ^2 ");
}

TEST_F(VersionOrder, PutsWhatRefersToTheOwnTemplateWhereItsVersionWasTheLatest) {
    AddProperty("b", 2);
    AddProperty("c", 2, TemplateManager::Get()->GetTemplate("T"));
    AddProperty("d", 3);
    EXPECT_EQ(Steps(), "b@2 c@2 d@3 ");
    AddProperty("e", 1, TemplateManager::Get()->GetTemplate("T"));
    EXPECT_EQ(Steps(), "b@2 c@2 d@3 e@1 ");
}

TEST_F(VersionOrder, HasOnlyParentsThatTheLowerVersionLacksAndNeverTheRoot) {
    AddProperty("a", 2);
    EXPECT_EQ(Steps(), "a@2 ");
    AddParent("P", 1);
    AddParent("Q", 2);
    EXPECT_EQ(Steps(), "^1 ^2 a@2 ");
}

TEST_F(VersionOrder, IsFoundForManyVersionsWithoutLosingAStep) {
    for (int version = 1; version <= 60; ++version)
        AddProperty(("p" + std::to_string(version * 7 % 61)).c_str(), version * 7 % 61);
    EXPECT_EQ(OrderVersionSteps(Versions(), nullptr).size(), 60u);
}

} // namespace
