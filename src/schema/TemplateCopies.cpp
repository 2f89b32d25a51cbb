// The part of a template that copies the properties of the one that it was made from, when they are
// asked for.

#include <memory>
#include <utility>
#include <vector>

#include "schema/Template.h"

#include "schema/AttributeProperty.h"

namespace Kor {

/// Copies are made by the source's version: where that is not this template's, nobody owns them.
void Template::CopyProperties(const Template& source) {
    auto& from = const_cast<Template&>(source); // shows the same afterwards
    if (source.GetPropertyCount() == 0)
        return;
    from.CopyWhatIsNotShared();
    inherited_ =
        InheritedProperties::Make(from, source.inherited_.get(), source.propertiesByName_, *this);
    if (inherited_)
        return;
    const auto& properties = source.GetOwnProperties();
    propertiesByName_.Reserve(propertiesByName_.GetCount() + properties.GetCount());
    properties_.reserve(properties_.size() + static_cast<size_t>(properties.GetCount()));
    for (const Property* property : properties) {
        UnseenProperty made(static_cast<Property*>(property->Clone().release()));
        made->SetKeeper(this);
        if (made->GetVersion() == source.GetVersion())
            made->SetOwner(this);
        made->AddHolder(this);
        Property* copy = made.release();
        propertiesByName_.Insert(copy);
        properties_.push_back(copy);
    }
}

/// Copies of what becomes a copy here are made from that: they get a type of their own where the
/// type was left to its users, and the owner's name where this version has the property's number.
void Template::CopyWhatIsNotShared() {
    for (int i = 0; inherited_ && (i = inherited_->FindLeftType(i)) < inherited_->GetCount();)
        CopyInherited(i);
    for (const int i : inherited_ ? inherited_->FindOfVersion(GetVersion()) : std::vector<int>()) {
        if (inherited_)
            CopyInherited(i);
    }
}

Property* Template::GetEntry(int index) const {
    return const_cast<Template*>(this)->CopyInherited(index);
}

UnseenProperty Template::CopyPrototype(const Property& prototype) const {
    return UnseenProperty(static_cast<Property*>(prototype.Clone().release()));
}

/// A copy stays the one that it is: who asks again gets the same.
Property* Template::CopyInherited(int index) {
    if (Property* copy = inherited_->GetCopy(index))
        return copy;
    if (inherited_->HasManyTouched())
        return CopyAllInherited()[static_cast<size_t>(index)];
    inherited_->MakeRoom();
    const Property& prototype = inherited_->Peek(index);
    Property* copy = CopyPrototype(prototype).release();
    inherited_->SetCopy(index, copy);
    AdoptCopy(*copy, prototype);
    return copy;
}

/// Goes on with plain lists of all. A prototype that no other version has becomes the copy.
std::vector<Property*> Template::CopyAllInherited() {
    std::vector<Property*> copies(static_cast<size_t>(inherited_->GetCount()));
    inherited_->TakeUnshared([&copies](int index, Property& prototype) {
        copies[static_cast<size_t>(index)] = &prototype;
        return false;
    });
    std::vector<UnseenProperty> made(copies.size());
    for (int i = 0; i < inherited_->GetCount(); ++i) {
        const auto at = static_cast<size_t>(i);
        if (!copies[at])
            copies[at] = inherited_->GetCopy(i);
        if (!copies[at] && (inherited_->IsListed(i) || inherited_->IsDeclared(i))) {
            made[at] = CopyPrototype(inherited_->Peek(i));
            copies[at] = made[at].get();
        }
    }
    auto named = MergeNames(copies);
    auto declared = MergeDeclared(copies);
    for (int i = 0; i < inherited_->GetCount(); ++i) { // nothing from here on needs memory
        if (Property* copy = made[static_cast<size_t>(i)].release())
            AdoptCopy(*copy, inherited_->Peek(i));
    }
    inherited_->TakeUnshared([this](int, Property& prototype) {
        AdoptCopy(prototype, prototype);
        return true;
    });
    propertiesByName_ = std::move(named);
    properties_.swap(declared);
    inherited_.reset();
    return copies;
}

SortedObjectList<Property> Template::MergeNames(const std::vector<Property*>& copies) const {
    SortedObjectList<Property> merged;
    merged.Reserve(GetPropertyCount());
    int own = 0;
    for (int i = 0; i < inherited_->GetCount(); ++i) {
        Property* copy = copies[static_cast<size_t>(i)];
        if (!inherited_->IsListed(i))
            continue;
        for (Property* next = propertiesByName_.GetAt(own); next && next->GetKey() < copy->GetKey();
             next = propertiesByName_.GetAt(++own))
            merged.Append(next);
        merged.Append(copy);
    }
    while (Property* next = propertiesByName_.GetAt(own++))
        merged.Append(next);
    return merged;
}

PointerList<Property> Template::MergeDeclared(const std::vector<Property*>& copies) const {
    PointerList<Property> merged;
    merged.reserve(static_cast<size_t>(GetDeclaredCount()));
    for (int i = 0; i < inherited_->GetCount(); ++i) {
        if (inherited_->IsDeclared(i))
            merged.push_back(copies[static_cast<size_t>(i)]);
    }
    properties_.ForEach([&merged](Property* property) { merged.push_back(property); });
    return merged;
}

/// Makes a new copy what it would be had it been made with this version; needs no memory.
void Template::AdoptCopy(Property& copy, const Property& prototype) {
    LinkToSource(copy, prototype);
    if (&copy == &prototype)
        copy.BecomeCopy();
    copy.SetKeeper(this);
    if (copy.GetVersion() == inherited_->GetSourceVersion())
        copy.AdoptOwner(this);
    copy.AddHolder(this); // the first one, which has its place in the copy
    auto* attribute = inherited_->HasValues() ? nullptr : ObjectCast<AttributeProperty>(&copy);
    if (attribute)
        attribute->DropValues();
}

/// The copy succeeds the property that the template's predecessor has, and copies of it that were
/// made before succeed it. A prototype stands for a copy that was not asked for yet.
void Template::LinkToSource(Property& copy, const Property& prototype) {
    const auto* source = dynamic_cast<const Template*>(GetPrevious());
    if (source && source == prototype.GetSource()) {
        copy.SetPrevious(prototype.GetPrevious());
    } else {
        Property* shown =
            source ? source->FindOwn(prototype.GetNameView(), &Template::PeekEntry) : nullptr;
        const bool isSame = shown && shown != &copy && shown->GetVersion() == copy.GetVersion();
        copy.SetPrevious(isSame ? shown : nullptr);
    }
    if (!prototype.HasSuccessors())
        return;
    ForEachSuccessor([&](VersionedObject& successor) {
        const auto* version = dynamic_cast<const Template*>(&successor);
        const int found = version && version->inherited_
                              ? version->inherited_->FindEntry(prototype.GetNameView())
                              : -1;
        Property* made = found >= 0 ? version->inherited_->GetCopy(found) : nullptr;
        if (made && made->GetPrevious() == &prototype)
            made->SetPrevious(&copy);
    });
}

} // namespace Kor
