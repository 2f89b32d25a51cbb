#include "schema/Group.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <unordered_set>
#include <utility>

#include "core/Ending.h"
#include "core/MakeRoom.h"
#include "schema/View.h"

namespace Kor {

// Groups nest as deeply as a file says, so trees are deleted and copied without recursion.

/// From the innermost last item on. Nothing is allocated: without memory there would be no way to
/// report it.
void Group::Leave() noexcept {
    Group* group = this;
    while (group != this || !items_.empty()) {
        if (group->items_.empty()) { // becomes the last item that is left of the group around it
            group = group->GetGroups().back();
            continue;
        }
        ViewItem* last = group->items_.back();
        auto* inner = ObjectCast<Group>(last);
        if (inner && !inner->items_.empty()) {
            inner->PutLast(group); // the way back, since other groups may list it too
            group = inner;
        } else {
            Ending::End(last); // leaves all groups
        }
    }
    ViewItem::Leave();
}

ViewItem* Group::CopyAlone(const ViewItem& item) {
    if (const auto* view = ObjectCast<View>(&item))
        return new View(*view);
    if (const auto* group = ObjectCast<Group>(&item))
        return new Group(*group);
    return static_cast<ViewItem*>(item.Clone().release());
}

void Group::CopyItems(const Group& source) {
    std::vector<std::pair<const Group*, Group*>> pending{{&source, this}};
    while (!pending.empty()) {
        const auto [original, copy] = pending.back();
        pending.pop_back();
        for (const ViewItem* item : original->items_) {
            std::unique_ptr<ViewItem> made(CopyAlone(*item));
            if (auto* inner = ObjectCast<Group>(made.get()))
                pending.emplace_back(static_cast<const Group*>(item), inner);
            MakeRoom(copy->items_);
            made->AddGroup(copy);
            copy->items_.push_back(made.release());
        }
    }
}

std::unique_ptr<Object> Group::Clone() const {
    std::unique_ptr<Group> copy(new Group(*this));
    copy->CopyItems(*this);
    return copy;
}

/// Whether this group stands somewhere inside the item.
bool Group::IsInside(const ViewItem* item) const {
    if (item == this)
        return true;
    // Files add empty groups to ever deeper ones: only what has items is looked for above.
    const auto* outermost = ObjectCast<Group>(item);
    if (!outermost || outermost->items_.empty())
        return false;
    std::unordered_set<const ViewItem*> met{this};
    std::vector<const ViewItem*> pending{this};
    while (!pending.empty()) {
        const ViewItem* current = pending.back();
        pending.pop_back();
        if (current == item)
            return true;
        for (const Group* outer : current->GetGroups()) {
            if (met.insert(outer).second)
                pending.push_back(outer);
        }
    }
    return false;
}

void Group::AddViewItemAt(ViewItem* item, int position) {
    if (!item || IsInside(item))
        return;
    MakeRoom(items_);
    item->MakeRoomForGroup();
    const int count = GetViewItemCount();
    const int place = position < 0 || position > count ? count : position;
    items_.InsertAt(static_cast<size_t>(place), item);
    item->AddGroup(this);
}

void Group::RemoveViewItemAt(int index) {
    ViewItem* item = GetViewItemAt(index);
    if (!item)
        return;
    items_.EraseAt(static_cast<size_t>(index));
    item->RemoveGroup(this);
}

ViewItem* Group::GetViewItemAt(int index) const {
    return index >= 0 && index < GetViewItemCount() ? items_[static_cast<size_t>(index)] : nullptr;
}

void Group::ForgetItem(ViewItem& item) {
    items_.TakeOut(&item); // from the last on: a group that goes deletes its last item first
    item.RemoveGroup(this);
}

} // namespace Kor
