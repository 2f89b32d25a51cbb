#include "ScenePrinter.h"

#include "ChangeRecorder.h"

#include <algorithm>
#include <set>

namespace OviTool {

namespace {

void AddOwnProperties(OviTemplate* owner, std::vector<std::string>& names) {
    for (int i = 0; i < OviTemplate_GetPropertyCount(owner); ++i)
        names.emplace_back(OviProperty_GetFullName(OviTemplate_GetPropertyAt(owner, i, true)));
}

void SortOnce(std::vector<std::string>& names) {
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
}

/// A file may give an instance properties of templates that it does not implement, as long as
/// these templates have no package.
std::vector<std::string> FindFreePropertyNames() {
    std::vector<std::string> names;
    for (int i = 0; i < OviTemplateManager_GetTemplateCount(); ++i) {
        OviTemplate* const owner = OviTemplateManager_GetTemplateAt(i);
        if (!*OviType_GetPackageName(owner))
            AddOwnProperties(owner, names);
    }
    return names;
}

} // namespace

ScenePrinter::ScenePrinter(TreePrinter& tree, const ChangeRecorder& recorder, bool all)
    : tree_(tree), recorder_(recorder), all_(all), freePropertyNames_(FindFreePropertyNames()) {}

void ScenePrinter::Print(const std::string& title) {
    const int count = OviAssetManager_GetAssetCount();
    tree_.Line(0, title + ": " + std::to_string(count) + (count == 1 ? " asset" : " assets"));
    for (int i = 0; i < count; ++i)
        PrintTree(OviAssetManager_GetAssetAt(i));
}

/// Instances nest as deeply as a file makes them, so the way down is kept in a list.
void ScenePrinter::PrintTree(OviAsset* asset) {
    pending_.push_back({asset, nullptr, 1});
    while (!pending_.empty()) {
        const Entry entry = pending_.back();
        pending_.pop_back();
        if (entry.instance)
            PrintInstance(entry);
        else
            PrintPropertyInstance(entry);
    }
}

void ScenePrinter::PrintInstance(const Entry& entry) {
    std::string line = "instance ";
    std::string reference;
    if (OviObject_ImplementsClass(entry.instance, OVI_CLASS_ASSET)) {
        line = "asset ";
        reference = OviAsset_GetReference(static_cast<OviAsset*>(entry.instance));
    }
    line += OviNamedObject_GetName(entry.instance);
    if (!reference.empty())
        line += ", refers to " + Quoted(reference);
    tree_.Line(entry.depth, line);
    PrintTemplates(entry.instance, entry.depth + 1);
    PushPropertyInstances(entry.instance, entry.depth + 1);
}

void ScenePrinter::PrintTemplates(OviInstance* instance, int depth) {
    for (int i = 0; i < OviInstance_GetTemplateCount(instance); ++i) {
        OviTemplate* const implemented = OviInstance_GetTemplateAt(instance, i);
        const int version = OviTemplate_GetVersion(implemented);
        const int latest = OviTemplate_GetLatestVersion(implemented);
        std::string line = std::string("implements ") + OviType_GetFullName(implemented) +
                           ", version " + std::to_string(version);
        if (latest != version)
            line += " (the latest is " + std::to_string(latest) + ")";
        tree_.Line(depth, line);
    }
}

void ScenePrinter::PushPropertyInstances(OviInstance* instance, int depth) {
    std::vector<std::string> names = freePropertyNames_;
    for (int i = 0; i < OviInstance_GetTemplateCount(instance); ++i) {
        const auto& more = GetPropertyNames(OviInstance_GetTemplateAt(instance, i));
        names.insert(names.end(), more.begin(), more.end());
    }
    SortOnce(names);
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
        OviPropertyInstance* const found =
            OviInstance_GetPropertyInstance(instance, name->c_str(), false);
        if (found && (all_ || recorder_.WasChanged(found)))
            pending_.push_back({nullptr, found, depth});
    }
}

void ScenePrinter::PrintPropertyInstance(const Entry& entry) {
    OviPropertyInstance* const self = entry.propertyInstance;
    OviProperty* const property = OviPropertyInstance_GetProperty(self);
    std::string line = OviProperty_GetFullName(property);
    const bool hasValue = recorder_.HasValue(self);
    const char* origin = nullptr;
    if (OviObject_ImplementsClass(self, OVI_CLASS_ATTRIBUTE_INSTANCE)) {
        auto* const attribute = static_cast<OviAttributeInstance*>(self);
        auto* const definition = static_cast<OviAttributeProperty*>(property);
        OviType* const type = OviAttributeProperty_GetType(definition);
        line += OviAttributeProperty_IsReference(definition) ? ": reference to " : ": ";
        line += ValueText::DescribeType(type) + DescribeValue(attribute, type);
        if (hasValue && values_.HoldsInstances(type))
            PushNested(attribute, entry.depth + 1);
        else if (!hasValue && !values_.HoldsInstances(type))
            origin = "default";
        else if (!hasValue && !OviAttributeProperty_IsReference(definition))
            origin = "not set";
    }
    tree_.Line(entry.depth, line + DescribeState(self, origin));
}

/// Instances stand below the line instead. A default instance is not asked for, since the library
/// would make it.
std::string ScenePrinter::DescribeValue(OviAttributeInstance* attribute, OviType* type) const {
    if (!type || values_.HoldsInstances(type))
        return {};
    // Asking for the value makes it, and so decides the number of elements.
    const void* const block = OviAttributeInstance_GetValue(attribute);
    return " = " + values_.Describe(type, block, OviAttributeInstance_GetDimension(attribute));
}

std::string ScenePrinter::DescribeState(OviPropertyInstance* propertyInstance, const char* origin) {
    std::vector<std::string> states;
    if (origin)
        states.emplace_back(origin);
    if (OviObject_ImplementsClass(propertyInstance, OVI_CLASS_ATTRIBUTE_INSTANCE)) {
        const std::string binding =
            OviAttributeInstance_GetBinding(static_cast<OviAttributeInstance*>(propertyInstance));
        if (!binding.empty())
            states.push_back("bound to " + Quoted(binding));
    }
    if (OviPropertyInstance_IsValueLocked(propertyInstance))
        states.emplace_back("value locked");
    if (OviPropertyInstance_IsBindingLocked(propertyInstance))
        states.emplace_back("binding locked");
    std::string result;
    for (const std::string& state : states)
        result += (result.empty() ? "  [" : ", ") + state;
    return result.empty() ? result : result + "]";
}

void ScenePrinter::PushNested(OviAttributeInstance* attribute, int depth) {
    auto* const elements = static_cast<OviInstance**>(OviAttributeInstance_GetValue(attribute));
    for (int i = OviAttributeInstance_GetDimension(attribute); elements && i > 0; --i) {
        if (elements[i - 1])
            pending_.push_back({elements[i - 1], nullptr, depth});
    }
}

/// The full names of all properties of a template, inherited ones included.
const std::vector<std::string>& ScenePrinter::GetPropertyNames(OviTemplate* implemented) {
    const auto [entry, added] = propertyNames_.try_emplace(implemented);
    if (!added)
        return entry->second;
    std::set<OviTemplate*> seen{implemented};
    std::vector<OviTemplate*> pending{implemented};
    while (!pending.empty()) {
        OviTemplate* const owner = pending.back();
        pending.pop_back();
        AddOwnProperties(owner, entry->second);
        for (int i = 0; i < OviTemplate_GetParentCount(owner); ++i) {
            OviTemplate* const parent = OviTemplate_GetParentAt(owner, i);
            if (seen.insert(parent).second)
                pending.push_back(parent);
        }
    }
    SortOnce(entry->second);
    return entry->second;
}

} // namespace OviTool
