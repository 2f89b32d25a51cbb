#include "PropertyInstances.h"

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

PropertyInstances::PropertyInstances() : freeNames_(FindFreePropertyNames()) {}

std::vector<OviPropertyInstance*> PropertyInstances::Find(OviInstance* instance) {
    std::vector<std::string> names = freeNames_;
    for (int i = 0; i < OviInstance_GetTemplateCount(instance); ++i) {
        const auto& more = GetPropertyNames(OviInstance_GetTemplateAt(instance, i));
        names.insert(names.end(), more.begin(), more.end());
    }
    SortOnce(names);
    std::vector<OviPropertyInstance*> found;
    for (const std::string& name : names) {
        if (auto* const next = OviInstance_GetPropertyInstance(instance, name.c_str(), false))
            found.push_back(next);
    }
    return found;
}

/// The full names of all properties of a template, inherited ones included.
const std::vector<std::string>& PropertyInstances::GetPropertyNames(OviTemplate* implemented) {
    const auto [entry, added] = names_.try_emplace(implemented);
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
