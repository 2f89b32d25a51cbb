#include "instances/Instance.h"

#include <new>
#include <string>
#include <utility>
#include <vector>

#include "core/Ending.h"
#include "core/Names.h"
#include "core/Prefetch.h"
#include "core/Undo.h"
#include "core/Kept.h"
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

/// Instances whose values are gone, in any order. They are kept in reach, so that a schema that
/// goes can take its links away from them.
std::vector<Instance*>& Abandoned() {
    static NeverDestroyed<std::vector<Instance*>> instances;
    static const EmptiedAtEnd<std::vector<Instance*>> emptied(instances.Get());
    return instances.Get();
}

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
    MakeRoomForAbandoned();
    livingPlace_ = LivingInstances::Add(*this);
    ++count_;
    if (freeStanding_)
        ++freeStandingCount_;
}

Instance::~Instance() {
    LetGo();
    LivingInstances::Remove(livingPlace_);
    --count_;
    GiveBackRoomForAbandoned();
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

/// Values go where nobody could be told that there is no memory to remember their instances: the
/// room is made with each instance.
void Instance::MakeRoomForAbandoned() {
    auto& abandoned = Abandoned();
    if (abandoned.capacity() <= count_)
        abandoned.reserve(2 * count_ + 1);
}

/// One instance must not keep the room for all that there were. Where there is no memory for less,
/// the room stays.
void Instance::GiveBackRoomForAbandoned() noexcept {
    constexpr size_t kLittle = 1024;
    auto& abandoned = Abandoned();
    if (abandoned.capacity() < kLittle || count_ >= abandoned.capacity() / 8)
        return;
    try {
        std::vector<Instance*> fewer;
        fewer.reserve(2 * count_ + 1);
        fewer.insert(fewer.end(), abandoned.begin(), abandoned.end());
        abandoned.swap(fewer);
    } catch (const std::bad_alloc&) {
        return;
    }
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
std::vector<Template*> Instance::StripAbandoned() {
    std::vector<Template*> released;
    auto& abandoned = Abandoned();
    while (!abandoned.empty()) {
        Instance* instance = abandoned.back();
        std::vector<Property*> properties = instance->CollectListedProperties();
        std::sort(properties.begin(), properties.end());
        properties.erase(std::unique(properties.begin(), properties.end()), properties.end());
        released.insert(released.end(), instance->templates_.begin(), instance->templates_.end());
        for (Property* property : properties) // or the last instance of one might end it here
            property->AddUse();
        const Undo used([&properties] {
            for (Property* property : properties)
                property->ReleaseUse();
        });
        instance->LeaveAbandoned(); // only now, or no memory would leave it out of reach
        instance->DeletePropertyInstances();
        // Last, since the properties may go with them, and also without memory.
        const Undo listed([instance] { instance->ReleaseTemplates(); });
        for (const Property* property : properties) {
            const PointerList<Template>& holders = property->GetHolders();
            if (property->GetUseCount() == 1)
                released.insert(released.end(), holders.begin(), holders.end());
        }
    }
    std::sort(released.begin(), released.end());
    released.erase(std::unique(released.begin(), released.end()), released.end());
    return released;
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
