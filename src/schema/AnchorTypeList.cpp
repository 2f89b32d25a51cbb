#include "schema/AnchorTypeList.h"

#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace Kor {

namespace {

using Lists = std::unordered_set<AnchorTypeList*>;

/// The lists that have each anchor type.
std::unordered_map<const NamedObject*, Lists>& Users() {
    static auto& users = *new std::unordered_map<const NamedObject*, Lists>(); // outlives all lists
    return users;
}

} // namespace

AnchorTypeList::~AnchorTypeList() {
    for (const NamedObject* type : types_)
        Leave(type);
}

void AnchorTypeList::Leave(const NamedObject* type) const {
    const auto found = Users().find(type);
    if (found == Users().end())
        return;
    found->second.erase(const_cast<AnchorTypeList*>(this));
    if (found->second.empty())
        Users().erase(found);
}

int AnchorTypeList::Add(NamedObject* type) {
    NamedObject* replaced = nullptr;
    const int result = types_.Insert(type, &replaced);
    if (replaced)
        Leave(replaced);
    Users()[type].insert(this);
    return result;
}

int AnchorTypeList::Remove(const NamedObject* type) {
    const int exact = types_.IndexOf(type);
    const int index = exact >= 0 ? exact : types_.Find(type->GetKey());
    if (index < 0)
        return index;
    const NamedObject* removed = types_.GetAt(index);
    types_.RemoveExactly(removed);
    Leave(removed);
    return index;
}

void AnchorTypeList::FollowName(NamedObject* type) {
    const auto found = Users().find(type);
    if (found == Users().end())
        return;
    for (AnchorTypeList* list : found->second) {
        if (list->types_.RemoveExactly(type))
            list->types_.Place(type);
    }
}

void AnchorTypeList::Forget(NamedObject* type) {
    const auto found = Users().find(type);
    if (found == Users().end())
        return;
    const Lists lists = std::move(found->second);
    Users().erase(found);
    for (AnchorTypeList* list : lists)
        list->types_.RemoveExactly(type);
}

} // namespace Kor
