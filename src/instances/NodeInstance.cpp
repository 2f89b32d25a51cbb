#include "instances/NodeInstance.h"

#include "instances/GeometryInstance.h"

namespace Kor {

void NodeInstance::Leave() noexcept {
    LeaveGeometry();
    AttributeInstance::Leave();
}

void NodeInstance::LeaveGeometry() noexcept {
    if (geometry_)
        geometry_->ForgetNodeInstance(*this);
}

} // namespace Kor
