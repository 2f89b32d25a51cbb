#pragma once

#include "core/TiedList.h"
#include "schema/ViewItem.h"

namespace Kor {

class Property;

/// A leaf of a view, which refers to a property. The reference is taken away when the property
/// dies.
class ViewProperty : public ViewItem, public Tied {
public:
    static constexpr int kClassId = kViewPropertyClass;
    KOR_OBJECT_MEMORY

    ViewProperty(std::string_view name, Property* property);
    ~ViewProperty() override { ViewProperty::Leave(); }

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || ViewItem::ImplementsClass(id);
    }

    /// The copy refers to the same property.
    std::unique_ptr<Object> Clone() const override;

    void Leave() noexcept override;

    /// May be null.
    Property* GetProperty() const { return property_; }
    void SetProperty(Property* property);

private:
    ViewProperty(const ViewProperty& source);

    Property* property_ = nullptr;
};

} // namespace Kor
