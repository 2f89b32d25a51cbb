#pragma once

#include <cstdint>
#include <string_view>

#include "core/NamedObject.h"
#include "core/SortedObjectList.h"

namespace Kor {

/// Anchor types by their keys, borrowed. Any named object can serve as one; it does not know the
/// lists that have it, so the lists remember that among themselves.
class AnchorTypeList {
public:
    AnchorTypeList() = default;
    ~AnchorTypeList();
    AnchorTypeList(const AnchorTypeList&) = delete;
    AnchorTypeList& operator=(const AnchorTypeList&) = delete;

    /// The index, or the complement of the index where an anchor type of that key was overwritten.
    int Add(NamedObject* type);

    /// Goes by key: the index, or the failed search's result.
    int Remove(const NamedObject* type);

    int GetCount() const { return types_.GetCount(); }
    NamedObject* GetAt(int index) const { return Sorted().GetAt(index); }
    NamedObject* Get(std::string_view key) const { return Sorted().Get(key); }

private:
    /// Called when the key of an object in any list has changed, and when the object ends.
    static void FollowKey(NamedObject* type);
    static void Forget(NamedObject* type);

    void Enter(NamedObject* type);
    void Leave(const NamedObject* type) const;

    /// The list in the order of the present keys: those of property instances change with the
    /// owners of their properties.
    SortedObjectList<NamedObject>& Sorted() const;

    mutable SortedObjectList<NamedObject> types_;
    mutable std::uint64_t sortedBy_ = 0; // the state of the full names that the order is for
};

} // namespace Kor
