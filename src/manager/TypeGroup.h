#pragma once

#include <unordered_set>
#include <utility>
#include <vector>

#include "types/Type.h"

namespace Kor {

/// Types that are to go together, except for those that are still needed.
class TypeGroup {
public:
    explicit TypeGroup(std::vector<Type*> types) : types_(std::move(types)) {}

    const std::vector<Type*>& GetAll() const { return types_; }
    bool IsKept(const Type* type) const { return kept_.count(type) > 0; }
    void Keep(const Type* type) { kept_.insert(type); }

    /// Keeps what is used from outside the group, and what in turn those that are kept need.
    /// References among types that go do not count.
    void KeepUsed();

    /// The types that are kept, or those that are not, in the order of the group.
    std::vector<Type*> Select(bool kept) const;

    /// Deletes types, which may refer to each other in any order and in circles.
    static void Delete(const std::vector<Type*>& types);

    /// Leaves types that nobody owns any more to their users: each goes with the last of them.
    static void LeaveToUsers(const std::vector<Type*>& types);

private:
    std::vector<Type*> types_;
    std::unordered_set<const Type*> kept_;
};

} // namespace Kor
