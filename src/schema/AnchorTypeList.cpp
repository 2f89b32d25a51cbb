#include "schema/AnchorTypeList.h"

#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "core/Undo.h"
#include "schema/SchemaRevision.h"
#include "core/Kept.h"

namespace Kor {

namespace {

using Lists = std::unordered_set<AnchorTypeList*>;

bool everUsed = false;

/// The lists that have each anchor type. Until there is one, nobody asks about objects that die.
std::unordered_map<const NamedObject*, Lists>& Users() {
    using All = std::unordered_map<const NamedObject*, Lists>;
    static NeverDestroyed<All> users;
    static const EmptiedAtEnd<All> emptied(users.Get());
    everUsed = true;
    return users.Get();
}

/// The lists that have an object, or null. Asked about every object that dies, also when there is
/// no memory left to begin with.
Lists* FindLists(const NamedObject* type) {
    if (!everUsed || Users().empty())
        return nullptr;
    const auto found = Users().find(type);
    return found == Users().end() ? nullptr : &found->second;
}

} // namespace

AnchorTypeList::~AnchorTypeList() {
    for (const NamedObject* type : types_)
        Leave(type);
}

void AnchorTypeList::Enter(NamedObject* type) {
    type->Watch(&AnchorTypeList::Forget, &AnchorTypeList::FollowKey);
    Lists& lists = Users()[type];
    Undo entered([&] {
        if (lists.empty())
            Users().erase(type);
    });
    lists.insert(this);
    entered.Commit();
}

void AnchorTypeList::Leave(const NamedObject* type) const {
    Lists* lists = FindLists(type);
    if (!lists)
        return;
    lists->erase(const_cast<AnchorTypeList*>(this));
    if (lists->empty())
        Users().erase(type);
}

SortedObjectList<NamedObject>& AnchorTypeList::Sorted() const {
    if (sortedBy_ != SchemaRevision::GetKeys()) {
        types_.Resort();
        sortedBy_ = SchemaRevision::GetKeys();
    }
    return types_;
}

int AnchorTypeList::Add(NamedObject* type) {
    Sorted().MakeRoom();
    Enter(type);
    NamedObject* replaced = nullptr;
    const int result = types_.Insert(type, &replaced);
    if (replaced && replaced != type)
        Leave(replaced);
    return result;
}

int AnchorTypeList::Remove(const NamedObject* type) {
    const int index = Sorted().FindEntry(type);
    if (index < 0)
        return index;
    const NamedObject* removed = types_.GetAt(index);
    types_.RemoveExactly(removed);
    Leave(removed);
    return index;
}

void AnchorTypeList::FollowKey(NamedObject* type) {
    const Lists* lists = FindLists(type);
    if (!lists)
        return;
    for (AnchorTypeList* list : *lists) {
        if (list->types_.RemoveExactly(type))
            list->types_.Place(type);
    }
}

void AnchorTypeList::Forget(NamedObject* type) {
    Lists* known = FindLists(type);
    if (!known)
        return;
    const Lists lists = std::move(*known);
    Users().erase(type);
    for (AnchorTypeList* list : lists)
        list->types_.RemoveExactly(type);
}

} // namespace Kor
