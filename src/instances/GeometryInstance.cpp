#include "instances/GeometryInstance.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "instances/Instance.h"
#include "xml/XMLWriter.h"

namespace Kor {

GeometryInstance::GeometryInstance(Instance& instance, GeometryProperty& property)
    : PropertyInstance(instance, property) {
    nodes_.reserve(static_cast<size_t>(property.GetAlternateCount()));
    for (int i = 0; i < property.GetAlternateCount(); ++i)
        nodes_.push_back(new NodeInstance(instance, *property.GetAlternateAt(i)));
}

GeometryInstance::~GeometryInstance() {
    for (NodeInstance* node : nodes_) {
        if (node)
            node->LeaveInstance(); // which does not list it
        delete node;
    }
}

NodeInstance* GeometryInstance::GetNodeInstanceAt(int index) const {
    return index >= 0 && index < GetNodeInstanceCount() ? nodes_[static_cast<size_t>(index)]
                                                        : nullptr;
}

void GeometryInstance::SetNodeInstanceAt(int index, NodeInstance* node) {
    if (index < 0 || index >= GetNodeInstanceCount() || GetNodeInstanceAt(index) == node)
        return;
    // A node instance has one owner: neither another slot nor an instance's list keeps it.
    std::replace(nodes_.begin(), nodes_.end(), node, static_cast<NodeInstance*>(nullptr));
    if (node && node->GetInstance())
        node->GetInstance()->ForgetPropertyInstance(*node);
    if (node && GetInstance())
        node->JoinInstance(*GetInstance());
    NodeInstance*& slot = nodes_[static_cast<size_t>(index)];
    if (slot)
        slot->LeaveInstance();
    slot = node;
}

void GeometryInstance::WriteToXML(XMLWriter& writer) const {
    writer.StartElement("geometry");
    writer.WriteAttribute("property", GetKey());
    for (const NodeInstance* node : nodes_) {
        const auto* alternate = node ? ObjectCast<GeometryAlternate>(node->GetProperty()) : nullptr;
        if (!alternate || !alternate->GetLOD())
            continue;
        writer.StartElement("alternate");
        writer.WriteAttribute("lod", alternate->GetLOD()->GetNameView());
        writer.WriteAttribute("binding", std::string_view(node->GetBinding()));
        writer.EndElement();
    }
    writer.EndElement();
}

int GeometryInstance::GetBinarySize() const {
    int sum = 0;
    for (const NodeInstance* node : nodes_) {
        const int size = node ? node->GetBinarySize() : 0;
        if (size < 1)
            return 0;
        sum += size;
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
    int remaining = bufferSize - kCountSize;
    for (const NodeInstance* node : nodes_) {
        // The room is said to grow with what was written, but never past what there is.
        const int room = std::min(remaining, bufferSize - kCountSize);
        if (node)
            remaining += node->WriteToBinary(static_cast<char*>(buffer) + kCountSize, room);
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
