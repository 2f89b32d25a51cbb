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
    : NamedObject(name), VersionedObject(version), fullName_(GetNameView()), useCount_(0),
      isPrototype_(false), time_(0), staysForUsers_(false) {}

Property::Property(const Property& source)
    : NamedObject(source), VersionedObject(source), Lockable(source), fullName_(source.fullName_),
      useCount_(0), isPrototype_(false), time_(0), staysForUsers_(false) {
    Undo copied([this] { Property::DropUnseenParts(); });
    commands_.Reserve(source.commands_.GetCount());
    for (Command* command : source.commands_) {
        std::unique_ptr<Command> copy(static_cast<Command*>(command->Clone().release()));
        copy->JoinSchemaOf(*command);
        copy->AddLister(this);
        commands_.Append(copy.release());
    }
    copied.Commit();
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

void Property::BecomePrototype(Template* source) {
    isPrototype_ = true;
    staysForUsers_ = true;
    keeper_ = source;
}

void Property::BecomeCopy() {
    isPrototype_ = false;
    staysForUsers_ = false;
    useCount_ = 0;
    keeper_ = nullptr;
}

void Property::ReleasePrototype() {
    if (useCount_ == 1)
        DropUnseenParts();
    ReleaseUse();
}

void Property::DropUnseenParts() {
    for (Command* command : SortedObjectList<Command>(std::move(commands_)))
        delete command;
}

bool Property::SetName(const char* name) {
    if (!IsValidName(TextOf(name)))
        return false;
    CompactString stored(TextOf(name)); // first, since no list has the property while it is renamed
    std::vector<Template*> holders = holders_.ToVector();
    for (Template* holder : holders)
        holder->MakeRoomForName();
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
    command->AddLister(this); // first: it may have replaced itself
    if (replaced)
        replaced->RemoveLister(this);
    return result;
}

int Property::RemoveCommand(Command* command) {
    const int index = commands_.FindEntry(command);
    if (index < 0)
        return index;
    Command* removed = commands_.GetAt(index);
    commands_.RemoveExactly(removed);
    removed->RemoveLister(this);
    return index;
}

void Property::SetOwner(Template* owner) {
    Template* former = std::exchange(owner_, owner);
    Undo owned([&] { owner_ = former; });
    UpdateFullName();
    owned.Commit();
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
