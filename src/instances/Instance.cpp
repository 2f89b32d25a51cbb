#include "instances/Instance.h"

#include <algorithm>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "core/Names.h"
#include "instances/Asset.h"
#include "instances/AttributeInstance.h"
#include "instances/OpenInstances.h"
#include "instances/UnlistedPropertyInstance.h"
#include "manager/RetiredSchema.h"
#include "manager/TemplateManager.h"
#include "notify/NotificationManager.h"

namespace Kor {

namespace {

/// Instances whose values are gone, in any order. They are kept in reach, so that a schema that
/// goes can take its links away from them.
std::vector<Instance*>& Abandoned() {
    static auto& instances = *new std::vector<Instance*>(); // outlives all users at process exit
    return instances;
}

} // namespace

Instance::Instance(std::string_view name, Place place)
    : NamedObject(name), freeStanding_(place == kFreeStanding) {
    if (freeStanding_)
        ++freeStandingCount_;
}

Instance::~Instance() {
    if (auto* holder = ObjectCast<AttributeInstance>(holder_))
        holder->ForgetNestedInstance(*this);
    if (abandonedPlace_ > 0)
        LeaveAbandoned();
    if (openPlace_ > 0)
        OpenInstances::ForgetInstance(*this);
    DeletePropertyInstances();
    ReleaseTemplates();
    BecomeValueElement();
}

// The name may be the instance's own text, which a callback may change: it is copied first.
bool Instance::SetName(const char* name) {
    const std::string given(TextOf(name));
    std::string shown(given);
    Notify(kInstanceRenamed, shown.data());
    if (!IsValidName(given))
        return false;
    CompactString fresh(given);
    LeaveSortedLists();
    SwapName(fresh);
    try {
        EnterSortedLists();
    } catch (...) { // without memory it keeps its old name and place
        SwapName(fresh);
        EnterSortedLists();
        throw;
    }
    return true;
}

void Instance::Notify(int event, void* argument) {
    if (NotificationManager* notifications = NotificationManager::Get())
        notifications->NotifyInstance(this, event, argument);
}

// -- templates ------------------------------------------------------------------------------------

int Instance::AddTemplate(Template* added, bool notify) {
    Template* replaced = nullptr;
    const int position = Templates().Insert(added, &replaced);
    added->AddInstance();
    if (replaced)
        replaced->RemoveInstance();
    if (notify)
        Notify(kTemplateAdded, added);
    AddPropertyInstances(added->GetInstanceProperties());
    return position;
}

/// The properties come sorted and without duplicates.
void Instance::AddPropertyInstances(const std::vector<Property*>& properties) {
    if (!Sorted().IsEmpty())
        return AddMissingPropertyInstances(properties);
    Sorted().Reserve(static_cast<int>(properties.size()));
    for (Property* property : properties) {
        if (UnlistedPropertyInstance::Find(*this, property->GetFullName()))
            continue;
        if (auto created = property->CreateInstance(*this))
            Sorted().Append(created.release());
    }
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
    Sorted().Reserve(Sorted().GetCount() + static_cast<int>(created.size()));
    for (auto& made : created)
        added.push_back(made.release());
    Sorted().PlaceAll(added);
}

int Instance::RemoveTemplate(Template* removed, bool notify) {
    const std::vector<Property*> properties(removed->GetOwnProperties().begin(),
                                            removed->GetOwnProperties().end());
    for (Property* property : properties)
        RemovePropertyInstance(*property, notify);
    const int position = FindTemplate(*removed);
    if (Template* listed = Templates().GetAt(position)) {
        listed->RemoveInstance();
        Templates().Remove(listed);
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
    const int place = FindTemplate(*old);
    if (!next || place < 0)
        return -1;
    Template* listed = Templates().GetAt(place);
    Templates().Remove(listed);
    Template* replaced = nullptr;
    const int inserted = Templates().Insert(next, &replaced);
    next->AddInstance();
    if (replaced)
        replaced->RemoveInstance();
    if (notify) {
        const bool deprecated = next->GetVersionStatus() == VersionedObject::kDeprecated;
        if (deprecated && old->GetVersionStatus() != VersionedObject::kDeprecated)
            Notify(kTemplateDeprecated, nullptr);
        Notify(kTemplateUpdated, old);
        AnnounceDroppedProperties(*old, *next);
    }
    const std::vector<Property*> properties(next->GetOwnProperties().begin(),
                                            next->GetOwnProperties().end());
    for (Property* property : properties) {
        if (property->GetVersion() == next->GetVersion())
            UpdateProperty(*property, notify);
    }
    listed->RemoveInstance();
    return inserted < 0 ? ~inserted : inserted;
}

/// Its place, or that of another one with its key.
int Instance::FindTemplate(const Template& wanted) const {
    const int own = Templates().IndexOf(&wanted);
    return own >= 0 ? own : Templates().Find(wanted.GetKey());
}

/// Only told, not done: an update deliberately never deletes values.
void Instance::AnnounceDroppedProperties(const Template& old, const Template& next) {
    const std::vector<Property*> properties(old.GetOwnProperties().begin(),
                                            old.GetOwnProperties().end());
    for (Property* property : properties) {
        if (!next.GetProperty(property->GetKey(), true))
            Notify(kPropertyRemoved, property);
    }
}

/// The property instance of the previous version is deliberately looked for under the short name,
/// and keeps pointing to that version: the update only announces the change. The deprecation test
/// deliberately mirrors the one for templates.
void Instance::UpdateProperty(Property& property, bool notify) {
    auto* previous = dynamic_cast<Property*>(property.GetPrevious());
    PropertyInstance* found = previous ? Sorted().Get(previous->GetNameView()) : nullptr;
    if (!found) {
        AddPropertyInstance(property, notify);
        return;
    }
    Sorted().RemoveExactly(found);
    const UnlistedPropertyInstance announced(*found, UnlistedPropertyInstance::kComesBack);
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
    if (PropertyInstance* left = announced.Get())
        Sorted().Place(left);
}

Template* Instance::GetTemplate(std::string_view name) const {
    TemplateManager* manager = TemplateManager::Get();
    Template* known = manager ? manager->GetTemplate(name) : nullptr;
    if (!known)
        return nullptr;
    if (known->GetLatestVersion() < 1)
        return known;
    Template* best = nullptr;
    for (Template* candidate : Templates()) {
        const int version = candidate->GetVersion();
        if (candidate->GetFullName() != name || version < 1 || version > known->GetLatestVersion())
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

// -- property instances ---------------------------------------------------------------------------

/// A property that gets another owner and a template that is renamed change the keys by which the
/// lists are sorted.
void Instance::SortAnew() const {
    propertyInstances_.Resort();
    templates_.Resort();
    sortedBy_ = SchemaRevision::GetKeys();
}

PropertyInstance* Instance::GetPropertyInstance(std::string_view fullName, bool create) {
    PropertyInstance* found = Sorted().Get(fullName);
    if (found || !create)
        return found;
    TemplateManager* manager = TemplateManager::Get();
    Property* property = manager ? manager->GetProperty(fullName) : nullptr;
    return property ? AddPropertyInstance(*property, false) : nullptr;
}

PropertyInstance* Instance::FindOrAnnounced(const Property& property) const {
    PropertyInstance* listed = Sorted().Get(property.GetFullName());
    return listed ? listed : UnlistedPropertyInstance::Find(*this, property.GetFullName());
}

PropertyInstance* Instance::AddPropertyInstance(Property& property, bool notify) {
    if (PropertyInstance* existing = FindOrAnnounced(property))
        return existing;
    std::unique_ptr<PropertyInstance> created = property.CreateInstance(*this);
    if (!created)
        return nullptr;
    Sorted().Insert(created.get());
    PropertyInstance* added = created.release();
    if (notify)
        Notify(kPropertyAdded, added);
    return added;
}

int Instance::RemovePropertyInstance(Property& property, bool notify) {
    PropertyInstance* found = Sorted().Get(property.GetFullName());
    if (!found)
        return -1;
    const int index = Sorted().Remove(found);
    const UnlistedPropertyInstance removed(*found, UnlistedPropertyInstance::kGoes);
    if (notify)
        Notify(kPropertyRemoved, found);
    if (openPlace_ > 0)
        OpenInstances::ForgetPropertyInstance(*this, found);
    if (PropertyInstance* left = removed.Get()) {
        left->LeaveInstance();
        delete left;
    }
    return index;
}

void Instance::ForgetPropertyInstance(PropertyInstance& propertyInstance) {
    Sorted().RemoveExactly(&propertyInstance);
    UnlistedPropertyInstance::Forget(propertyInstance);
    if (openPlace_ > 0)
        OpenInstances::ForgetPropertyInstance(*this, &propertyInstance);
}

bool Instance::IsPropertyInstanceValid(std::string_view fullName) const {
    const PropertyInstance* found = Sorted().Get(fullName);
    return found && found->IsValid();
}

bool Instance::IsValid() const {
    for (const Template* implemented : Templates()) {
        for (const Property* property : implemented->GetOwnProperties()) {
            if (!IsPropertyInstanceValid(property->GetFullName()))
                return false;
        }
    }
    return true;
}

// -- place in other instances ---------------------------------------------------------------------

void Instance::AttachSilently(PropertyInstance* parent) {
    holder_ = parent;
    hasParent_ = parent != nullptr;
}

void Instance::SetParentPropertyInstance(PropertyInstance* parent) {
    AttachSilently(parent);
    if (parent)
        SetName(parent->GetName());
}

Asset* Instance::GetParentAsset() {
    Instance* top = this;
    while (top->hasParent_ && top->holder_->GetInstance())
        top = top->holder_->GetInstance();
    return ObjectCast<Asset>(top);
}

// -- lives ----------------------------------------------------------------------------------------

void Instance::BecomeValueElement() {
    if (!freeStanding_)
        return;
    freeStanding_ = false;
    if (--freeStandingCount_ == 0)
        RetiredSchema::Release();
}

void Instance::Abandon() {
    if (abandonedPlace_ > 0)
        return;
    Abandoned().push_back(this);
    abandonedPlace_ = static_cast<unsigned>(Abandoned().size());
}

/// The last one takes the place, so that no other has to move.
void Instance::LeaveAbandoned() {
    auto& abandoned = Abandoned();
    Instance* last = abandoned.back();
    abandoned[abandonedPlace_ - 1] = last;
    last->abandonedPlace_ = abandonedPlace_;
    abandoned.pop_back();
    abandonedPlace_ = 0;
}

// Stripping an instance abandons those nested in its values, which then follow in the same loop.
void Instance::StripAbandoned() {
    auto& abandoned = Abandoned();
    while (!abandoned.empty()) {
        Instance* instance = abandoned.back();
        instance->LeaveAbandoned();
        instance->DeletePropertyInstances();
        instance->ReleaseTemplates();
    }
}

void Instance::DeletePropertyInstances() {
    if (openPlace_ > 0)
        OpenInstances::ForgetPropertyInstance(*this, nullptr);
    const SortedObjectList<PropertyInstance> all = std::move(propertyInstances_);
    propertyInstances_.Clear();
    for (PropertyInstance* propertyInstance : all) {
        propertyInstance->LeaveInstance();
        delete propertyInstance;
    }
}

void Instance::ReleaseTemplates() {
    for (Template* implemented : templates_)
        implemented->RemoveInstance();
    templates_.Clear();
}

} // namespace Kor
