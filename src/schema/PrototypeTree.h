#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <string_view>
#include <utility>
#include <vector>

#include "core/BlockPool.h"

namespace Kor {

class Property;

/// Prototypes in the order of their names, of which no two are the same. A tree never changes, so
/// that a copy of it shares all: one with an entry more or less has a few nodes of its own, however
/// many entries there are. So thousands of versions of a template, each with a property more than
/// the one before, take little more than one.
///
/// Each entry is a use of its prototype, which ends with the last tree that has it.
class PrototypeTree {
    struct Node;

public:
    PrototypeTree() = default;

    /// Of prototypes that stand in the order of their names.
    explicit PrototypeTree(const std::vector<Property*>& prototypes);

    int GetCount() const { return root_ ? root_->count : 0; }
    Property* GetAt(int index) const;

    /// How many entries come before a name.
    int CountBefore(std::string_view name) const;

    /// The indices of the entries of a version, given in the order of the entries.
    std::vector<int> FindOfVersion(int version) const;

    // The following throw std::bad_alloc, and then have changed nothing.
    void Insert(int index, Property* prototype) { Edit(index, kInsertion, prototype); }
    void Replace(int index, Property* prototype) { Edit(index, kReplacement, prototype); }
    void Erase(int index) { Edit(index, kErasure, nullptr); }

    /// Calls a function with the index and the prototype of each entry, but leaves out what the
    /// same walk (a number above 0) has met in any tree. What has an index for which `mayChange` is
    /// true is met each time: another tree may have something else in its place.
    template <class MayChange, class Body>
    void Visit(std::uint64_t walk, const MayChange& mayChange, const Body& body) const {
        if (root_)
            VisitNode(*root_.Get(), 0, walk, mayChange, body);
    }

    template <class Body> void ForEach(const Body& body) const {
        Visit(
            0, [](int, int) { return true; }, body);
    }

    /// Calls a function with each prototype that no other tree has, and lets go of those for which
    /// it returns true, which are the caller's then. Must be the last that is done with the tree.
    template <class Body> void TakeUnshared(const Body& body) {
        if (root_)
            TakeFromNode(*root_.Get(), 0, body);
    }

private:
    static constexpr int kFanOut = 16;

    /// Counts the users of a node; lets go of it at its end.
    class NodeRef {
    public:
        NodeRef() = default;
        explicit NodeRef(Node* node) : node_(node) {
            if (node_)
                ++node_->uses;
        }
        NodeRef(const NodeRef& other) : NodeRef(other.node_) {}
        NodeRef(NodeRef&& other) noexcept : node_(std::exchange(other.node_, nullptr)) {}
        NodeRef& operator=(NodeRef other) noexcept {
            std::swap(node_, other.node_);
            return *this;
        }
        ~NodeRef() { LetGo(node_); }

        Node* Get() const { return node_; }
        Node* operator->() const { return node_; }
        explicit operator bool() const { return node_ != nullptr; }

    private:
        Node* node_ = nullptr;
    };

    union Slot {
        Node* node;
        Property* prototype;
    };

    /// A leaf has prototypes, another node has nodes below it, none of which is empty.
    struct Node : Pooled {
        unsigned uses = 0;
        int count = 0; ///< Of the prototypes here and below.
        int size = 0;  ///< Of the slots in use.
        int highestVersion = std::numeric_limits<int>::min();
        bool isLeaf = true;
        std::uint64_t lastWalk = 0;
        std::array<Slot, kFanOut> slots{};
    };

    /// What becomes of a node: one, two when there is too much for one, or none.
    using Nodes = std::pair<NodeRef, NodeRef>;

    /// Room for the slots of a node and one more.
    struct Slots {
        std::array<Slot, kFanOut + 1> all{};
        int size = 0;

        void Add(Slot slot) { all[static_cast<size_t>(size++)] = slot; }
        void Add(const NodeRef& node);
    };

    enum Kind { kInsertion, kReplacement, kErasure };

    static void LetGo(Node* node) noexcept;
    static void CollectOfVersion(const Node& node, int first, int version, std::vector<int>& found);
    static NodeRef MakeNode(const Slot* slots, int size, bool isLeaf);
    static Nodes MakeNodes(const Slots& slots, bool isLeaf);
    static std::string_view GetLastName(const Node& node);
    static Nodes EditLeaf(const Node& leaf, int index, Kind kind, Property* prototype);
    static Nodes EditNode(const Node& node, int index, Kind kind, Property* prototype);
    void Edit(int index, Kind kind, Property* prototype);

    // The height of a tree is the logarithm of how many entries came to it.
    template <class MayChange, class Body>
    static void VisitNode(Node& node, int first, std::uint64_t walk, const MayChange& mayChange,
                          const Body& body) {
        if (!mayChange(first, first + node.count) && std::exchange(node.lastWalk, walk) == walk)
            return;
        for (int i = 0; i < node.size; ++i) {
            const Slot slot = node.slots[static_cast<size_t>(i)];
            if (node.isLeaf) {
                body(first + i, *slot.prototype);
            } else {
                VisitNode(*slot.node, first, walk, mayChange, body);
                first += slot.node->count;
            }
        }
    }

    template <class Body> static void TakeFromNode(Node& node, int first, const Body& body) {
        if (node.uses > 1)
            return;
        for (int i = 0; i < node.size; ++i) {
            Slot& slot = node.slots[static_cast<size_t>(i)];
            if (!node.isLeaf) {
                const int count = slot.node->count;
                TakeFromNode(*slot.node, first, body);
                first += count;
            } else if (IsUnshared(*slot.prototype) && body(first + i, *slot.prototype)) {
                slot.prototype = nullptr;
            }
        }
    }

    static bool IsUnshared(const Property& prototype);

    NodeRef root_;
};

} // namespace Kor
