#pragma once

#include "schema/AttributeProperty.h"

namespace Kor {

/// An attribute whose instances stand for nodes of the host's scene, with a description of the
/// ancestor that such a node is expected to have. The host interprets it.
class NodeProperty : public AttributeProperty {
public:
    static constexpr int kClassId = kNodePropertyClass;
    KOR_OBJECT_MEMORY

    NodeProperty(std::string_view name, int version) : AttributeProperty(name, version) {}

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || AttributeProperty::ImplementsClass(id);
    }
    std::unique_ptr<Object> Clone() const override;
    std::unique_ptr<PropertyInstance> CreateInstance(Instance& instance) override;

    const char* GetAncestor() const { return ancestor_.CStr(); }
    void SetAncestor(std::string_view ancestor) { ancestor_.Assign(ancestor); }

    /// How many levels above the node the ancestor is expected; -1 for no expectation.
    int GetAncestorDistance() const { return ancestorDistance_; }
    void SetAncestorDistance(int distance) { ancestorDistance_ = distance; }

protected:
    NodeProperty(const NodeProperty& source) = default;

private:
    CompactString ancestor_;
    int ancestorDistance_ = -1;
};

} // namespace Kor
