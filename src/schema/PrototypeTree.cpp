#include "schema/PrototypeTree.h"

#include <algorithm>

#include "schema/Property.h"

namespace Kor {

void PrototypeTree::Slots::Add(const NodeRef& node) {
    if (!node)
        return;
    Slot slot;
    slot.node = node.Get();
    Add(slot);
}

PrototypeTree::PrototypeTree(const std::vector<Property*>& prototypes) {
    std::vector<Slot> slots(prototypes.size());
    for (size_t i = 0; i < slots.size(); ++i)
        slots[i].prototype = prototypes[i];
    std::vector<NodeRef> level;
    for (bool isLeaf = true; isLeaf || level.size() > 1; isLeaf = false) {
        std::vector<NodeRef> nodes;
        for (size_t i = 0; i < slots.size(); i += kFanOut) {
            const size_t size = std::min<size_t>(kFanOut, slots.size() - i);
            nodes.push_back(MakeNode(slots.data() + i, static_cast<int>(size), isLeaf));
        }
        level.swap(nodes);
        slots.resize(level.size());
        for (size_t i = 0; i < slots.size(); ++i)
            slots[i].node = level[i].Get();
    }
    if (!level.empty())
        root_ = level.front();
}

Property* PrototypeTree::GetAt(int index) const {
    const Node* node = root_.Get();
    while (!node->isLeaf) {
        const Slot* slot = node->slots.data();
        for (; index >= slot->node->count; ++slot)
            index -= slot->node->count;
        node = slot->node;
    }
    return node->slots[static_cast<size_t>(index)].prototype;
}

std::string_view PrototypeTree::GetLastName(const Node& node) {
    const Node* last = &node;
    while (!last->isLeaf)
        last = last->slots[static_cast<size_t>(last->size - 1)].node;
    return last->slots[static_cast<size_t>(last->size - 1)].prototype->GetNameView();
}

int PrototypeTree::CountBefore(std::string_view name) const {
    int before = 0;
    for (const Node* node = root_.Get(); node;) {
        const Slot* end = node->slots.data() + node->size;
        const Slot* found = std::partition_point(node->slots.data(), end, [&](const Slot& slot) {
            return (node->isLeaf ? slot.prototype->GetNameView() : GetLastName(*slot.node)) < name;
        });
        if (node->isLeaf)
            return before + static_cast<int>(found - node->slots.data());
        for (const Slot* slot = node->slots.data(); slot != found; ++slot)
            before += slot->node->count;
        node = found == end ? nullptr : found->node;
    }
    return before;
}

std::vector<int> PrototypeTree::FindOfVersion(int version) const {
    std::vector<int> found;
    if (root_)
        CollectOfVersion(*root_.Get(), 0, version, found);
    return found;
}

/// Mostly there are none: a version inherits what lower ones introduced.
void PrototypeTree::CollectOfVersion(const Node& node, int first, int version,
                                     std::vector<int>& found) {
    if (node.highestVersion < version)
        return;
    for (int i = 0; i < node.size; ++i) {
        const Slot slot = node.slots[static_cast<size_t>(i)];
        if (node.isLeaf) {
            if (slot.prototype->GetVersion() == version)
                found.push_back(first + i);
        } else {
            CollectOfVersion(*slot.node, first, version, found);
            first += slot.node->count;
        }
    }
}

void PrototypeTree::LetGo(Node* node) noexcept {
    if (!node || --node->uses > 0)
        return;
    for (int i = 0; i < node->size; ++i) {
        const Slot slot = node->slots[static_cast<size_t>(i)];
        if (!node->isLeaf)
            LetGo(slot.node);
        else if (slot.prototype)
            slot.prototype->ReleasePrototype();
    }
    delete node;
}

PrototypeTree::NodeRef PrototypeTree::MakeNode(const Slot* slots, int size, bool isLeaf) {
    auto* node = new Node;
    NodeRef made(node);
    node->isLeaf = isLeaf;
    node->size = size;
    for (int i = 0; i < size; ++i) {
        const Slot slot = node->slots[static_cast<size_t>(i)] = slots[i];
        node->count += isLeaf ? 1 : slot.node->count;
        const int version = isLeaf ? slot.prototype->GetVersion() : slot.node->highestVersion;
        node->highestVersion = std::max(node->highestVersion, version);
        if (isLeaf)
            slot.prototype->AddUse();
        else
            ++slot.node->uses;
    }
    return made;
}

PrototypeTree::Nodes PrototypeTree::MakeNodes(const Slots& slots, bool isLeaf) {
    if (slots.size == 0)
        return {};
    if (slots.size <= kFanOut)
        return {MakeNode(slots.all.data(), slots.size, isLeaf), NodeRef()};
    const int half = slots.size / 2;
    return {MakeNode(slots.all.data(), half, isLeaf),
            MakeNode(slots.all.data() + half, slots.size - half, isLeaf)};
}

PrototypeTree::Nodes PrototypeTree::EditLeaf(const Node& leaf, int index, Kind kind,
                                             Property* prototype) {
    Slot entered;
    entered.prototype = prototype;
    Slots slots;
    for (int i = 0; i <= leaf.size; ++i) {
        if (i == index && kind != kErasure)
            slots.Add(entered);
        if (i < leaf.size && (i != index || kind == kInsertion))
            slots.Add(leaf.slots[static_cast<size_t>(i)]);
    }
    return MakeNodes(slots, true);
}

PrototypeTree::Nodes PrototypeTree::EditNode(const Node& node, int index, Kind kind,
                                             Property* prototype) {
    if (node.isLeaf)
        return EditLeaf(node, index, kind, prototype);
    Nodes edited; // holds what is new until its node does
    Slots slots;
    bool isDone = false;
    for (int i = 0; i < node.size; ++i) {
        const Slot slot = node.slots[static_cast<size_t>(i)];
        const bool isLast = i + 1 == node.size; // takes what comes at the very end
        if (isDone || (index >= slot.node->count && !isLast)) {
            index -= slot.node->count;
            slots.Add(slot);
            continue;
        }
        isDone = true;
        edited = EditNode(*slot.node, index, kind, prototype);
        slots.Add(edited.first);
        slots.Add(edited.second);
    }
    return MakeNodes(slots, false);
}

void PrototypeTree::Edit(int index, Kind kind, Property* prototype) {
    Nodes edited;
    if (root_) {
        edited = EditNode(*root_.Get(), index, kind, prototype);
    } else {
        Slot only;
        only.prototype = prototype;
        edited.first = MakeNode(&only, 1, true);
    }
    if (edited.second) {
        Slots slots;
        slots.Add(edited.first);
        slots.Add(edited.second);
        edited.first = MakeNodes(slots, false).first;
    }
    while (edited.first && !edited.first->isLeaf && edited.first->size == 1)
        edited.first = NodeRef(edited.first->slots[0].node);
    root_ = edited.first;
}

bool PrototypeTree::IsUnshared(const Property& prototype) {
    return prototype.GetUseCount() == 1;
}

} // namespace Kor
