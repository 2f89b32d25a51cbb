#include "core/PointerTree.h"

#include <cstdint>
#include <new>
#include <utility>

#include "core/KeyHash.h"

namespace Kor {

PointerTree::PointerTree(void* const* entries, size_t count, size_t capacity) : nodes_(1) {
    Reserve(std::max(count, capacity));
    for (size_t i = 0; i < count; ++i)
        nodes_[i + 1].entry = entries[i];
    BuildOfLine(count);
}

void PointerTree::Reserve(size_t capacity) {
    const size_t before = GetCapacity();
    if (capacity <= before)
        return;
    size_t slots = 64;
    while (slots < 2 * capacity)
        slots *= 2;
    Table table(std::max(slots, table_.size()));
    nodes_.resize(capacity + 1);
    for (const Link first : table_) {
        if (first != 0)
            table[SlotOf(table, nodes_[first].entry)] = first;
    }
    table_.swap(table);
    for (size_t i = capacity; i > before; --i) {
        nodes_[i].sameNext = free_;
        free_ = static_cast<Link>(i);
    }
}

// -- the table ------------------------------------------------------------------------------------

size_t PointerTree::Hash(const void* entry) {
    return static_cast<size_t>(HashNumber(reinterpret_cast<std::uintptr_t>(entry)));
}

/// The slot of the entry, or the free one where it belongs.
size_t PointerTree::SlotOf(const Table& table, const void* entry) const {
    const size_t mask = table.size() - 1;
    size_t slot = Hash(entry) & mask;
    while (table[slot] != 0 && nodes_[table[slot]].entry != entry)
        slot = (slot + 1) & mask;
    return slot;
}

void PointerTree::Enter(Link node) {
    Link& first = table_[SlotOf(table_, nodes_[node].entry)];
    nodes_[node].sameBefore = 0;
    nodes_[node].sameNext = first;
    if (first != 0)
        nodes_[first].sameBefore = node;
    first = node;
}

void PointerTree::Leave(Link node) {
    const auto [before, next] = std::pair(nodes_[node].sameBefore, nodes_[node].sameNext);
    if (next != 0)
        nodes_[next].sameBefore = before;
    if (before != 0)
        nodes_[before].sameNext = next;
    else if (const size_t slot = SlotOf(table_, nodes_[node].entry); next != 0)
        table_[slot] = next;
    else
        EraseSlot(slot);
}

/// Moves those behind up, so that no search ends too early at the slot that becomes free.
void PointerTree::EraseSlot(size_t slot) {
    const size_t mask = table_.size() - 1;
    for (size_t at = (slot + 1) & mask; table_[at] != 0; at = (at + 1) & mask) {
        const size_t wanted = Hash(nodes_[table_[at]].entry) & mask;
        if (((at - wanted) & mask) < ((at - slot) & mask))
            continue;
        table_[slot] = table_[at];
        slot = at;
    }
    table_[slot] = 0;
}

size_t PointerTree::Find(const void* entry) const {
    size_t first = kNotFound;
    for (Link node = table_[SlotOf(table_, entry)]; node != 0; node = nodes_[node].sameNext)
        first = std::min(first, IndexOf(node));
    return first;
}

bool PointerTree::TakeOut(const void* entry) {
    const Link node = table_[SlotOf(table_, entry)];
    if (node != 0)
        EraseNode(node);
    return node != 0;
}

// -- the order ------------------------------------------------------------------------------------

PointerTree::Link PointerTree::NodeAt(size_t index) const {
    Link at = root_;
    for (;;) {
        const size_t below = nodes_[nodes_[at].left].size;
        if (index == below)
            return at;
        if (index < below) {
            at = nodes_[at].left;
        } else {
            index -= below + 1;
            at = nodes_[at].right;
        }
    }
}

size_t PointerTree::IndexOf(Link node) const {
    size_t index = nodes_[nodes_[node].left].size;
    for (Link at = node; nodes_[at].parent != 0; at = nodes_[at].parent) {
        const Node& parent = nodes_[nodes_[at].parent];
        if (parent.right == at)
            index += nodes_[parent.left].size + 1;
    }
    return index;
}

void PointerTree::Replace(size_t index, void* entry) {
    const Link node = NodeAt(index);
    Leave(node);
    nodes_[node].entry = entry;
    Enter(node);
}

void PointerTree::InsertAt(size_t index, void* entry) {
    const Link node = free_;
    free_ = nodes_[node].sameNext;
    nodes_[node] = {};
    nodes_[node].entry = entry;
    nodes_[node].size = 1;
    Enter(node);
    if (index == GetCount() || root_ == 0) { // also the only one
        Link last = root_;
        while (nodes_[last].right != 0)
            last = nodes_[last].right;
        nodes_[node].parent = last;
        (last == 0 ? root_ : nodes_[last].right) = node;
    } else {
        Link above = NodeAt(index);
        Link* place = &nodes_[above].left;
        while (*place != 0) { // behind the last one of those before
            above = *place;
            place = &nodes_[above].right;
        }
        *place = node;
        nodes_[node].parent = above;
    }
    BalanceUpFrom(nodes_[node].parent);
}

/// A node that has both sides gives its place to the next one, which has no left side.
void PointerTree::EraseNode(Link node) {
    Leave(node);
    if (nodes_[node].left != 0 && nodes_[node].right != 0) {
        Link next = nodes_[node].right;
        while (nodes_[next].left != 0)
            next = nodes_[next].left;
        Leave(next);
        std::swap(nodes_[node].entry, nodes_[next].entry);
        Enter(node);
        node = next;
    }
    const Link parent = nodes_[node].parent;
    const Link child = nodes_[node].left != 0 ? nodes_[node].left : nodes_[node].right;
    ReplaceChild(parent, node, child);
    nodes_[node] = {};
    nodes_[node].sameNext = free_;
    free_ = node;
    BalanceUpFrom(parent);
}

void PointerTree::ReplaceChild(Link parent, Link child, Link other) {
    if (parent == 0)
        root_ = other;
    else
        (nodes_[parent].left == child ? nodes_[parent].left : nodes_[parent].right) = other;
    if (other != 0)
        nodes_[other].parent = parent;
}

// -- balance: neither side of a node has more than three times as many as the other ---------------

void PointerTree::Resize(Link node) {
    nodes_[node].size = nodes_[nodes_[node].left].size + nodes_[nodes_[node].right].size + 1;
}

void PointerTree::RotateLeft(Link node) {
    const Link upper = nodes_[node].right;
    const Link middle = nodes_[upper].left;
    ReplaceChild(nodes_[node].parent, node, upper);
    nodes_[upper].left = node;
    nodes_[node].parent = upper;
    nodes_[node].right = middle;
    if (middle != 0)
        nodes_[middle].parent = node;
    Resize(node);
    Resize(upper);
}

void PointerTree::RotateRight(Link node) {
    const Link upper = nodes_[node].left;
    const Link middle = nodes_[upper].right;
    ReplaceChild(nodes_[node].parent, node, upper);
    nodes_[upper].right = node;
    nodes_[node].parent = upper;
    nodes_[node].left = middle;
    if (middle != 0)
        nodes_[middle].parent = node;
    Resize(node);
    Resize(upper);
}

void PointerTree::Balance(Link node) {
    const Link left = nodes_[node].left;
    const Link right = nodes_[node].right;
    const unsigned leftSize = nodes_[left].size;
    const unsigned rightSize = nodes_[right].size;
    if (leftSize + rightSize < 2)
        return;
    if (rightSize > 3 * leftSize) {
        if (nodes_[nodes_[right].left].size >= 2 * nodes_[nodes_[right].right].size)
            RotateRight(right);
        RotateLeft(node);
    } else if (leftSize > 3 * rightSize) {
        if (nodes_[nodes_[left].right].size >= 2 * nodes_[nodes_[left].left].size)
            RotateLeft(left);
        RotateRight(node);
    }
}

void PointerTree::BalanceUpFrom(Link node) {
    while (node != 0) {
        const Link parent = nodes_[node].parent;
        Resize(node);
        Balance(node);
        node = parent;
    }
}

// -- all at once ----------------------------------------------------------------------------------

/// Moves the nodes so that they stand in their order, from the second one on, and gives their
/// count. The links mean nothing then.
size_t PointerTree::LineUp() {
    const size_t count = GetCount();
    unsigned rank = 0;
    for (void* const* at = GetFirst(); at != GetEnd();) {
        const auto node = static_cast<size_t>(reinterpret_cast<const Node*>(at) - nodes_.data());
        at = GetNext(at);
        nodes_[node].sameBefore = ++rank;
    }
    for (Link free = free_; free != 0; free = nodes_[free].sameNext)
        nodes_[free].sameBefore = 0;
    for (size_t i = 1; i < nodes_.size(); ++i) {
        while (nodes_[i].sameBefore != 0 && nodes_[i].sameBefore != i)
            std::swap(nodes_[i], nodes_[nodes_[i].sameBefore]);
    }
    return count;
}

/// Makes the tree of the entries that stand in line from the second node on.
void PointerTree::BuildOfLine(size_t count) {
    struct Range {
        size_t first;
        size_t end;
        Link parent;
    };
    Range ranges[2 * 32]; // one for each halving, and those beside them
    size_t open = 0;
    root_ = static_cast<Link>(count == 0 ? 0 : (count + 2) / 2);
    ranges[open++] = {1, count + 1, 0};
    while (open > 0) {
        const Range range = ranges[--open];
        if (range.first == range.end)
            continue;
        const auto node = static_cast<Link>((range.first + range.end) / 2);
        const auto middleOf = [](size_t first, size_t end) {
            return static_cast<Link>(first == end ? 0 : (first + end) / 2);
        };
        nodes_[node].left = middleOf(range.first, node);
        nodes_[node].right = middleOf(node + 1, range.end);
        nodes_[node].parent = range.parent;
        nodes_[node].size = static_cast<unsigned>(range.end - range.first);
        ranges[open++] = {range.first, node, node};
        ranges[open++] = {node + size_t{1}, range.end, node};
    }
    std::fill(table_.begin(), table_.end(), 0);
    for (size_t i = count; i > 0; --i)
        Enter(static_cast<Link>(i));
    FreeFrom(count + 1);
}

/// All nodes from that one on are free, and no others.
void PointerTree::FreeFrom(size_t first) {
    free_ = 0;
    for (size_t i = nodes_.size(); i-- > first;) {
        nodes_[i] = {};
        nodes_[i].sameNext = free_;
        free_ = static_cast<Link>(i);
    }
}

void PointerTree::Clear() {
    BuildOfLine(0);
}

void PointerTree::CopyTo(void** entries) const {
    for (void* const* at = GetFirst(); at != GetEnd(); at = GetNext(at))
        *entries++ = *at;
}

void* const* PointerTree::GetFirst() const {
    Link first = root_;
    while (nodes_[first].left != 0)
        first = nodes_[first].left;
    return &nodes_[first].entry;
}

void* const* PointerTree::GetNext(void* const* place) const {
    auto at = static_cast<Link>(reinterpret_cast<const Node*>(place) - nodes_.data());
    if (nodes_[at].right != 0) {
        at = nodes_[at].right;
        while (nodes_[at].left != 0)
            at = nodes_[at].left;
        return &nodes_[at].entry;
    }
    while (nodes_[at].parent != 0 && nodes_[nodes_[at].parent].right == at)
        at = nodes_[at].parent;
    return &nodes_[nodes_[at].parent].entry;
}

} // namespace Kor
