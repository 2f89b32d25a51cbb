#include "instances/AnchorInstance.h"

#include "xml/XMLWriter.h"

namespace Kor {

void AnchorInstance::WriteToXML(XMLWriter& writer) const {
    writer.StartElement("anchor");
    writer.WriteAttribute("property", GetKey());
    writer.WriteAttribute("binding", std::string_view(GetBinding()));
    writer.WriteAttribute("attachedAnchor", attachedAnchor_.View());
    writer.EndElement();
}

void AnchorInstance::CopyFrom(const PropertyInstance& source) {
    NodeInstance::CopyFrom(source);
    attachedAnchor_ = static_cast<const AnchorInstance&>(source).attachedAnchor_;
}

} // namespace Kor
