#include "schema/NodeProperty.h"

// A property makes its own value side; the instances' headers know the schema, not the reverse.
#include "instances/NodeInstance.h"

namespace Kor {

std::unique_ptr<Object> NodeProperty::Clone() const {
    return std::unique_ptr<Object>(new NodeProperty(*this));
}

std::unique_ptr<PropertyInstance> NodeProperty::CreateInstance(Instance& instance) {
    return std::make_unique<NodeInstance>(instance, *this);
}

} // namespace Kor
