#include "core/Names.h"

#include <algorithm>
#include <cstring>

namespace Kor {

namespace {

constexpr size_t kWord = 8; // bytes that are compared at once

bool IsNameByte(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
}

} // namespace

bool IsValidName(std::string_view name) {
    return !name.empty() && std::all_of(name.begin(), name.end(), IsNameByte);
}

bool IsValidFullName(std::string_view name) {
    if (name.empty() || name.front() == '.' || name.back() == '.')
        return false;
    return std::all_of(name.begin(), name.end(), [](char c) { return c == '.' || IsNameByte(c); });
}

char ToLowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

std::string ToLowerAscii(std::string_view text) {
    std::string lower(text);
    for (char& c : lower)
        c = ToLowerAscii(c);
    return lower;
}

int CompareIgnoreCase(std::string_view a, std::string_view b) {
    const size_t common = std::min(a.size(), b.size());
    size_t i = 0;
    while (i + kWord <= common && std::memcmp(a.data() + i, b.data() + i, kWord) == 0)
        i += kWord; // paths, of which many are compared, mostly begin alike
    for (; i < common; ++i) {
        const auto x = static_cast<unsigned char>(ToLowerAscii(a[i]));
        const auto y = static_cast<unsigned char>(ToLowerAscii(b[i]));
        if (x != y)
            return x < y ? -1 : 1;
    }
    if (a.size() == b.size())
        return 0;
    return a.size() < b.size() ? -1 : 1;
}

} // namespace Kor
