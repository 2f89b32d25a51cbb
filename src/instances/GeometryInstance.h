#pragma once

#include <memory>
#include <unordered_set>
#include <vector>

#include "instances/NodeInstance.h"
#include "schema/GeometryProperty.h"

namespace Kor {

/// The value side of a geometry: one node instance for each of its alternates, in their order.
class GeometryInstance : public PropertyInstance {
public:
    static constexpr int kClassId = kGeometryInstanceClass;
    KOR_OBJECT_MEMORY

    GeometryInstance(Instance& instance, GeometryProperty& property);
    ~GeometryInstance() override;

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || PropertyInstance::ImplementsClass(id);
    }

    const GeometryProperty& GetGeometryProperty() const {
        return static_cast<const GeometryProperty&>(*GetProperty());
    }

    int GetNodeInstanceCount() const { return static_cast<int>(nodes_.size()); }
    NodeInstance* GetNodeInstanceAt(int index) const;

    /// Takes over a node instance; the one it replaces goes back to the caller. One whose value
    /// the geometry stands inside of changes nothing.
    void SetNodeInstanceAt(int index, NodeInstance* node);

    /// Called by a node instance that dies or moves: its place is empty then.
    void ForgetNodeInstance(NodeInstance& node);

    /// The sum of the node instances' sizes; 0 when one of them has none.
    int GetBinarySize() const override;

    /// Each node instance is asked with the largest result so far.
    int GetPadding(int offset) const override;
    bool IsValid() const override;

    /// Writes the number of node instances and, all at the same place behind it, their values; only
    /// the number counts in the result, since the nodes have no places of their own in the form.
    int WriteToBinary(void* buffer, int bufferSize) const override;
    void CopyFrom(const PropertyInstance& source) override;
    void Leave() noexcept override;

    /// Ends the node instances of alternates that ended, so that what is left goes by the places of
    /// the other alternates.
    void DropNodesOf(const std::unordered_set<const Property*>& alternates);
    bool HasNodesOf(const std::unordered_set<const Property*>& alternates) const;

private:
    static void DeleteNode(NodeInstance* node);

    void DeleteNodes();
    bool StandsInsideOf(const NodeInstance* node) const;

    std::vector<NodeInstance*> nodes_; // owned
};

} // namespace Kor
