#pragma once

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "manager/TemplateManager.h"
#include "schema/AttributeProperty.h"
#include "schema/Template.h"

namespace Kor {

/// A template manager for each test.
class ManagedTest : public ::testing::Test {
protected:
    void SetUp() override { TemplateManager::Get()->Initialize(); }
    void TearDown() override { TemplateManager::Get()->Terminate(); }

    static TemplateManager& Manager() { return *TemplateManager::Get(); }

    /// A registered template with the given parents (the root without any).
    static Template& Make(const std::string& name, const std::vector<Template*>& parents = {}) {
        Template* made = Manager().CreateTemplate(name);
        for (Template* parent : parents)
            made->AddParent(parent);
        return *made;
    }

    /// Adds an attribute property of the template's own version.
    static AttributeProperty& AddAttribute(Template& owner, const char* name, Type* type) {
        auto* made = new AttributeProperty(name, owner.GetVersion());
        made->SetType(type);
        owner.AddProperty(made, -1);
        return *made;
    }

    static Type* Int32() { return Manager().GetType("INT32"); }
};

} // namespace Kor
