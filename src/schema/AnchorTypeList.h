#pragma once

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
    NamedObject* GetAt(int index) const { return types_.GetAt(index); }
    NamedObject* Get(std::string_view key) const { return types_.Get(key); }

    /// Moves an object to the place of its new name in all lists that have it. Only the address is
    /// used where none has: the object may be gone.
    static void FollowName(NamedObject* type);

    /// Takes an object that dies out of all lists. Only the address is used where none has it.
    static void Forget(NamedObject* type);

private:
    void Enter(NamedObject* type);
    void Leave(const NamedObject* type) const;

    SortedObjectList<NamedObject> types_;
};

} // namespace Kor
