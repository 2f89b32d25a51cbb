#include "instances/NodeInstance.h"

#include "xml/XMLWriter.h"

namespace Kor {

void NodeInstance::WriteToXML(XMLWriter& writer) const {
    writer.StartElement("node");
    writer.WriteAttribute("property", GetKey());
    writer.EndElement();
}

} // namespace Kor
