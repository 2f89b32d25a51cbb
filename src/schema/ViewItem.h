#pragma once

#include "core/Lockable.h"
#include "core/NamedObject.h"

namespace Kor {

/// A node of the tree by which an editor arranges a template's properties.
class ViewItem : public NamedObject, public Lockable {
public:
    static constexpr int kClassId = kViewItemClass;

    explicit ViewItem(std::string_view name) : NamedObject(name) {}

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || NamedObject::ImplementsClass(id);
    }
    std::unique_ptr<Object> Clone() const override {
        return std::unique_ptr<Object>(new ViewItem(*this));
    }

protected:
    /// The copy's lock state is 0.
    ViewItem(const ViewItem& source) : NamedObject(source), Lockable() {}
};

} // namespace Kor
