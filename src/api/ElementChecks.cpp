#include "api/ElementChecks.h"

#include "schema/Template.h"

namespace Kor::Api {

bool RefuseElements(const Type* type, const void* value, int count, const char* function) noexcept {
    if (!type || !value || !ObjectCast<Template>(type->GetStorageType()))
        return false;
    const auto* elements = static_cast<const void* const*>(value);
    for (int i = 0; i < count; ++i) {
        if (Checks::Refuse(elements[i], function))
            return true;
    }
    return false;
}

} // namespace Kor::Api
