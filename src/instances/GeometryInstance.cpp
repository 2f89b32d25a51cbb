#include "instances/GeometryInstance.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <unordered_set>

#include "core/Ending.h"
#include "core/Undo.h"
#include "instances/Instance.h"

namespace Kor {

GeometryInstance::GeometryInstance(Instance& instance, GeometryProperty& property)
    : PropertyInstance(instance, property) {
    Undo made([this] { DeleteNodes(); });
    nodes_.reserve(static_cast<size_t>(property.GetAlternateCount()));
    for (int i = 0; i < property.GetAlternateCount(); ++i) {
        nodes_.push_back(new NodeInstance(instance, *property.GetAlternateAt(i)));
        nodes_.back()->SetGeometry(this);
    }
    made.Commit();
}

GeometryInstance::~GeometryInstance() {
    DeleteNodes();
}

void GeometryInstance::Leave() noexcept {
    DeleteNodes();
    PropertyInstance::Leave();
}

void GeometryInstance::DeleteNodes() {
    for (NodeInstance* node : nodes_)
        DeleteNode(node);
    nodes_.clear();
}

void GeometryInstance::DeleteNode(NodeInstance* node) {
    if (!node)
        return;
    node->SetGeometry(nullptr);
    node->LeaveInstance(); // which does not list it
    Ending::End(node);
}

bool GeometryInstance::HasNodesOf(const std::unordered_set<const Property*>& alternates) const {
    return std::any_of(nodes_.begin(), nodes_.end(), [&alternates](const NodeInstance* node) {
        return node && alternates.count(node->GetProperty()) > 0;
    });
}

void GeometryInstance::DropNodesOf(const std::unordered_set<const Property*>& alternates) {
    const auto goes = [&alternates](NodeInstance* node) {
        const bool isOfThem = node && alternates.count(node->GetProperty()) > 0;
        if (isOfThem)
            DeleteNode(node);
        return isOfThem;
    };
    nodes_.erase(std::remove_if(nodes_.begin(), nodes_.end(), goes), nodes_.end());
}

NodeInstance* GeometryInstance::GetNodeInstanceAt(int index) const {
    return index >= 0 && index < GetNodeInstanceCount() ? nodes_[static_cast<size_t>(index)]
                                                        : nullptr;
}

bool GeometryInstance::StandsInsideOf(const NodeInstance* node) const {
    const PropertyInstance* around = this;
    while (around && around != node)
        around = around->GetInstance() ? around->GetInstance()->GetHolder() : nullptr;
    return around && around == node;
}

void GeometryInstance::SetNodeInstanceAt(int index, NodeInstance* node) {
    if (index < 0 || index >= GetNodeInstanceCount() || GetNodeInstanceAt(index) == node)
        return;
    if (StandsInsideOf(node))
        return; // what is around the geometry would have no end
    NodeInstance* replaced = GetNodeInstanceAt(index);
    if (replaced) {
        replaced->SetGeometry(nullptr);
        replaced->LeaveInstance();
    }
    // A node instance has one owner: neither another geometry nor an instance's list keeps it.
    if (node && node->GetGeometry())
        node->GetGeometry()->ForgetNodeInstance(*node);
    if (node && node->GetInstance())
        node->GetInstance()->ForgetPropertyInstance(*node);
    nodes_[static_cast<size_t>(index)] = node;
    if (!node)
        return;
    node->SetGeometry(this);
    node->LeaveInstance();
    if (GetInstance())
        node->JoinInstance(*GetInstance());
}

void GeometryInstance::ForgetNodeInstance(NodeInstance& node) {
    std::replace(nodes_.begin(), nodes_.end(), &node, static_cast<NodeInstance*>(nullptr));
    node.SetGeometry(nullptr);
}

int GeometryInstance::GetBinarySize() const {
    int sum = 0;
    for (const NodeInstance* node : nodes_) {
        const int size = node ? node->GetBinarySize() : 0;
        if (size < 1)
            return 0;
        sum += std::min(size, std::numeric_limits<int>::max() - sum);
    }
    return sum;
}

int GeometryInstance::GetPadding(int offset) const {
    int largest = 0;
    int asked = offset;
    for (const NodeInstance* node : nodes_) {
        largest = std::max(largest, node ? node->GetPadding(asked) : 0);
        asked = largest;
    }
    return largest;
}

bool GeometryInstance::IsValid() const {
    return std::all_of(nodes_.begin(), nodes_.end(),
                       [](const NodeInstance* node) { return node && node->IsValid(); });
}

int GeometryInstance::WriteToBinary(void* buffer, int bufferSize) const {
    constexpr int kCountSize = static_cast<int>(sizeof(std::int32_t));
    if (!buffer || bufferSize < kCountSize)
        return 0;
    const std::int32_t count = GetNodeInstanceCount();
    std::memcpy(buffer, &count, sizeof count);
    // All nodes write to one place, so the room never grows past what there is.
    for (const NodeInstance* node : nodes_) {
        if (node)
            node->WriteToBinary(static_cast<char*>(buffer) + kCountSize, bufferSize - kCountSize);
    }
    return kCountSize;
}

void GeometryInstance::CopyFrom(const PropertyInstance& source) {
    PropertyInstance::CopyFrom(source);
    const auto& other = static_cast<const GeometryInstance&>(source);
    const int count = std::min(GetNodeInstanceCount(), other.GetNodeInstanceCount());
    for (int i = 0; i < count; ++i) {
        if (nodes_[static_cast<size_t>(i)] && other.GetNodeInstanceAt(i))
            nodes_[static_cast<size_t>(i)]->CopyFrom(*other.GetNodeInstanceAt(i));
    }
}

} // namespace Kor
