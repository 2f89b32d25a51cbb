// The part of the template manager that makes versions and passes changes on to later ones.

#include <algorithm>
#include <memory>

#include "manager/TemplateManager.h"

namespace Kor {

std::vector<Template*> TemplateManager::GetVersions(std::string_view name) const {
    std::string prefix(name);
    prefix += '#';
    const int found = templates_.Find(prefix);
    std::vector<Template*> versions;
    for (int i = found < 0 ? ~found : found; i < templates_.GetCount(); ++i) {
        Template* version = templates_.GetAt(i);
        if (version->GetKey().compare(0, prefix.size(), prefix) != 0)
            break;
        versions.push_back(version);
    }
    std::sort(versions.begin(), versions.end(), [](const Template* a, const Template* b) {
        return a->GetVersion() < b->GetVersion();
    });
    return versions;
}

Template* TemplateManager::CreateTemplateVersion(std::string_view name, int version) {
    Template* existing =
        version >= 0 ? GetTemplateVersion(name, static_cast<unsigned>(version)) : nullptr;
    if (existing && (!existing->IsRecycled() || version == 1))
        return existing;
    if (version < 2)
        return nullptr;
    std::vector<Template*> versions = GetVersions(name);
    const auto above = std::find_if(versions.begin(), versions.end(), [version](Template* other) {
        return other->GetVersion() >= version;
    });
    if (above == versions.begin() || (*(above - 1))->GetVersion() < 1)
        return nullptr;
    const Template& source = **(above - 1);
    Template* created = existing;
    versions.reserve(versions.size() + 1);
    if (existing) {
        existing->BeginRedefinition(source.GetParentCount() > 0 ? root_ : nullptr);
        existing->BecomeVersionOf(source);
        existing->SetRecycled(false);
    } else {
        auto copy = Template::MakeVersion(source, version);
        Register(templates_, copy.get());
        created = copy.release();
        versions.push_back(created);
    }
    if (version > created->GetLatestVersion()) {
        for (Template* other : versions) {
            if (other->GetVersion() >= 1 && other->GetVersion() <= version)
                other->SetLatestVersion(version);
        }
    }
    return created;
}

bool TemplateManager::HasNewerProperty(const Template& version, const Property& property) const {
    const Property* found = version.PeekProperty(property.GetKey(), true);
    return found && found->GetVersion() > property.GetVersion();
}

Template* TemplateManager::AddPropertyFromVersion(std::string_view name, Property* property,
                                                  bool* refused) {
    Template* own = CreateTemplateVersion(name, property->GetVersion());
    bool ownRefused = !own;
    if (own)
        own->AddProperty(property, -1, &ownRefused);
    if (refused)
        *refused = ownRefused;
    // Files declare their versions in order, so that a property mostly comes to the latest one.
    if (!own || ownRefused || own->GetVersion() >= own->GetLatestVersion())
        return own;
    for (Template* later : GetVersions(name)) {
        const bool listed = later->GetVersion() > own->GetVersion() &&
                            later->GetVersion() <= own->GetLatestVersion() && !later->IsRecycled();
        if (!listed)
            continue;
        if (HasNewerProperty(*later, *property))
            break;
        later->AddProperty(property, -1);
    }
    return own;
}

Template* TemplateManager::RemovePropertyFromVersion(std::string_view name, Property* property) {
    Template* own = CreateTemplateVersion(name, property->GetVersion());
    if (!own || own->RemoveProperty(property) < 0)
        return own;
    for (Template* later : GetVersions(name)) {
        if (later->GetVersion() <= own->GetVersion() ||
            later->GetVersion() > own->GetLatestVersion())
            continue;
        const Property* found = later->PeekProperty(property->GetKey(), true);
        if (!found || found->GetVersion() > property->GetVersion())
            break;
        later->RemoveProperty(property);
    }
    return own;
}

Template* TemplateManager::AddParentFromVersion(std::string_view name, int version,
                                                Template* parent) {
    Template* own = CreateTemplateVersion(name, version);
    if (!own)
        return nullptr;
    own->AddParent(parent);
    if (own->GetVersion() >= own->GetLatestVersion())
        return own;
    for (Template* later : GetVersions(name)) {
        if (later->GetVersion() > version && later->GetVersion() <= own->GetLatestVersion() &&
            !later->IsRecycled())
            later->AddParent(parent);
    }
    return own;
}

} // namespace Kor
