#include "schema/Property.h"

#include <algorithm>

#include "core/Names.h"
#include "schema/SchemaRevision.h"
#include "schema/Template.h"
#include "schema/ViewProperty.h"

namespace Kor {

Property::Property(std::string_view name, int version)
    : NamedObject(name), VersionedObject(version), fullName_(GetNameView()) {}

Property::Property(const Property& source)
    : NamedObject(source), VersionedObject(source), Lockable(source), fullName_(source.fullName_) {
    commands_.Reserve(source.commands_.GetCount());
    for (const Command* command : source.commands_)
        commands_.Append(static_cast<Command*>(command->Clone().release()));
}

Property::~Property() {
    while (!holders_.empty())
        holders_.back()->ForgetProperty(*this);
    while (!viewers_.empty())
        viewers_.back()->SetProperty(nullptr);
}

bool Property::SetName(const char* name) {
    if (!IsValidName(TextOf(name)))
        return false;
    std::vector<Template*> holders = holders_;
    holders.erase(std::remove_if(holders.begin(), holders.end(),
                                 [this](Template* holder) { return !holder->UnlistName(*this); }),
                  holders.end());
    StoreName(TextOf(name));
    for (Template* holder : holders)
        holder->ListName(*this);
    return true;
}

void Property::SetOwner(Template* owner) {
    owner_ = owner;
    UpdateFullName();
}

void Property::UpdateFullName() {
    std::string fullName;
    if (owner_)
        fullName.append(owner_->GetNameView()).append(1, '.');
    fullName += GetKey();
    StoreFullName(std::move(fullName));
}

void Property::StoreFullName(std::string fullName) {
    fullName_.swap(fullName);
    SchemaRevision::Advance();
}

void Property::RemoveViewer(ViewProperty* viewer) {
    const auto found = std::find(viewers_.begin(), viewers_.end(), viewer);
    if (found != viewers_.end())
        viewers_.erase(found);
}

void Property::RemoveHolder(Template* holder) {
    const auto found = std::find(holders_.begin(), holders_.end(), holder);
    if (found != holders_.end())
        holders_.erase(found);
}

} // namespace Kor
