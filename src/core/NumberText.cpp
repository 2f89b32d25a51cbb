#include "core/NumberText.h"

#include "core/Names.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace Kor {

namespace {

/// Ends what std::to_chars wrote with a NUL byte and gives its length; 0 when it did not fit.
size_t Finish(std::to_chars_result result, char* buffer) {
    if (result.ec != std::errc())
        return 0;
    *result.ptr = '\0';
    return static_cast<size_t>(result.ptr - buffer);
}

bool IsBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsHexDigit(char c) {
    const char lower = ToLowerAscii(c);
    return IsDigit(c) || (lower >= 'a' && lower <= 'f');
}

char ByteAt(std::string_view text, size_t at) {
    return at < text.size() ? text[at] : '\0';
}

/// Takes blanks and one sign off the front; true for a minus.
bool TakeSign(std::string_view& text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    const char sign = ByteAt(text, 0);
    if (sign == '-' || sign == '+')
        text.remove_prefix(1);
    return sign == '-';
}

/// Whether the text begins with "0x" and at least one hexadecimal digit, a point before it or not.
bool IsHexadecimal(std::string_view text) {
    if (ByteAt(text, 0) != '0' || ToLowerAscii(ByteAt(text, 1)) != 'x')
        return false;
    return IsHexDigit(ByteAt(text, 2)) || (ByteAt(text, 2) == '.' && IsHexDigit(ByteAt(text, 3)));
}

/// The text without a hexadecimal exponent of two signs, which some libraries read all the same.
std::string_view CutDoublySignedExponent(std::string_view text) {
    const size_t exponentAt = std::min(text.find_first_of("pP"), text.size());
    const bool doublySigned =
        ByteAt(text, exponentAt + 1) == '+' && ByteAt(text, exponentAt + 2) == '-';
    return doublySigned ? text.substr(0, exponentAt) : text;
}

/// Whether a number that is out of range is so for being too large: whether its first digit other
/// than 0 stands, its exponent applied, before the point.
bool IsTooLarge(std::string_view number, bool hexadecimal) {
    const size_t exponentAt = number.find_first_of(hexadecimal ? "pP" : "eE");
    const std::string_view digits = number.substr(0, exponentAt);
    const size_t first = digits.find_first_not_of("0.");
    const size_t point = std::min(digits.find('.'), digits.size());
    auto scale = static_cast<long long>(point) - static_cast<long long>(first);
    if (hexadecimal)
        scale *= 4; // each digit counts four steps of a binary exponent
    if (exponentAt == std::string_view::npos)
        return scale > 0;
    std::string_view exponent = number.substr(exponentAt + 1);
    const bool negative = TakeSign(exponent);
    long long steps = 0;
    const auto parsed = std::from_chars(exponent.data(), exponent.data() + exponent.size(), steps);
    if (parsed.ec != std::errc())
        return !negative;
    return negative ? scale > steps : steps > -scale; // a sum could overflow
}

/// Reads a number without its sign; false when there is none.
bool ParseMagnitude(std::string_view text, bool hexadecimal, double& value) {
    const auto format = hexadecimal ? std::chars_format::hex : std::chars_format::general;
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), value, format);
    if (error == std::errc::result_out_of_range) {
        const auto length = static_cast<size_t>(end - text.data());
        value = IsTooLarge(text.substr(0, length), hexadecimal) ? HUGE_VAL : 0;
        return true;
    }
    return error == std::errc();
}

} // namespace

size_t FormatDouble(double value, char* buffer, size_t capacity) {
    if (capacity == 0)
        return 0;
    if (std::isnan(value)) // without the sign that it may have
        value = std::numeric_limits<double>::quiet_NaN();
    return Finish(
        std::to_chars(buffer, buffer + capacity - 1, value, std::chars_format::general, 6), buffer);
}

size_t FormatSigned(long long value, char* buffer, size_t capacity) {
    if (capacity == 0)
        return 0;
    return Finish(std::to_chars(buffer, buffer + capacity - 1, value), buffer);
}

size_t FormatUnsigned(unsigned long long value, char* buffer, size_t capacity) {
    if (capacity == 0)
        return 0;
    return Finish(std::to_chars(buffer, buffer + capacity - 1, value), buffer);
}

double ParseDouble(std::string_view text) {
    const bool negative = TakeSign(text);
    const bool hexadecimal = IsHexadecimal(text);
    if (hexadecimal)
        text = CutDoublySignedExponent(text.substr(2));
    double magnitude = 0;
    if (ByteAt(text, 0) == '-' || !ParseMagnitude(text, hexadecimal, magnitude))
        return 0; // std::from_chars would take a second sign
    return negative ? -magnitude : magnitude;
}

double ParseDouble(const char* text) {
    return ParseDouble(TextOf(text));
}

int ParseInt(std::string_view text) {
    constexpr long long kMax = std::numeric_limits<int>::max();
    const bool negative = TakeSign(text);
    const long long limit = negative ? kMax + 1 : kMax;
    long long magnitude = 0;
    for (size_t i = 0; IsDigit(ByteAt(text, i)) && magnitude < limit; ++i)
        magnitude = std::min(magnitude * 10 + (text[i] - '0'), limit);
    return static_cast<int>(negative ? -magnitude : magnitude);
}

int ParseInt(const char* text) {
    return ParseInt(TextOf(text));
}

} // namespace Kor
