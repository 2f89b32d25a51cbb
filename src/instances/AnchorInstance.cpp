#include "instances/AnchorInstance.h"

namespace Kor {

void AnchorInstance::CopyFrom(const PropertyInstance& source) {
    NodeInstance::CopyFrom(source);
    attachedAnchor_ = static_cast<const AnchorInstance&>(source).attachedAnchor_;
}

} // namespace Kor
