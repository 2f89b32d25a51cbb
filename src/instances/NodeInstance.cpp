#include "instances/NodeInstance.h"

#include "instances/GeometryInstance.h"
#include "xml/XMLWriter.h"

namespace Kor {

void NodeInstance::Leave() noexcept {
    LeaveGeometry();
    AttributeInstance::Leave();
}

void NodeInstance::LeaveGeometry() noexcept {
    if (geometry_)
        geometry_->ForgetNodeInstance(*this);
}

void NodeInstance::WriteToXML(XMLWriter& writer) const {
    writer.StartElement("node");
    writer.WriteAttribute("property", GetKey());
    writer.EndElement();
}

} // namespace Kor
