#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace Kor {

/// The form that a PointerList takes once it is long and changes far from its end: entering, taking
/// out, and finding an entry by its index or an index by its entry take a few steps each, however
/// many entries there are. It is a tree whose nodes know how many stand below them, together with a
/// table of the nodes of each entry. Only making room needs memory.
class PointerTree {
public:
    static constexpr size_t kNotFound = static_cast<size_t>(-1);

    /// With the entries of an array, and room for so many in all. Throws std::bad_alloc.
    PointerTree(void* const* entries, size_t count, size_t capacity);

    size_t GetCount() const { return nodes_[root_].size; }
    size_t GetCapacity() const { return nodes_.size() - 1; }

    /// Room for so many entries in all. Throws std::bad_alloc, and then has changed nothing.
    void Reserve(size_t capacity);

    /// The index must be in range.
    void* GetAt(size_t index) const { return nodes_[NodeAt(index)].entry; }
    void Replace(size_t index, void* entry);

    /// There must be room.
    void InsertAt(size_t index, void* entry);
    void EraseAt(size_t index) { EraseNode(NodeAt(index)); }

    /// The first index of an entry, or kNotFound.
    size_t Find(const void* entry) const;

    /// Takes out one of the places that an entry has; false when it has none.
    bool TakeOut(const void* entry);

    /// Keeps the room.
    void Clear();

    /// Copies all entries in order to an array.
    void CopyTo(void** entries) const;

    /// How many entries comply; all of those must come before the others.
    template <class Complies> size_t CountWhile(const Complies& complies) const {
        size_t count = 0;
        for (Link at = root_; at != 0;) {
            const Node& node = nodes_[at];
            const bool isBelow = complies(node.entry);
            if (isBelow)
                count += nodes_[node.left].size + 1;
            at = isBelow ? node.right : node.left;
        }
        return count;
    }

    /// Puts the entries in order, those that are equal in any; needs no memory.
    template <class Before> void Sort(const Before& before) {
        const auto end = nodes_.begin() + 1 + static_cast<std::ptrdiff_t>(LineUp());
        std::sort(nodes_.begin() + 1, end, ByEntry(before));
        BuildOfLine(static_cast<size_t>(end - nodes_.begin()) - 1);
    }

    /// The same with those that are equal in the order that they had; quicker with memory.
    template <class Before> void SortStably(const Before& before) {
        const auto end = nodes_.begin() + 1 + static_cast<std::ptrdiff_t>(LineUp());
        std::stable_sort(nodes_.begin() + 1, end, ByEntry(before));
        BuildOfLine(static_cast<size_t>(end - nodes_.begin()) - 1);
    }

    // -- walks: an entry's address is its place -------------------------------------------------

    void* const* GetFirst() const;
    void* const* GetEnd() const { return &nodes_[0].entry; }
    void* const* GetNext(void* const* place) const;

private:
    using Link = unsigned; ///< the index of a node; 0 for none

    struct Node {
        void* entry = nullptr;
        Link left = 0;
        Link right = 0;
        Link parent = 0;
        unsigned size = 0; ///< of this node and all below it
        Link sameBefore = 0;
        Link sameNext = 0; ///< the next node of the same entry, or of the free ones
    };

    using Table = std::vector<Link>;

    template <class Before> static auto ByEntry(const Before& before) {
        return [&before](const Node& a, const Node& b) { return before(a.entry, b.entry); };
    }

    static size_t Hash(const void* entry);
    size_t SlotOf(const Table& table, const void* entry) const;
    void Enter(Link node);
    void Leave(Link node);
    void EraseSlot(size_t slot);
    void FreeFrom(size_t first);

    Link NodeAt(size_t index) const;
    size_t IndexOf(Link node) const;
    void EraseNode(Link node);
    void ReplaceChild(Link parent, Link child, Link other);
    void Resize(Link node);
    void RotateLeft(Link node);
    void RotateRight(Link node);
    void Balance(Link node);
    void BalanceUpFrom(Link node);
    size_t LineUp();
    void BuildOfLine(size_t count);

    std::vector<Node> nodes_; // the first one stands for none
    Table table_;             // the first node of each entry, in open addressing; a power of two
    Link root_ = 0;
    Link free_ = 0;
};

} // namespace Kor
