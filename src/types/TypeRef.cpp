#include "types/TypeRef.h"

#include <utility>

#include "types/Type.h"

namespace Kor {

TypeRef& TypeRef::operator=(TypeRef&& other) noexcept {
    std::swap(type_, other.type_);
    return *this;
}

void TypeRef::Reset(Type* type) {
    if (type)
        type->AddUse();
    Type* old = std::exchange(type_, type);
    if (old)
        old->ReleaseUse();
}

} // namespace Kor
