#include "types/IntType.h"

#include <algorithm>

#include "core/NumberText.h"

namespace Kor {

template <class Element> std::unique_ptr<Object> IntType<Element>::Clone() const {
    return std::unique_ptr<Object>(new IntType(*this));
}

template <class Element> int IntType<Element>::GetValueSize(const void*, int) const {
    return ClampSize(this->GetDimension() * static_cast<long long>(sizeof(Element)));
}

template <class Element>
void IntType<Element>::MakeElements(void* elements, const void* initial, int count) const {
    std::fill_n(static_cast<Element*>(elements), count, initial ? At(initial, 0) : Element());
}

template <class Element>
int IntType<Element>::GetValueAsString(const void* value, std::string& text, int index) const {
    if (!value || index < 0)
        return 0;
    const Element element = At(value, index);
    if constexpr (sizeof(Element) == 1) {
        text.assign(1, static_cast<char>(element));
    } else {
        char digits[24];
        text.assign(digits, FormatInteger(element, digits, sizeof digits));
    }
    return static_cast<int>(text.size());
}

template <class Element>
std::string IntType<Element>::GetReadableText(const void* value, int index) const {
    return value && index >= 0 ? std::to_string(At(value, index)) : std::string();
}

template <class Element>
int IntType<Element>::GetValueFromString(const char* text, void* value, int index) const {
    if (value && index >= 0)
        At(value, index) = static_cast<Element>(ParseInt(text));
    return static_cast<int>(sizeof(Element));
}

template class IntType<std::int8_t>;
template class IntType<std::uint8_t>;
template class IntType<std::int16_t>;
template class IntType<std::uint16_t>;
template class IntType<std::int32_t>;
template class IntType<std::uint32_t>;
template class IntType<std::int64_t>;
template class IntType<std::uint64_t>;

} // namespace Kor
