// The part of the template manager that makes versions and passes changes on to later ones.

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include "manager/TemplateManager.h"

#include "core/NumberText.h"

namespace Kor {

std::vector<Template*> TemplateManager::GetVersions(std::string_view name) const {
    return ListVersions(std::string(name));
}

/// Valid until a version comes or goes.
const std::vector<Template*>& TemplateManager::ListVersions(const std::string& name) const {
    if (const auto* known = versions_.Find(name))
        return *known;
    const std::string prefix = name + '#';
    const int found = templates_.Find(prefix);
    std::vector<Template*> versions;
    for (int i = found < 0 ? ~found : found; i < templates_.GetCount(); ++i) {
        Template* version = templates_.GetAt(i);
        if (version->GetKey().compare(0, prefix.size(), prefix) != 0)
            break;
        if (version->GetFullName() == name)
            versions.push_back(version);
    }
    std::sort(versions.begin(), versions.end(), [](const Template* a, const Template* b) {
        return a->GetVersion() < b->GetVersion();
    });
    static const std::vector<Template*> none;
    return versions.empty() ? none : versions_.Enter(name, std::move(versions));
}

/// Later versions may have been made of it while it was emptied; those that are emptied themselves
/// do not count.
int TemplateManager::GetHighestDefined(const Template& first) const {
    const std::vector<Template*>& versions = ListVersions(first.GetFullName());
    const auto found = std::find_if(versions.rbegin(), versions.rend(),
                                    [](const Template* version) { return !version->IsRecycled(); });
    return found == versions.rend() ? 1 : std::max((*found)->GetVersion(), 1);
}

Template* TemplateManager::CreateTemplateVersion(std::string_view name, int version) {
    Template* existing =
        version >= 0 ? GetTemplateVersion(name, static_cast<unsigned>(version)) : nullptr;
    if (existing && (!existing->IsRecycled() || version == 1))
        return existing;
    if (version < 2)
        return nullptr;
    const std::string fullName(name);
    const std::vector<Template*>& versions = ListVersions(fullName);
    const auto above =
        std::partition_point(versions.begin(), versions.end(), [version](const Template* other) {
            return other->GetVersion() < version;
        });
    if (above == versions.begin() || (*(above - 1))->GetVersion() < 1)
        return nullptr;
    const Template& source = **(above - 1);
    Template* created = existing;
    versions_.MakeRoomIn(fullName); // for the steps behind the one that may fail
    auto latest = std::make_shared<int>(version);
    if (existing) {
        existing->BeginRedefinition(source.GetParentCount() > 0 ? root_ : nullptr);
        existing->BecomeVersionOf(source);
        existing->SetRecycled(false);
    } else {
        auto copy = Template::MakeVersion(source, version);
        Register(templates_, copy.get());
        created = copy.release();
    }
    if (version > created->GetLatestVersion())
        versions_.RaiseLatest(*created, std::move(latest));
    return created;
}

Property* TemplateManager::GetProperty(std::string_view fullName) const {
    const size_t hash = fullName.find('#');
    const size_t dot = fullName.find('.', hash == std::string_view::npos ? 0 : hash);
    if (dot == std::string_view::npos)
        return nullptr;
    const Template* owner = nullptr;
    if (hash != std::string_view::npos) {
        const std::string version(fullName.substr(hash + 1, dot - hash - 1));
        owner = GetTemplateVersion(fullName.substr(0, hash),
                                   static_cast<unsigned>(ParseInt(version.c_str())));
    } else {
        owner = GetTemplate(fullName.substr(0, dot));
    }
    return owner ? owner->GetProperty(fullName.substr(dot + 1), true) : nullptr;
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
