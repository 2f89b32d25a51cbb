#include "types/CustomType.h"

namespace Kor {

std::unique_ptr<Object> CustomType::Clone() const {
    return std::unique_ptr<Object>(new CustomType(*this));
}

} // namespace Kor
