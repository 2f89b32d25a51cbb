#include "schema/AnchorProperty.h"

// A property makes its own value side; the instances' headers know the schema, not the reverse.
#include "instances/AnchorInstance.h"

namespace Kor {

std::unique_ptr<Object> AnchorProperty::Clone() const {
    return std::unique_ptr<Object>(new AnchorProperty(*this));
}

std::unique_ptr<PropertyInstance> AnchorProperty::CreateInstance(Instance& instance) {
    return std::make_unique<AnchorInstance>(instance, *this);
}

} // namespace Kor
