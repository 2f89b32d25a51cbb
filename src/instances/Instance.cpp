#include "instances/Instance.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "core/Ending.h"
#include "core/Names.h"
#include "core/Prefetch.h"
#include "core/Undo.h"
#include "instances/AbandonedInstances.h"
#include "instances/Asset.h"
#include "instances/AttributeInstance.h"
#include "instances/LivingInstances.h"
#include "instances/OpenInstances.h"
#include "instances/PropertyPlaces.h"
#include "instances/UnlistedPropertyInstance.h"
#include "manager/RetiredSchema.h"
#include "manager/TemplateManager.h"
#include "notify/NotificationManager.h"

namespace Kor {

namespace {

bool HasName(const PropertyInstance* candidate, std::string_view fullName) {
    return candidate && candidate->GetProperty()->GetFullName() == fullName;
}

/// Whether the property instance at an index is the one that a search for the name would find.
bool IsFirstOfName(const SortedObjectList<PropertyInstance>& sorted, int index,
                   std::string_view fullName) {
    return HasName(sorted.GetAt(index), fullName) && !HasName(sorted.GetAt(index - 1), fullName);
}

} // namespace

Instance::Instance(std::string_view name, Place place)
    : NamedObject(name), hasParent_(false), freeStanding_(place == kFreeStanding),
      handedOut_(false), lostValue_(false) {
    AbandonedInstances::MakeRoomFor(count_);
    livingPlace_ = LivingInstances::Add(*this);
    ++count_;
    if (freeStanding_)
        ++freeStandingCount_;
}

Instance::~Instance() {
    LetGo();
    LivingInstances::Remove(livingPlace_);
    --count_;
    AbandonedInstances::GiveBackRoom(count_);
}

void Instance::Leave() noexcept {
    LetGo();
    NamedObject::Leave();
}

void Instance::LetGo() noexcept {
    if (auto* holder = ObjectCast<AttributeInstance>(holder_))
        holder->ForgetNestedInstance(*this);
    AttachSilently(nullptr);
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
    if (HasEnded() || !IsValidName(given))
        return false;
    CompactString fresh(given);
    MakeRoomInSortedLists();
    LeaveSortedLists();
    SwapName(fresh);
    EnterSortedLists();
    return true;
}

void Instance::Notify(int event, void* argument) {
    NotificationManager* notifications = NotificationManager::Get();
    if (!notifications || !notifications->HasInstanceListeners())
        return;
    HandOut();
    notifications->NotifyInstance(this, event, argument);
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
    PropertyInstance* found = FindByName(fullName);
    if (found || !create)
        return found;
    TemplateManager* manager = TemplateManager::Get();
    Property* property = manager ? manager->GetProperty(fullName) : nullptr;
    return property ? AddPropertyInstance(*property, false) : nullptr;
}

PropertyInstance* Instance::FindByName(std::string_view fullName) const {
    const auto& sorted = Sorted();
    PropertyPlaces places(fullName);
    int index = places.Guess();
    if (!IsFirstOfName(sorted, index, fullName)) {
        index = sorted.Find(fullName);
        places.Remember(index);
    }
    return sorted.GetAt(index);
}

PropertyInstance* Instance::FindOrAnnounced(const Property& property) const {
    PropertyInstance* listed = Sorted().Get(property.GetFullName());
    return listed ? listed : UnlistedPropertyInstance::Find(*this, property.GetFullName());
}

PropertyInstance* Instance::FindPropertyInstance(std::string_view fullName, int& next) const {
    const auto& sorted = Sorted();
    const int index = IsFirstOfName(sorted, next, fullName) ? next : sorted.Find(fullName);
    if (index < 0)
        return nullptr;
    next = index + 1;
    return sorted.GetAt(index);
}

PropertyInstance* Instance::AddPropertyInstance(Property& property, bool notify) {
    if (PropertyInstance* existing = FindOrAnnounced(property))
        return existing;
    std::unique_ptr<PropertyInstance> created = property.CreateInstance(*this);
    if (!created)
        return nullptr;
    StayInReach();
    Sorted().Insert(created.get());
    PropertyInstance* added = created.release();
    if (notify)
        Notify(kPropertyAdded, added);
    return added->HasEnded() ? nullptr : added;
}

int Instance::RemovePropertyInstance(Property& property, bool notify) {
    PropertyInstance* found = Sorted().Get(property.GetFullName());
    if (!found)
        return -1;
    const int index = Sorted().IndexOf(found);
    RemoveListed(*found, notify);
    return index;
}

void Instance::RemoveListed(PropertyInstance& listed, bool notify) {
    Sorted().RemoveExactly(&listed);
    const UnlistedPropertyInstance removed(listed, UnlistedPropertyInstance::kGoes);
    if (notify)
        Notify(kPropertyRemoved, &listed);
    if (openPlace_ > 0)
        OpenInstances::ForgetPropertyInstance(*this, &listed);
    if (PropertyInstance* left = removed.Get()) {
        left->LeaveInstance();
        Ending::End(left);
    }
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
    SetHolder(parent);
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

void Instance::LoseValue() {
    if (abandonedPlace_ > 0)
        return;
    lostValue_ = true;
    Abandon();
    if (!handedOut_)
        Ending::EndLater(this);
}

/// Once it has lost its templates an abandoned instance is out of reach, until it gets others.
void Instance::StayInReach() {
    if (lostValue_ && abandonedPlace_ == 0)
        Abandon();
}

void Instance::Abandon() {
    abandonedPlace_ = AbandonedInstances::Add(*this);
}

void Instance::LeaveAbandoned() {
    AbandonedInstances::Remove(abandonedPlace_);
    abandonedPlace_ = 0;
}

bool Instance::UsesLeavingTemplates() const {
    const auto isLeaving = [](const Template* used) {
        return used->IsRecycled() || used->GetOwner() == Owner::kEndedSchema ||
               used->GetOwner() == Owner::kUsers;
    };
    const auto isOfLeaving = [&isLeaving](const PropertyInstance* propertyInstance) {
        const auto& holders = propertyInstance->GetProperty()->GetHolders();
        return holders.empty() || std::any_of(holders.begin(), holders.end(), isLeaving);
    };
    return std::any_of(templates_.begin(), templates_.end(), isLeaving) ||
           std::any_of(propertyInstances_.begin(), propertyInstances_.end(), isOfLeaving);
}

void Instance::LetGoOfSchema(std::vector<Template*>& released) {
    std::vector<Property*> properties = CollectListedProperties();
    std::sort(properties.begin(), properties.end());
    properties.erase(std::unique(properties.begin(), properties.end()), properties.end());
    released.insert(released.end(), templates_.begin(), templates_.end());
    for (Property* property : properties) // or the last instance of one might end it here
        property->AddUse();
    const Undo used([&properties] {
        for (Property* property : properties)
            property->ReleaseUse();
    });
    LeaveAbandoned(); // only now, or no memory would leave it out of reach
    DeletePropertyInstances();
    // Last, since the properties may go with them, and also without memory.
    const Undo listed([this] { ReleaseTemplates(); });
    for (const Property* property : properties) {
        const PointerList<Template>& holders = property->GetHolders();
        if (property->GetUseCount() == 1)
            released.insert(released.end(), holders.begin(), holders.end());
    }
}

/// Without those that no template lists any more: such a one goes with its last property instance.
std::vector<Property*> Instance::CollectListedProperties() const {
    std::vector<Property*> properties;
    properties.reserve(static_cast<size_t>(propertyInstances_.GetCount()));
    for (const PropertyInstance* propertyInstance : propertyInstances_) {
        if (!propertyInstance->GetProperty()->GetHolders().empty())
            properties.push_back(propertyInstance->GetProperty());
    }
    return properties;
}

void Instance::DeletePropertyInstances() {
    if (openPlace_ > 0)
        OpenInstances::ForgetPropertyInstance(*this, nullptr);
    const SortedObjectList<PropertyInstance> all = std::move(propertyInstances_);
    propertyInstances_.Clear();
    all.ForEach([](const PropertyInstance* propertyInstance) { Prefetch(propertyInstance); });
    all.ForEach([](PropertyInstance* propertyInstance) {
        propertyInstance->LeaveInstance();
        if (Ending::IsDeferred())
            Ending::End(propertyInstance);
        else
            delete propertyInstance;
    });
}

void Instance::ReleaseTemplates() {
    const SortedObjectList<Template> all = std::move(templates_);
    templates_.Clear();
    all.ForEach([](Template* implemented) { implemented->RemoveInstance(); });
}

} // namespace Kor
