// The part of an instance that implements templates, and what comes and goes with them.

#include <algorithm>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/Undo.h"
#include "instances/GeometryInstance.h"
#include "instances/Instance.h"
#include "instances/UnlistedPropertyInstance.h"
#include "manager/TemplateManager.h"
#include "notify/NotificationManager.h"

namespace Kor {

int Instance::AddTemplate(Template* added, bool notify) {
    Template* replaced = nullptr;
    const int position = ListTemplate(added, replaced);
    Undo listed([&] { UnlistTemplate(added, replaced); });
    if (notify)
        Notify(kTemplateAdded, added);
    if (HasEnded() || added->HasEnded())
        return -1;
    AddPropertyInstances(added->GetInstanceProperties());
    listed.Commit();
    if (replaced)
        replaced->RemoveInstance();
    return position;
}

/// The one that gives way still counts this instance: it may be needed again.
int Instance::ListTemplate(Template* added, Template*& replaced) {
    const int position = Templates().Insert(added, &replaced);
    StayInReach();
    added->AddInstance();
    return position;
}

/// Takes that back; callbacks may have done so before.
void Instance::UnlistTemplate(Template* added, Template* replaced) {
    const bool isListed = Templates().RemoveExactly(added);
    if (isListed && replaced)
        Templates().Place(replaced); // where the other one was
    else if (replaced)
        replaced->RemoveInstance();
    if (isListed)
        added->RemoveInstance();
}

/// The properties come sorted and without duplicates.
void Instance::AddPropertyInstances(const std::vector<Property*>& properties) {
    if (!Sorted().IsEmpty())
        return AddMissingPropertyInstances(properties);
    Undo made([this] { DeletePropertyInstances(); });
    Sorted().Reserve(static_cast<int>(properties.size()));
    for (Property* property : properties) {
        if (UnlistedPropertyInstance::Find(*this, property->GetFullName()))
            continue;
        if (auto created = property->CreateInstance(*this))
            Sorted().Append(created.release());
    }
    made.Commit();
}

/// All are made before the list changes, which then moves its entries once.
void Instance::AddMissingPropertyInstances(const std::vector<Property*>& properties) {
    std::vector<std::unique_ptr<PropertyInstance>> created;
    for (Property* property : properties) {
        if (FindOrAnnounced(*property))
            continue;
        if (auto made = property->CreateInstance(*this))
            created.push_back(std::move(made));
    }
    if (created.empty())
        return;
    std::vector<PropertyInstance*> added;
    added.reserve(created.size());
    Sorted().MakeRoomFor(created.size());
    for (auto& made : created)
        added.push_back(made.release());
    Sorted().PlaceAll(added);
}

int Instance::RemoveTemplate(Template* removed, bool notify) {
    const std::vector<Property*> properties = removed->GetOwnProperties().GetAll();
    for (Property* property : properties)
        RemovePropertyInstance(*property, notify);
    const int position = Templates().FindEntry(removed);
    TypeRef leftToUsers; // may go with its last instance, but not before its callbacks
    if (Template* listed = Templates().GetAt(position)) {
        if (listed->GetOwner() == Owner::kUsers)
            leftToUsers.Reset(listed);
        Templates().Remove(listed);
        listed->RemoveInstance();
    }
    if (notify)
        Notify(kTemplateRemoved, removed);
    return position;
}

int Instance::UpdateTemplate(Template* old, bool notify) {
    TemplateManager* manager = TemplateManager::Get();
    Template* next = manager && old->GetVersion() < std::numeric_limits<int>::max()
                         ? manager->GetTemplateVersion(old->GetFullName(),
                                                       static_cast<unsigned>(old->GetVersion()) + 1)
                         : nullptr;
    const int place = Templates().FindEntry(old);
    if (!next || place < 0)
        return -1;
    Template* listed = Templates().GetAt(place);
    Templates().Remove(listed);
    Template* replaced = nullptr;
    const int inserted = ListTemplate(next, replaced);
    Undo updated([&] { // without memory it can be tried again
        UnlistTemplate(next, replaced);
        Templates().Place(listed);
    });
    if (notify) {
        const bool deprecated = next->GetVersionStatus() == VersionedObject::kDeprecated;
        if (deprecated && old->GetVersionStatus() != VersionedObject::kDeprecated)
            Notify(kTemplateDeprecated, nullptr);
        Notify(kTemplateUpdated, old);
        AnnounceDroppedProperties(*old, *next);
    }
    const std::vector<Property*> properties = next->GetOwnProperties().GetAll();
    for (Property* property : properties) {
        if (property->GetVersion() == next->GetVersion() && !property->HasEnded() && !HasEnded())
            UpdateProperty(*property, notify);
    }
    if (HasEnded())
        return -1;
    updated.Commit();
    if (replaced)
        replaced->RemoveInstance();
    listed->RemoveInstance();
    return inserted < 0 ? ~inserted : inserted;
}

/// Only told, not done: an update never deletes values.
void Instance::AnnounceDroppedProperties(const Template& old, const Template& next) {
    const std::vector<Property*> properties = old.GetOwnProperties().GetAll();
    for (Property* property : properties) {
        if (!next.PeekProperty(property->GetKey(), true))
            Notify(kPropertyRemoved, property);
    }
}

/// The property instance of the previous version is looked for under the short name, so only one of
/// a property without an owner is announced. It keeps pointing to that version, whose value it has.
/// A property is told of as deprecated when the earlier definition was and the new one is not; a
/// template when the new one is and the old one was not.
void Instance::UpdateProperty(Property& property, bool notify) {
    auto* previous = dynamic_cast<Property*>(property.GetPrevious());
    PropertyInstance* found = previous ? Sorted().Get(previous->GetNameView()) : nullptr;
    if (!found) {
        AddPropertyInstance(property, notify);
        return;
    }
    Sorted().RemoveExactly(found);
    const UnlistedPropertyInstance announced(*found, UnlistedPropertyInstance::kComesBack);
    const Undo takenOut([&] {
        if (PropertyInstance* left = announced.Get())
            Sorted().Place(left);
    });
    const int oldStatus = found->GetProperty()->GetVersionStatus();
    const int newStatus = property.GetVersionStatus();
    int event = kPropertyUpdated;
    if (oldStatus == VersionedObject::kDeprecated && newStatus != VersionedObject::kDeprecated)
        event = kPropertyDeprecated;
    else if (newStatus == VersionedObject::kRenamed)
        event = kPropertyRenamed;
    if (NotificationManager* notifications = NotificationManager::Get()) {
        void* argument = event == kPropertyDeprecated ? nullptr : &property;
        notifications->NotifyPropertyInstance(found, event, argument);
    }
}

/// As when the template is removed: properties first. Callbacks hear of a template that has ended,
/// whose memory stays meanwhile.
void Instance::DropEnded(const Template* ended,
                         const std::unordered_set<const Property*>& properties) {
    for (PropertyInstance* listed : Sorted().GetAll()) {
        if (listed->GetInstance() != this)
            continue; // a callback gave it to another owner
        if (auto* geometry = ObjectCast<GeometryInstance>(listed))
            geometry->DropNodesOf(properties);
        if (properties.count(listed->GetProperty()) > 0)
            RemoveListed(*listed, true);
    }
    const auto& templates = Templates();
    const auto found = std::find(templates.begin(), templates.end(), ended);
    if (!ended || found == templates.end())
        return;
    Template* implemented = *found;
    Templates().RemoveExactly(implemented);
    implemented->RemoveInstance();
    Notify(kTemplateRemoved, implemented);
}

bool Instance::HasAnyOf(const Template* ended,
                        const std::unordered_set<const Property*>& properties) const {
    const auto isAmong = [&properties](const PropertyInstance* candidate) {
        const auto* geometry = ObjectCast<GeometryInstance>(candidate);
        return properties.count(candidate->GetProperty()) > 0 ||
               (geometry && geometry->HasNodesOf(properties));
    };
    return (ended && std::find(templates_.begin(), templates_.end(), ended) != templates_.end()) ||
           std::any_of(propertyInstances_.begin(), propertyInstances_.end(), isAmong);
}

Template* Instance::GetTemplate(std::string_view name) const {
    TemplateManager* manager = TemplateManager::Get();
    Template* known = manager ? manager->GetTemplate(name) : nullptr;
    if (!known)
        return nullptr;
    if (known->GetLatestVersion() < 1)
        return known;
    const auto& templates = Templates(); // the versions of a name stand together
    const int found = templates.Find(std::string(name).append(1, '#'));
    Template* best = nullptr;
    for (int i = found < 0 ? ~found : found; Template* candidate = templates.GetAt(i); ++i) {
        if (candidate->GetFullName() != name)
            break;
        const int version = candidate->GetVersion();
        if (version < 1 || version > known->GetLatestVersion())
            continue;
        if (!best || best->GetVersion() < version)
            best = candidate;
    }
    return best;
}

Template* Instance::FindTemplateVersion(std::string_view name, int version) const {
    std::string key(name);
    key.append(1, '#').append(std::to_string(version));
    return Templates().Get(key);
}

} // namespace Kor
