#pragma once

#include "core/Lockable.h"
#include "core/MakeRoom.h"
#include "core/NamedObject.h"
#include "core/PointerList.h"

namespace Kor {

class Group;

/// A node of the tree by which an editor arranges a template's properties.
class ViewItem : public NamedObject, public Lockable {
public:
    static constexpr int kClassId = kViewItemClass;
    KOR_OBJECT_MEMORY

    explicit ViewItem(std::string_view name) : NamedObject(name) {}

    ~ViewItem() override { ViewItem::Leave(); }

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || NamedObject::ImplementsClass(id);
    }
    std::unique_ptr<Object> Clone() const override {
        return std::unique_ptr<Object>(new ViewItem(*this));
    }

    /// Takes itself out of the groups that list it.
    void Leave() noexcept override;

    /// The groups that list the item, once for each entry.
    const PointerList<Group>& GetGroups() const { return groups_; }
    void MakeRoomForGroup() { MakeRoom(groups_); }
    void AddGroup(Group* group) { groups_.push_back(group); }
    void RemoveGroup(Group* group);

    /// Makes a group the last of those that list the item.
    void PutLast(Group* group);

protected:
    /// A lock is that of one item: the copy's lock state is 0. No group lists it.
    ViewItem(const ViewItem& source) : NamedObject(source), Lockable() {}

private:
    PointerList<Group> groups_;
};

} // namespace Kor
