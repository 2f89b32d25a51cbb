#include "manager/TypeGroup.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>

#include "core/Ending.h"
#include "types/Enumeration.h"

namespace Kor {

namespace {

/// An item of an enumeration stays or goes with that.
const Type* OwnerOf(const Type* type) {
    const auto* item = ObjectCast<EnumerationItem>(type);
    return item && item->GetEnumeration() ? item->GetEnumeration() : type;
}

std::vector<Type*> UsedBy(const Type* type) {
    std::vector<Type*> used;
    type->CollectUsedTypes(used);
    return used;
}

using UseCounts = std::unordered_map<const Type*, int>;

/// Whether the type, or an item of it, has more uses than those known.
bool IsUsedBeyond(const Type& type, const UseCounts& known) {
    const auto exceeds = [&known](const Type& used) {
        const auto found = known.find(&used);
        return used.GetUseCount() > (found == known.end() ? 0 : found->second);
    };
    bool isUsed = exceeds(type);
    if (const auto* enumeration = ObjectCast<Enumeration>(&type)) {
        for (int i = 0; !isUsed && i < enumeration->GetItemCount(); ++i)
            isUsed = exceeds(*enumeration->GetItemAt(i));
    }
    return isUsed;
}

} // namespace

void TypeGroup::KeepUsed() {
    UseCounts inner;
    for (const Type* type : types_) {
        for (const Type* used : UsedBy(type))
            ++inner[used];
    }
    const std::unordered_set<const Type*> group(types_.begin(), types_.end());
    std::vector<const Type*> pending;
    for (const Type* type : types_) {
        if (IsKept(type) || IsUsedBeyond(*type, inner))
            pending.push_back(type);
    }
    while (!pending.empty()) {
        const Type* type = pending.back();
        pending.pop_back();
        Keep(type);
        for (const Type* used : UsedBy(type)) {
            const Type* owner = OwnerOf(used);
            if (group.count(owner) > 0 && !IsKept(owner))
                pending.push_back(owner);
        }
    }
}

std::vector<Type*> TypeGroup::Select(bool kept) const {
    std::vector<Type*> selected;
    std::copy_if(types_.begin(), types_.end(), std::back_inserter(selected),
                 [this, kept](const Type* type) { return IsKept(type) == kept; });
    return selected;
}

void TypeGroup::LeaveToUsers(const std::vector<Type*>& types) {
    for (Type* type : types)
        type->AddUse(); // none goes before all are done
    for (Type* type : types) {
        type->SetOwner(Owner::kHost);
        Ending::End(type);
    }
    for (Type* type : types)
        type->ReleaseUse();
}

/// Items go first, since their values are freed through other types, and those that are types by
/// themselves lose them; then all links.
void TypeGroup::Delete(const std::vector<Type*>& types) {
    for (Type* type : types) {
        if (auto* enumeration = ObjectCast<Enumeration>(type))
            enumeration->DeleteItems();
        else if (auto* item = ObjectCast<EnumerationItem>(type))
            item->DropValue();
    }
    for (Type* type : types)
        type->SetBaseType(nullptr);
    for (Type* type : types)
        Ending::End(type);
}

} // namespace Kor
