#include "schema/NodeProperty.h"

// A property makes its own value side; the instances' headers know the schema, not the reverse.
#include "instances/NodeInstance.h"

// A property writes its own declaration, whose form the writer of template files knows.
#include "formats/XMLTemplateWriter.h"

namespace Kor {

std::unique_ptr<Object> NodeProperty::Clone() const {
    return std::unique_ptr<Object>(new NodeProperty(*this));
}

void NodeProperty::WriteToXML(XMLWriter& writer) const {
    XMLTemplateWriter(writer).WriteNode(*this);
}

std::unique_ptr<PropertyInstance> NodeProperty::CreateInstance(Instance& instance) {
    return std::make_unique<NodeInstance>(instance, *this);
}

} // namespace Kor
