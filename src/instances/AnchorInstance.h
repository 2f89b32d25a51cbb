#pragma once

#include "instances/NodeInstance.h"
#include "schema/AnchorProperty.h"

namespace Kor {

/// An attachment point in the host's scene, with the name of the anchor it is attached to.
class AnchorInstance : public NodeInstance {
public:
    static constexpr int kClassId = kAnchorInstanceClass;
    KOR_OBJECT_MEMORY

    AnchorInstance(Instance& instance, AnchorProperty& property)
        : NodeInstance(instance, property) {}

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || NodeInstance::ImplementsClass(id);
    }
    void CopyFrom(const PropertyInstance& source) override;

    /// Stored without event or check.
    const char* GetAttachedAnchor() const { return attachedAnchor_.CStr(); }
    void SetAttachedAnchor(std::string_view anchor) { attachedAnchor_.Assign(anchor); }

private:
    CompactString attachedAnchor_;
};

} // namespace Kor
