#include "types/BoolType.h"

#include <algorithm>

#include "core/Names.h"

namespace Kor {

std::unique_ptr<Object> BoolType::Clone() const {
    return std::unique_ptr<Object>(new BoolType(*this));
}

int BoolType::GetValueSize(const void*, int count) const {
    return std::max(count, 0);
}

void BoolType::MakeElements(void* elements, const void* initial, int count) const {
    std::memset(elements, initial ? At(initial, 0) : 0, static_cast<size_t>(count));
}

int BoolType::CompareValues(const void* a, const void* b, int count) const {
    if (count < 1)
        return 0;
    if (!a || !b)
        return (a ? 1 : 0) - (b ? 1 : 0);
    for (int i = 0; i < count; ++i) {
        const bool x = At(a, i) != 0;
        const bool y = At(b, i) != 0;
        if (x != y)
            return x ? 1 : -1;
    }
    return 0;
}

bool BoolType::IsValueValid(const void* value, const void*, const void*, int count) const {
    return value && (count == GetDimension() || GetDimension() == 0);
}

int BoolType::GetValueAsString(const void* value, std::string& text, int index) const {
    if (!value || index < 0)
        return 0;
    text = At(value, index) ? "true" : "false";
    return static_cast<int>(text.size());
}

int BoolType::GetValueFromString(const char* text, void* value, int index) const {
    const std::string_view word = TextOf(text);
    if (value && index >= 0)
        At(value, index) = word != "0" && !EqualsIgnoreCase(word, "false");
    return 1;
}

} // namespace Kor
