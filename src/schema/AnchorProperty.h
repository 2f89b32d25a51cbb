#pragma once

#include "schema/AnchorTypeList.h"
#include "schema/NodeProperty.h"

namespace Kor {

class PropertyInstance;

/// A node that marks an attachment point: a child anchor attaches to something, a parent anchor is
/// attached to. Anchor types are borrowed; any named object can serve as one.
class AnchorProperty : public NodeProperty {
public:
    static constexpr int kClassId = kAnchorPropertyClass;
    KOR_OBJECT_MEMORY

    AnchorProperty(std::string_view name, int version) : NodeProperty(name, version) {}

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || NodeProperty::ImplementsClass(id);
    }
    std::unique_ptr<Object> Clone() const override;
    std::unique_ptr<PropertyInstance> CreateInstance(Instance& instance) override;

    bool IsChild() const { return child_; }
    void SetChild(bool child) { child_ = child; }

    /// The index, or the complement of the index where an anchor type of that key was overwritten.
    int AddAnchorType(NamedObject* type) { return anchorTypes_.Add(type); }
    int RemoveAnchorType(NamedObject* type) { return anchorTypes_.Remove(type); }
    int GetAnchorTypeCount() const { return anchorTypes_.GetCount(); }
    NamedObject* GetAnchorTypeAt(int index) const { return anchorTypes_.GetAt(index); }
    NamedObject* GetAnchorType(std::string_view key) const { return anchorTypes_.Get(key); }

protected:
    /// The copy has the sense of its source, but no anchor types: each anchor is given its own.
    AnchorProperty(const AnchorProperty& source) : NodeProperty(source), child_(source.child_) {}

private:
    bool child_ = false;
    AnchorTypeList anchorTypes_;
};

} // namespace Kor
