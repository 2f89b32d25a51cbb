#include "schema/ViewProperty.h"

// A view property writes its own declaration, whose form the writer of template files knows.
#include "formats/XMLTemplateWriter.h"

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

void ViewProperty::WriteToXML(XMLWriter& writer) const {
    XMLTemplateWriter(writer).WriteViewItem(*this);
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
