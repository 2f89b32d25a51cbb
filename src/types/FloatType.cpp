#include "types/FloatType.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/NumberText.h"

namespace Kor {

namespace {

/// Narrows as the processor does, also where the language leaves the result open.
template <class Element> Element Narrow(double number) {
    if (std::isfinite(number) && std::abs(number) > std::numeric_limits<Element>::max()) {
        using Limits = std::numeric_limits<Element>;
        // Below half a unit in the last place above the largest number it still rounds down.
        const double half = std::ldexp(1.0, Limits::max_exponent - Limits::digits - 1);
        if (std::abs(number) < static_cast<double>(Limits::max()) + half)
            return std::copysign(std::numeric_limits<Element>::max(),
                                 static_cast<Element>(number > 0 ? 1 : -1));
        return number > 0 ? std::numeric_limits<Element>::infinity()
                          : -std::numeric_limits<Element>::infinity();
    }
    return static_cast<Element>(number);
}

} // namespace

template <class Element> std::unique_ptr<Object> FloatType<Element>::Clone() const {
    return std::unique_ptr<Object>(new FloatType(*this));
}

template <class Element> int FloatType<Element>::GetValueSize(const void*, int count) const {
    return ClampSize(count * static_cast<long long>(sizeof(Element)));
}

template <class Element>
void FloatType<Element>::MakeElements(void* elements, const void* initial, int count) const {
    if (initial)
        std::copy_n(static_cast<const Element*>(initial), count, static_cast<Element*>(elements));
    else
        std::fill_n(static_cast<Element*>(elements), count, Element());
}

template <class Element>
int FloatType<Element>::GetValueAsString(const void* value, std::string& text, int index) const {
    if (!value || index < 0)
        return 0;
    char digits[32];
    text.assign(digits, FormatDouble(static_cast<double>(At(value, index)), digits, sizeof digits));
    return static_cast<int>(text.size());
}

template <class Element>
int FloatType<Element>::GetValueFromString(const char* text, void* value, int index) const {
    if (value && index >= 0)
        At(value, index) = Narrow<Element>(ParseDouble(text));
    return static_cast<int>(sizeof(Element));
}

template class FloatType<float>;
template class FloatType<double>;

} // namespace Kor
