#pragma once

#include <cstddef>
#include <string_view>
#include <type_traits>

namespace Kor {

// Numbers as text, the same in every locale of the host and on every platform.

/// Room for any number's text with its NUL byte.
constexpr size_t kNumberTextCapacity = 32;

/// Writes six significant digits in the shorter of fixed and exponent form ("0.1", "1e+06", "inf",
/// "-inf", "nan"). Returns the length; 0 when text and NUL byte do not fit.
size_t FormatDouble(double value, char* buffer, size_t capacity);

/// Writes the decimal form. Returns the length; 0 when text and NUL byte do not fit.
size_t FormatSigned(long long value, char* buffer, size_t capacity);
size_t FormatUnsigned(unsigned long long value, char* buffer, size_t capacity);

/// Writes an integer of any width by its own signedness.
template <class Integer> size_t FormatInteger(Integer value, char* buffer, size_t capacity) {
    static_assert(std::is_integral_v<Integer>);
    if constexpr (std::is_signed_v<Integer>)
        return FormatSigned(value, buffer, capacity);
    else
        return FormatUnsigned(value, buffer, capacity);
}

/// Reads as strtod does in the "C" locale: blanks, sign, decimal or hexadecimal number, "inf" or
/// "nan", up to the first byte that does not belong. Too large gives +-HUGE_VAL; no number gives 0.
double ParseDouble(std::string_view text);
double ParseDouble(const char* text);

/// Reads blanks, a sign and decimal digits, up to the first byte that does not belong. Beyond 32
/// bits it gives the nearest limit; no digits give 0.
int ParseInt(std::string_view text);
int ParseInt(const char* text);

} // namespace Kor
