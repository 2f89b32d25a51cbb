#include "schema/Property.h"

#include <algorithm>
#include <utility>

#include "core/Ending.h"
#include "core/Names.h"
#include "core/Undo.h"
#include "core/Kept.h"
#include "schema/SchemaRevision.h"
#include "schema/Template.h"
#include "schema/ViewProperty.h"

namespace Kor {

Property::Property(std::string_view name, int version)
    : NamedObject(name), VersionedObject(version), fullName_(GetNameView()), time_(0),
      staysForUsers_(false) {}

Property::Property(const Property& source)
    : NamedObject(source), VersionedObject(source), Lockable(source), fullName_(source.fullName_),
      time_(0), staysForUsers_(false) {
    Undo copied([this] {
        for (Command* command : SortedObjectList<Command>(std::move(commands_)))
            delete command; // nobody has seen it
    });
    commands_.Reserve(source.commands_.GetCount());
    for (const Command* command : source.commands_) {
        std::unique_ptr<Command> copy(static_cast<Command*>(command->Clone().release()));
        copy->AddLister(this);
        commands_.Append(copy.release());
    }
    copied.Forget();
}

void Property::Leave() noexcept {
    staysForUsers_ = false;
    while (!holders_.empty())
        holders_.back()->ForgetProperty(*this);
    owner_ = keeper_ = nullptr;
    for (Command* command : commands_)
        command->RemoveLister(this);
    commands_.Clear();
    while (!viewers_.IsEmpty())
        viewers_.GetLast()->SetProperty(nullptr);
    LeaveVersions();
    NamedObject::Leave();
}

void Property::StayForUsers() {
    staysForUsers_ = true;
}

void Property::EndUnused() {
    staysForUsers_ = false;
    Ending::EndUnused(this);
}

bool Property::SetName(const char* name) {
    if (!IsValidName(TextOf(name)))
        return false;
    CompactString stored(TextOf(name)); // first, since no list has the property while it is renamed
    std::vector<Template*> holders = holders_.ToVector();
    holders.erase(std::remove_if(holders.begin(), holders.end(),
                                 [this](Template* holder) { return !holder->UnlistName(*this); }),
                  holders.end());
    SwapName(stored);
    for (Template* holder : holders)
        holder->ListName(*this);
    return true;
}

int Property::AddCommand(Command* command) {
    commands_.MakeRoom();
    command->MakeRoomForLister();
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
    Template* former = std::exchange(owner_, owner);
    Undo owned([&] { owner_ = former; });
    UpdateFullName();
    owned.Forget();
    if (owner)
        staysForUsers_ = false; // it ends with that, and with its users no more
}

void Property::UpdateFullName() {
    static NeverDestroyed<std::string> kept; // so that composing costs no allocation
    static const EmptiedAtEnd<std::string> emptied(kept.Get());
    std::string& fullName = kept.Get();
    ComposeFullName(fullName);
    StoreFullName(fullName);
    fullName.clear();
}

void Property::ComposeFullName(std::string& fullName) const {
    fullName.clear();
    if (owner_)
        fullName.append(owner_->GetNameView()).append(1, '.');
    fullName += GetKey();
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
    holders_.TakeOut(holder); // from the last on: versions go from the latest to the first
}

} // namespace Kor
