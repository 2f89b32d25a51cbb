#include "schema/InheritedProperties.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "schema/GeometryAlternate.h"
#include "schema/Template.h"

namespace Kor {

namespace {

/// Counts as a user of a prototype until a tree has it.
class PrototypeRef {
public:
    explicit PrototypeRef(Property* prototype) : prototype_(prototype) { prototype_->AddUse(); }
    PrototypeRef(PrototypeRef&& other) noexcept
        : prototype_(std::exchange(other.prototype_, nullptr)) {}
    PrototypeRef(const PrototypeRef&) = delete;
    PrototypeRef& operator=(const PrototypeRef&) = delete;
    ~PrototypeRef() {
        if (prototype_)
            prototype_->ReleasePrototype();
    }
    Property* Get() const { return prototype_; }

private:
    Property* prototype_;
};

/// What the version has of a property from its beginning on. What the source introduced has the
/// new version in its full name.
PrototypeRef MakePrototype(const Property& property, Template& source, const Template& version) {
    UnseenProperty made(static_cast<Property*>(property.Clone().release()));
    if (made->GetVersion() == source.GetVersion()) {
        made->SetOwner(const_cast<Template*>(&version));
        made->ForgetOwner(version);
    }
    made->BecomePrototype(&source);
    return PrototypeRef(made.release());
}

bool MayBeShared(const Property& property) {
    return !ObjectCast<GeometryAlternate>(&property);
}

bool MayBeShared(const SortedObjectList<Property>& own) {
    const Property* last = nullptr;
    for (const Property* property : own) {
        const bool sharesName = last && last->GetNameView() == property->GetNameView();
        if (sharesName || !MayBeShared(*property))
            return false;
        last = property;
    }
    return true;
}

/// Of properties with names of their own, in the order of these.
PrototypeTree MakeTree(const SortedObjectList<Property>& own, Template& source,
                       const Template& version) {
    std::vector<PrototypeRef> made;
    std::vector<Property*> prototypes;
    made.reserve(static_cast<size_t>(own.GetCount()));
    prototypes.reserve(static_cast<size_t>(own.GetCount()));
    for (const Property* property : own) {
        made.push_back(MakePrototype(*property, source, version));
        prototypes.push_back(made.back().Get());
    }
    return PrototypeTree(prototypes);
}

} // namespace

std::unique_ptr<InheritedProperties>
InheritedProperties::Make(Template& source, const InheritedProperties* inherited,
                          const SortedObjectList<Property>& own, const Template& version) {
    const auto finish = [&source](PrototypeTree tree) {
        return std::unique_ptr<InheritedProperties>(
            new InheritedProperties(std::move(tree), source.GetVersion()));
    };
    if (!MayBeShared(own))
        return nullptr;
    if (!inherited)
        return finish(MakeTree(own, source, version));
    PrototypeTree tree = inherited->tree_;
    for (auto touched = inherited->touched_.rbegin(); touched != inherited->touched_.rend();
         ++touched) {
        if (!touched->isListed)
            tree.Erase(touched->index);
        else if (touched->copy)
            tree.Replace(touched->index, MakePrototype(*touched->copy, source, version).Get());
    }
    for (const Property* property : own) {
        const int place = tree.CountBefore(property->GetNameView());
        if (place < tree.GetCount() && tree.GetAt(place)->GetNameView() == property->GetNameView())
            return nullptr;
        tree.Insert(place, MakePrototype(*property, source, version).Get());
    }
    return finish(std::move(tree));
}

// -- places ---------------------------------------------------------------------------------------

int InheritedProperties::FindEntry(std::string_view name) const {
    const int place = tree_.CountBefore(name);
    return place < GetCount() && tree_.GetAt(place)->GetNameView() == name ? place : -1;
}

int InheritedProperties::FindListed(std::string_view name) const {
    const int place = tree_.CountBefore(name);
    const bool isThere =
        place < GetCount() && tree_.GetAt(place)->GetNameView() == name && IsListed(place);
    return isThere ? place : ~place;
}

int InheritedProperties::FindCopy(const Property& copy) const {
    const auto found = std::find_if(touched_.begin(), touched_.end(),
                                    [&copy](const Touched& t) { return t.copy == &copy; });
    return found == touched_.end() ? -1 : found->index;
}

InheritedProperties::TouchedList::const_iterator InheritedProperties::FindPlace(int index) const {
    return std::partition_point(touched_.begin(), touched_.end(),
                                [index](const Touched& t) { return t.index < index; });
}

const InheritedProperties::Touched* InheritedProperties::Find(int index) const {
    const auto found = FindPlace(index);
    return found != touched_.end() && found->index == index ? &*found : nullptr;
}

InheritedProperties::Sum InheritedProperties::SumBefore(int index) const {
    const auto found = FindPlace(index);
    if (found == touched_.begin())
        return {};
    return {(found - 1)->unlisted, (found - 1)->undeclared};
}

int InheritedProperties::GetListedAt(int place) const {
    const auto found =
        std::partition_point(touched_.begin(), touched_.end(), [place](const Touched& t) {
            return t.index + 1 - t.unlisted <= place;
        });
    return place + (found == touched_.begin() ? 0 : (found - 1)->unlisted);
}

int InheritedProperties::GetDeclaredAt(int place) const {
    const auto found =
        std::partition_point(touched_.begin(), touched_.end(), [place](const Touched& t) {
            return t.index + 1 - t.undeclared <= place;
        });
    return place + (found == touched_.begin() ? 0 : (found - 1)->undeclared);
}

bool InheritedProperties::IsListed(int index) const {
    const Touched* touched = touched_.empty() ? nullptr : Find(index);
    return !touched || touched->isListed;
}

bool InheritedProperties::IsDeclared(int index) const {
    const Touched* touched = touched_.empty() ? nullptr : Find(index);
    return !touched || touched->isDeclared;
}

// -- entries --------------------------------------------------------------------------------------

Property* InheritedProperties::GetCopy(int index) const {
    const Touched* touched = touched_.empty() ? nullptr : Find(index);
    return touched ? touched->copy : nullptr;
}

Property& InheritedProperties::Peek(int index) const {
    Property* copy = GetCopy(index);
    return copy ? *copy : *tree_.GetAt(index);
}

void InheritedProperties::MakeRoom() {
    if (touched_.size() == touched_.capacity())
        touched_.reserve(2 * touched_.size() + 1);
}

InheritedProperties::Touched& InheritedProperties::Touch(int index) {
    const auto place = FindPlace(index) - touched_.begin();
    auto found = touched_.begin() + place;
    if (found == touched_.end() || found->index != index) {
        const Sum sum = SumBefore(index);
        found = touched_.insert(found, {index, nullptr, true, true, sum.unlisted, sum.undeclared});
    }
    return *found;
}

void InheritedProperties::SetCopy(int index, Property* copy) {
    Touch(index).copy = copy;
}

void InheritedProperties::Unlist(int index) {
    Touch(index).isListed = false;
    AddUp();
}

void InheritedProperties::Undeclare(int index) {
    Touched& touched = Touch(index);
    touched.isDeclared = false;
    touched.copy = nullptr;
    AddUp();
}

void InheritedProperties::Forget(const Property& copy) noexcept {
    if (isSortedForTheEnd_) {
        touched_.erase(std::remove_if(touched_.begin(), touched_.end(),
                                      [&copy](const Touched& t) { return t.copy == &copy; }),
                       touched_.end());
        return;
    }
    const int index = FindCopy(copy);
    if (index < 0)
        return;
    Unlist(index);
    Undeclare(index);
}

void InheritedProperties::AddUp() {
    Sum sum;
    for (Touched& touched : touched_) {
        touched.unlisted = sum.unlisted += touched.isListed ? 0 : 1;
        touched.undeclared = sum.undeclared += touched.isDeclared ? 0 : 1;
    }
}

/// Entries without a copy come first.
void InheritedProperties::SortForTheEnd() {
    isSortedForTheEnd_ = true;
    const auto comesBefore = [](const Touched& a, const Touched& b) {
        if (!a.copy || !b.copy)
            return !a.copy && b.copy;
        const int order = a.copy->GetKey().compare(b.copy->GetKey());
        return order == 0 ? std::less<>()(a.copy, b.copy) : order < 0;
    };
    std::sort(touched_.begin(), touched_.end(), comesBefore);
}

bool InheritedProperties::HasManyTouched() const {
    constexpr size_t kFew = 16;
    constexpr size_t kPart = 8;
    return touched_.size() > std::max(kFew, static_cast<size_t>(GetCount()) / kPart);
}

int InheritedProperties::FindLeftType(int index) {
    if (typesLeft_ == Type::GetLeftCount())
        return GetCount();
    while (index < GetCount() && (Find(index) || !tree_.GetAt(index)->SharesLeftType()))
        ++index;
    if (index == GetCount())
        typesLeft_ = Type::GetLeftCount();
    return index;
}

} // namespace Kor
