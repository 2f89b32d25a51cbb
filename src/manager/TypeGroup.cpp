#include "manager/TypeGroup.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>

#include "types/Enumeration.h"

namespace Kor {

namespace {

std::vector<Type*> UsedBy(const Type* type) {
    std::vector<Type*> used;
    type->CollectUsedTypes(used);
    return used;
}

} // namespace

void TypeGroup::KeepUsed() {
    std::unordered_map<const Type*, int> inner;
    for (const Type* type : types_) {
        for (const Type* used : UsedBy(type))
            ++inner[used];
    }
    const std::unordered_set<const Type*> group(types_.begin(), types_.end());
    std::vector<const Type*> pending;
    for (const Type* type : types_) {
        if (IsKept(type) || type->GetUseCount() > inner[type])
            pending.push_back(type);
    }
    while (!pending.empty()) {
        const Type* type = pending.back();
        pending.pop_back();
        Keep(type);
        for (const Type* used : UsedBy(type)) {
            if (group.count(used) > 0 && !IsKept(used))
                pending.push_back(used);
        }
    }
}

std::vector<Type*> TypeGroup::Select(bool kept) const {
    std::vector<Type*> selected;
    std::copy_if(types_.begin(), types_.end(), std::back_inserter(selected),
                 [this, kept](const Type* type) { return IsKept(type) == kept; });
    return selected;
}

/// Items go first, since their values are freed through other types; then all links.
void TypeGroup::Delete(const std::vector<Type*>& types) {
    for (Type* type : types) {
        if (auto* enumeration = ObjectCast<Enumeration>(type))
            enumeration->DeleteItems();
    }
    for (Type* type : types)
        type->SetBaseType(nullptr);
    for (Type* type : types)
        delete type;
}

} // namespace Kor
