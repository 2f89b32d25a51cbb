// What a version did to its predecessor decides between the events of an update. No file and no
// exported function sets that status, so these tests reach the classes.
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "instances/AttributeInstance.h"
#include "instances/Instance.h"
#include "manager/TemplateManager.h"
#include "notify/NotificationManager.h"
#include "schema/AttributeProperty.h"

using namespace Kor;

namespace {

constexpr int kNormal = 0;

/// The template "O", whose version 2 has an unowned property "x" that version 3 redefines.
class UpdateStatusTest : public ::testing::Test {
protected:
    void SetUp() override {
        NotificationManager& notifications = *NotificationManager::Get();
        TemplateManager& templates = *TemplateManager::Get();
        notifications.Initialize();
        templates.Initialize();
        notifications.RegisterInstanceCallback(&Note, this);
        notifications.RegisterPropertyInstanceCallback(&Note, this);
        templates.CreateTemplate("O");
        old_ = templates.CreateTemplateVersion("O", 2);
        old_->AddProperty(unowned_.get(), -1);
        next_ = templates.CreateTemplateVersion("O", 3);
        redefined_ = new AttributeProperty("x", 3);
        next_->AddProperty(redefined_, -1);
        instance_.AddTemplate(old_, false);
        found_ = instance_.GetPropertyInstance("x", false);
        ASSERT_TRUE(found_);
    }

    void TearDown() override {
        instance_.RemoveTemplate(next_, false);
        instance_.RemovePropertyInstance(*unowned_, false);
        unowned_.reset();
        TemplateManager::Get()->Terminate();
        NotificationManager::Get()->Terminate();
    }

    /// The codes of the events of the update, one after the other.
    std::vector<int> Update(bool notify = true) {
        events_.clear();
        arguments_.clear();
        instance_.UpdateTemplate(old_, notify);
        return events_;
    }

    std::unique_ptr<AttributeProperty> unowned_ = std::make_unique<AttributeProperty>("x", 1);
    Template* old_ = nullptr;
    Template* next_ = nullptr;
    AttributeProperty* redefined_ = nullptr;
    Instance instance_{"instance"};
    PropertyInstance* found_ = nullptr;
    std::vector<void*> arguments_;

private:
    static void Note(void* self, void*, int event, void* argument) {
        auto* test = static_cast<UpdateStatusTest*>(self);
        test->events_.push_back(event);
        test->arguments_.push_back(argument);
    }

    std::vector<int> events_;
};

using Codes = std::vector<int>;

} // namespace

TEST_F(UpdateStatusTest, OfARenamedPropertyBringsPropertyRenamed) {
    redefined_->SetVersionStatus(VersionedObject::kRenamed);
    EXPECT_EQ(Update(), (Codes{kTemplateUpdated, kPropertyRenamed}));
    EXPECT_EQ(arguments_.back(), redefined_);
    EXPECT_EQ(instance_.GetPropertyInstance("x", false), found_);
    EXPECT_EQ(found_->GetProperty(), unowned_.get());
}

TEST_F(UpdateStatusTest, OfAnOtherPropertyBringsPropertyUpdated) {
    redefined_->SetVersionStatus(VersionedObject::kDeprecated);
    EXPECT_EQ(Update(), (Codes{kTemplateUpdated, kPropertyUpdated}));
    EXPECT_EQ(arguments_.back(), redefined_);
}

TEST_F(UpdateStatusTest, OfAPropertyThatWasDeprecatedBringsPropertyDeprecated) {
    unowned_->SetVersionStatus(VersionedObject::kDeprecated);
    for (int status : {kNormal, static_cast<int>(VersionedObject::kRenamed)}) {
        redefined_->SetVersionStatus(status);
        EXPECT_EQ(Update(), (Codes{kTemplateUpdated, kPropertyDeprecated})) << status;
        EXPECT_EQ(arguments_.back(), nullptr);
        instance_.RemoveTemplate(next_, false);
        instance_.AddTemplate(old_, false);
    }
}

TEST_F(UpdateStatusTest, OfAPropertyDeprecatedOnBothSidesBringsPropertyUpdated) {
    unowned_->SetVersionStatus(VersionedObject::kDeprecated);
    redefined_->SetVersionStatus(VersionedObject::kDeprecated);
    EXPECT_EQ(Update(), (Codes{kTemplateUpdated, kPropertyUpdated}));
}

TEST_F(UpdateStatusTest, TellsOfChangedPropertiesEvenWithoutNotifying) {
    EXPECT_EQ(Update(false), Codes{kPropertyUpdated});
}

TEST_F(UpdateStatusTest, OfATemplateThatBecomesDeprecatedBringsTemplateDeprecatedFirst) {
    next_->SetVersionStatus(VersionedObject::kDeprecated);
    EXPECT_EQ(Update(), (Codes{kTemplateDeprecated, kTemplateUpdated, kPropertyUpdated}));
    EXPECT_EQ(arguments_, (std::vector<void*>{nullptr, old_, redefined_}));
}

TEST_F(UpdateStatusTest, OfATemplateThatWasDeprecatedBringsNoTemplateDeprecated) {
    old_->SetVersionStatus(VersionedObject::kDeprecated);
    EXPECT_EQ(Update(), (Codes{kTemplateUpdated, kPropertyUpdated}));
    instance_.RemoveTemplate(next_, false);
    instance_.AddTemplate(old_, false);
    next_->SetVersionStatus(VersionedObject::kDeprecated);
    EXPECT_EQ(Update(), (Codes{kTemplateUpdated, kPropertyUpdated}));
}

TEST_F(UpdateStatusTest, FindsVersionsByTheirExactKeys) {
    EXPECT_EQ(instance_.FindTemplateVersion("O", 2), old_);
    EXPECT_EQ(instance_.FindTemplateVersion("O", 3), nullptr);
    EXPECT_EQ(instance_.FindTemplateVersion("o", 2), nullptr);
}

TEST_F(UpdateStatusTest, GivesTheKnownTemplateWhenNoVersionCountsAsTheLatest) {
    Template* known = TemplateManager::Get()->GetTemplate("O");
    ASSERT_EQ(known, next_);
    EXPECT_EQ(instance_.GetTemplate("O"), old_);
    Template* first = TemplateManager::Get()->GetTemplateVersion("O", 1);
    first->SetLatestVersion(1);
    EXPECT_EQ(instance_.GetTemplate("O"), nullptr); // version 2 is newer than the latest known
    next_->SetLatestVersion(0);
    first->SetLatestVersion(3);
    EXPECT_EQ(instance_.GetTemplate("O"), next_);
}

TEST_F(UpdateStatusTest, AddsPropertyInstancesWithAnEventWhenAsked) {
    AttributeProperty property("y", 1);
    Instance instance("other");
    PropertyInstance* made = instance.AddPropertyInstance(property, true);
    EXPECT_EQ(instance.AddPropertyInstance(property, true), made);
    EXPECT_EQ(arguments_.back(), made);
    EXPECT_EQ(instance.RemovePropertyInstance(property, true), 0);
    EXPECT_EQ(instance.RemovePropertyInstance(property, true), -1);
}
