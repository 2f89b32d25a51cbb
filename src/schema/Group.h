#pragma once

#include "core/PointerList.h"
#include "schema/ViewItem.h"

namespace Kor {

/// An inner node of a view: an ordered list of items, which it owns.
class Group : public ViewItem {
public:
    static constexpr int kClassId = kGroupClass;
    KOR_OBJECT_MEMORY

    explicit Group(std::string_view name) : ViewItem(name) {}

    ~Group() override { Group::Leave(); }

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || ViewItem::ImplementsClass(id);
    }

    /// The copy has a tree of its own.
    std::unique_ptr<Object> Clone() const override;

    /// Inserts before a position; below 0 or past the end: at the end. An item may be added twice.
    /// A group that contains this one is not added.
    void AddViewItemAt(ViewItem* item, int position);

    /// Takes an item out, without deleting it.
    void RemoveViewItemAt(int index);
    int GetViewItemCount() const { return static_cast<int>(items_.size()); }
    ViewItem* GetViewItemAt(int index) const;

    /// Ends the items that are still listed, each once.
    void Leave() noexcept override;

    /// Called by an item that dies.
    void ForgetItem(ViewItem& item);

protected:
    /// Copies the group without its items.
    Group(const Group& source) : ViewItem(source) {}

    /// Gives this empty copy copies of all items below another group.
    void CopyItems(const Group& source);

private:
    bool IsInside(const ViewItem* item) const;

    /// An empty copy of an item: a group without its items, or all of any other.
    static ViewItem* CopyAlone(const ViewItem& item);

    PointerList<ViewItem> items_;
};

} // namespace Kor
