// The part of a template that keeps its properties and finds them.

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>

#include "schema/Template.h"

#include "core/Ending.h"
#include "core/MakeRoom.h"
#include "schema/AttributeProperty.h"
#include "schema/SchemaHistory.h"
#include "schema/SchemaRevision.h"

namespace Kor {

// -- finding --------------------------------------------------------------------------------------

int Template::GetPropertyCount() const {
    return propertiesByName_.GetCount() + (inherited_ ? inherited_->GetListedCount() : 0);
}

int Template::GetDeclaredCount() const {
    return static_cast<int>(properties_.size()) + (inherited_ ? inherited_->GetDeclaredCount() : 0);
}

/// How many inherited properties come before an own one in the order of names.
int Template::CountListedUpTo(const Property& own) const {
    const int found = inherited_->FindListed(own.GetKey());
    return inherited_->CountListedBefore(found < 0 ? ~found : found + 1);
}

Property* Template::FindByName(int index, Entry entry) const {
    if (!inherited_ || index < 0 || index >= GetPropertyCount())
        return inherited_ ? nullptr : propertiesByName_.GetAt(index);
    int own = 0; // so many own ones come before
    for (int end = propertiesByName_.GetCount(); own < end;) {
        const int middle = own + (end - own) / 2;
        if (CountListedUpTo(*propertiesByName_.GetAt(middle)) + middle < index)
            own = middle + 1;
        else
            end = middle;
    }
    Property* next = propertiesByName_.GetAt(own);
    if (next && CountListedUpTo(*next) + own == index)
        return next;
    return (this->*entry)(inherited_->GetListedAt(index - own));
}

Property* Template::FindDeclared(int index, Entry entry) const {
    if (index < 0 || index >= GetDeclaredCount())
        return nullptr;
    const int inherited = inherited_ ? inherited_->GetDeclaredCount() : 0;
    return index < inherited ? (this->*entry)(inherited_->GetDeclaredAt(index))
                             : properties_[static_cast<size_t>(index - inherited)];
}

Property* Template::FindOwn(std::string_view name, Entry entry) const {
    const int found = inherited_ ? inherited_->FindListed(name) : -1;
    return found >= 0 ? (this->*entry)(found) : propertiesByName_.Get(name);
}

Property* Template::GetProperty(std::string_view name, bool includeInherited) const {
    const Template* owner = FindOwner(name, includeInherited);
    return owner ? owner->FindOwn(name, &Template::GetEntry) : nullptr;
}

const Property* Template::PeekProperty(std::string_view name, bool includeInherited) const {
    const Template* owner = FindOwner(name, includeInherited);
    return owner ? owner->FindOwn(name, &Template::PeekEntry) : nullptr;
}

Property* Template::GetPeeked(const Property& peeked) const {
    return peeked.IsPrototype() ? GetEntry(inherited_->FindEntry(peeked.GetNameView()))
                                : const_cast<Property*>(&peeked);
}

bool Template::IsListed(const Property& property) const {
    const int copy = inherited_ ? inherited_->FindCopy(property) : -1;
    return propertiesByName_.Contains(&property) || (copy >= 0 && inherited_->IsListed(copy));
}

// -- changing -------------------------------------------------------------------------------------

int Template::AddProperty(Property* property, int position, bool* refused) {
    const Property* shown = FindOwn(property->GetKey(), &Template::PeekEntry);
    const bool containsItself = MayBeMet() && property->RefersTo(this, nullptr);
    const bool duplicate = shown && (shown->GetVersion() == GetVersion() || IsListed(*property));
    if (refused)
        *refused = containsItself || duplicate;
    if (containsItself || duplicate)
        return -1;
    MakeRoomBefore(*property, position);
    property->MakeRoomForHolder();
    Property* existing = FindOwn(property->GetKey(), &Template::GetEntry);
    if (property->GetVersion() == GetVersion())
        property->SetOwner(this);
    if (property->GetVersion() == GetVersion() || property->GetHolders().empty())
        property->SetTime(SchemaHistory::Next());
    if (existing && GetVersion() < existing->GetVersion()) {
        VersionedObject* older = existing->GetPrevious();
        existing->SetPrevious(property);
        property->SetPrevious(older == property ? nullptr : older);
    } else if (existing) {
        property->SetPrevious(existing);
    }
    const int result = ListOwn(*property);
    const int count = GetDeclaredCount();
    const int place = position < 0 || position > count ? count : position;
    const int inherited = inherited_ ? inherited_->GetDeclaredCount() : 0;
    properties_.InsertAt(static_cast<size_t>(place - inherited), property);
    if (!removedProperties_.TakeOut(property))
        property->AddHolder(this);
    SchemaRevision::Advance();
    return result;
}

/// A property of the same name that gives way is copied, since it is somebody's predecessor then.
void Template::MakeRoomBefore(const Property& property, int position) {
    const int found = inherited_ ? inherited_->FindListed(property.GetKey()) : -1;
    const bool isAmongInherited =
        inherited_ && position >= 0 && position < inherited_->GetDeclaredCount();
    if (isAmongInherited || (found >= 0 && propertiesByName_.Get(property.GetKey())))
        CopyAllInherited();
    else if (found >= 0)
        CopyInherited(found);
    propertiesByName_.MakeRoom();
    MakeRoom(properties_);
}

/// Lists a property by its name, in the place of one that has this name; the result of the list.
int Template::ListOwn(Property& property) {
    if (!inherited_)
        return propertiesByName_.Insert(&property);
    const int found = inherited_->FindListed(property.GetKey());
    const int before = inherited_->CountListedBefore(found < 0 ? ~found : found);
    const int own = propertiesByName_.Insert(&property);
    if (found >= 0)
        inherited_->Unlist(found);
    return own < 0 ? ~(before + ~own) : found < 0 ? before + own : ~(before + own);
}

int Template::RemoveProperty(Property* property) {
    MakeRoom(removedProperties_);
    if (inherited_)
        inherited_->MakeRoom();
    SchemaRevision::Advance();
    UnlistOwn(*property);
    if (property->GetKeeper() == this)
        property->SetKeeper(nullptr);
    const int declared = Undeclare(*property);
    if (declared < 0)
        return -1;
    if (property->GetOwner() == this)
        removedProperties_.push_back(property);
    else
        property->RemoveHolder(this);
    return declared;
}

/// Takes the property out of the lookup, or the first that has its name.
void Template::UnlistOwn(Property& property) {
    const int copy = inherited_ ? inherited_->FindCopy(property) : -1;
    const int found = inherited_ ? inherited_->FindListed(property.GetKey()) : -1;
    if (copy >= 0 && inherited_->IsListed(copy))
        inherited_->Unlist(copy);
    else if (found >= 0 && !propertiesByName_.Contains(&property))
        inherited_->Unlist(found);
    else
        propertiesByName_.Remove(&property);
}

/// Takes the property out of the declaration order; its place there, -1 without it.
int Template::Undeclare(Property& property) {
    const int copy = inherited_ ? inherited_->FindCopy(property) : -1;
    if (copy >= 0) {
        const int place = inherited_->CountDeclaredBefore(copy);
        inherited_->Undeclare(copy);
        return place;
    }
    const size_t declared = properties_.FindInFewSteps(&property);
    if (declared == PointerList<Property>::kNotFound)
        return -1;
    properties_.EraseAt(declared);
    return static_cast<int>(declared) + (inherited_ ? inherited_->GetDeclaredCount() : 0);
}

bool Template::UnlistName(Property& property) {
    const int copy = inherited_ ? inherited_->FindCopy(property) : -1;
    if (copy < 0 || !inherited_->IsListed(copy))
        return propertiesByName_.RemoveExactly(&property);
    inherited_->Unlist(copy);
    return true;
}

/// A copy that gets another name leaves those that are in the order of their prototypes' names.
void Template::MakeRoomForName() {
    if (inherited_)
        propertiesByName_.MakeRoom();
}

void Template::ForgetProperty(Property& property) {
    propertiesByName_.RemoveExactly(&property);
    for (auto* list : {&properties_, &retiredProperties_, &removedProperties_})
        list->TakeOut(&property);
    if (inherited_)
        inherited_->Forget(property);
    property.RemoveHolder(this);
    SchemaRevision::Advance();
}

// -- the end --------------------------------------------------------------------------------------

namespace {

/// By their addresses behind the names, so that one that is declared twice stands beside itself.
bool ComesBefore(const Property* a, const Property* b) {
    const int order = a->GetKey().compare(b->GetKey());
    return order == 0 ? std::less<>()(a, b) : order < 0;
}

} // namespace

/// Deletes the own properties from last to first in name order, older definitions included. They
/// stay listed until their turn: with the last user of a type that has ended others go, too, and
/// leave the lists then. Needs no memory, unless properties that are used are kept: for these there
/// must be room.
void Template::DropProperties(bool keepUsed) {
    propertiesByName_.Clear();
    properties_.Sort([this](const Property* a, const Property* b) {
        return Frees(*a) == Frees(*b) ? ComesBefore(a, b) : Frees(*b);
    });
    if (inherited_)
        inherited_->SortForTheEnd();
    while (Property* property = GetLastLeft()) {
        LetGoOfLast(*property);
        DropProperty(*property, keepUsed);
    }
    PointerList<Property> others;
    others.swap(properties_);
    for (Property* property : others)
        property->RemoveHolder(this);
    const std::unique_ptr<InheritedProperties> inherited = std::move(inherited_);
    SchemaRevision::Advance();
}

/// The last of the copies and of the properties that this template frees; those of others stand in
/// front of the latter.
Property* Template::GetLastLeft() const {
    Property* last = properties_.empty() ? nullptr : properties_.back();
    if (last && !Frees(*last))
        last = nullptr;
    Property* copy = inherited_ ? inherited_->GetLastCopy() : nullptr;
    return copy && (!last || ComesBefore(last, copy)) ? copy : last;
}

void Template::LetGoOfLast(Property& property) {
    if (inherited_ && inherited_->GetLastCopy() == &property) {
        inherited_->DropLastCopy();
        property.RemoveHolder(this);
    }
    while (!properties_.empty() && properties_.back() == &property) {
        properties_.pop_back();
        property.RemoveHolder(this);
    }
}

void Template::DropProperty(Property& property, bool keepUsed) {
    if (!Frees(property))
        return;
    if (keepUsed && property.IsInUse()) {
        retiredProperties_.push_back(&property);
        property.AddHolder(this); // in the place of the entry that it lost
    } else {
        Ending::End(&property);
    }
}

/// What was taken out belongs to others: it only learns that this template is gone.
void Template::ReleaseRemoved() {
    for (Property* property : removedProperties_) {
        property->RemoveHolder(this);
        property->ForgetOwner(*this);
    }
    removedProperties_.clear();
}

/// A property that goes leaves the list by itself.
void Template::DropRetired(bool keepUsed) {
    for (size_t at = retiredProperties_.size(); at > 0; --at) {
        Property* property = retiredProperties_[at - 1];
        if (!keepUsed || !property->IsInUse())
            Ending::End(property);
    }
}

void Template::DropValues() {
    if (inherited_)
        inherited_->DropValues();
    ForEachMade([](Property& property) {
        if (auto* attribute = ObjectCast<AttributeProperty>(&property))
            attribute->DropValues();
    });
}

bool Template::IsUsedByInstances() const {
    bool isUsed = instanceCount_ > 0;
    const auto ask = [&isUsed](const Property& property) { isUsed = isUsed || property.IsInUse(); };
    ForEachMade(ask);
    retiredProperties_.ForEach([&ask](const Property* property) { ask(*property); });
    return isUsed;
}

} // namespace Kor
