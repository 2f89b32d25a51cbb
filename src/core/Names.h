#pragma once

#include <string>
#include <string_view>

namespace Kor {

/// The name rule: not empty, and only A-Z, a-z, 0-9 and "_". A digit may come first.
bool IsValidName(std::string_view name);

/// The rule for names with their package: as above, with dots allowed anywhere but at the ends.
bool IsValidFullName(std::string_view name);

/// Order without regard to ASCII case: below, at or above 0.
int CompareIgnoreCase(std::string_view a, std::string_view b);

/// The same as the order of a container, in which texts of any kind can be looked for.
struct LessIgnoringCase {
    using is_transparent = void; // NOLINT(readability-identifier-naming): standard
    bool operator()(std::string_view a, std::string_view b) const {
        return CompareIgnoreCase(a, b) < 0;
    }
};

/// Equality without regard to ASCII case.
inline bool EqualsIgnoreCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() && (a == b || CompareIgnoreCase(a, b) == 0);
}

/// The character in lower case when it is an ASCII capital.
char ToLowerAscii(char c);

/// The text with its ASCII capitals in lower case.
std::string ToLowerAscii(std::string_view text);

/// The text of a pointer that may be null: null reads as "".
inline std::string_view TextOf(const char* text) {
    return text ? std::string_view(text) : std::string_view();
}

} // namespace Kor
