#pragma once

#include "api/Checks.h"

namespace Kor {

class Type;

namespace Api {

/// The same for a value that is not null while there are checks.
bool RefuseElements(const Type* type, const void* value, int count, const char* function) noexcept;

/// Whether a value is refused: where it is one of instances, each of them is a handle, too, and
/// looked at like one.
inline bool RefusesElements(const Type* type, const void* value, int count,
                            const char* function = __builtin_FUNCTION()) noexcept {
    return Checks::IsDoubtful(value) && RefuseElements(type, value, count, function);
}

} // namespace Api
} // namespace Kor
