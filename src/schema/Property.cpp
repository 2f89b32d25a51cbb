#include "schema/Property.h"

#include <algorithm>

#include "core/Names.h"
#include "core/TakeOut.h"
#include "schema/SchemaRevision.h"
#include "schema/Template.h"
#include "schema/ViewProperty.h"

namespace Kor {

Property::Property(std::string_view name, int version)
    : NamedObject(name), VersionedObject(version), fullName_(GetNameView()) {}

Property::Property(const Property& source)
    : NamedObject(source), VersionedObject(source), Lockable(source), fullName_(source.fullName_) {
    commands_.Reserve(source.commands_.GetCount());
    for (const Command* command : source.commands_) {
        commands_.Append(static_cast<Command*>(command->Clone().release()));
        commands_.GetAt(commands_.GetCount() - 1)->AddLister(this);
    }
}

Property::~Property() {
    while (!holders_.empty())
        holders_.back()->ForgetProperty(*this);
    for (Command* command : commands_)
        command->RemoveLister(this);
    while (!viewers_.IsEmpty())
        viewers_.GetLast()->SetProperty(nullptr);
}

bool Property::SetName(const char* name) {
    if (!IsValidName(TextOf(name)))
        return false;
    std::vector<Template*> holders = holders_.ToVector();
    holders.erase(std::remove_if(holders.begin(), holders.end(),
                                 [this](Template* holder) { return !holder->UnlistName(*this); }),
                  holders.end());
    StoreName(TextOf(name));
    for (Template* holder : holders)
        holder->ListName(*this);
    return true;
}

int Property::AddCommand(Command* command) {
    Command* replaced = nullptr;
    const int result = commands_.Insert(command, &replaced);
    if (replaced)
        replaced->RemoveLister(this);
    command->AddLister(this);
    return result;
}

int Property::RemoveCommand(Command* command) {
    const int index = commands_.FindEntry(command);
    if (index < 0)
        return index;
    Command* removed = commands_.GetAt(index);
    removed->RemoveLister(this);
    commands_.RemoveExactly(removed);
    return index;
}

void Property::SetOwner(Template* owner) {
    owner_ = owner;
    UpdateFullName();
}

void Property::UpdateFullName() {
    if (!owner_)
        return StoreFullName(GetKey());
    static std::string& fullName = *new std::string; // kept, so that composing costs no allocation
    fullName.assign(owner_->GetNameView()).append(1, '.').append(GetKey());
    StoreFullName(fullName);
}

void Property::StoreFullName(std::string_view fullName) {
    if (fullName != fullName_.View()) { // a copy mostly keeps that of its source
        fullName_.Assign(fullName);
        if (IsInUse())
            SchemaRevision::AdvanceKeys();
    }
    SchemaRevision::Advance();
}

void Property::AddViewer(ViewProperty* viewer) {
    viewers_.Add(viewer);
}

void Property::RemoveViewer(ViewProperty* viewer) {
    viewers_.Remove(viewer);
}

void Property::RemoveHolder(Template* holder) {
    TakeOutLast(holders_, holder); // versions go from the latest to the first
}

} // namespace Kor
