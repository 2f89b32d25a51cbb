#include "schema/ViewProperty.h"

#include "schema/Property.h"

namespace Kor {

ViewProperty::ViewProperty(std::string_view name, Property* property) : ViewItem(name) {
    SetProperty(property);
}

ViewProperty::ViewProperty(const ViewProperty& source) : ViewItem(source) {
    SetProperty(source.property_);
}

void ViewProperty::Leave() noexcept {
    SetProperty(nullptr);
    ViewItem::Leave();
}

std::unique_ptr<Object> ViewProperty::Clone() const {
    return std::unique_ptr<Object>(new ViewProperty(*this));
}

void ViewProperty::SetProperty(Property* property) {
    if (property)
        property->MakeRoomForViewer();
    if (property_)
        property_->RemoveViewer(this);
    property_ = property;
    if (property_)
        property_->AddViewer(this);
}

} // namespace Kor
