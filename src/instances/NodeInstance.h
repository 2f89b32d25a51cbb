#pragma once

#include "instances/AttributeInstance.h"
#include "schema/NodeProperty.h"

namespace Kor {

class GeometryInstance;

/// Stands for a node of the host's scene; valid once it is bound to one.
class NodeInstance : public AttributeInstance {
public:
    static constexpr int kClassId = kNodeInstanceClass;
    KOR_OBJECT_MEMORY

    NodeInstance(Instance& instance, NodeProperty& property)
        : AttributeInstance(instance, property) {}

    ~NodeInstance() override { LeaveGeometry(); }

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || AttributeInstance::ImplementsClass(id);
    }

    /// Without the binding: a file may bring one, but only those of anchors are saved.
    bool IsValid() const override { return *GetBinding() != '\0'; }

    /// The geometry that owns this node instance; null when an instance or the host does.
    GeometryInstance* GetGeometry() const { return geometry_; }
    void SetGeometry(GeometryInstance* geometry) { geometry_ = geometry; }

    /// Takes itself out of the geometry that it stands in.
    void Leave() noexcept override;

private:
    void LeaveGeometry() noexcept;

    GeometryInstance* geometry_ = nullptr;
};

} // namespace Kor
