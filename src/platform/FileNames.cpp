#include "platform/FileNames.h"

#include <algorithm>

namespace Kor {

namespace {

unsigned char Fold(char c) {
    return static_cast<unsigned char>(c >= 'a' && c <= 'z' ? c - ('a' - 'A') : c);
}

bool ComesBefore(const std::string& a, const std::string& b) {
    const auto [x, y] = std::mismatch(a.begin(), a.end(), b.begin(), b.end(),
                                      [](char c, char d) { return Fold(c) == Fold(d); });
    if (x == a.end() && y == b.end())
        return a < b;
    return x == a.end() || (y != b.end() && Fold(*x) < Fold(*y));
}

} // namespace

void SortFileNames(std::vector<std::string>& names) {
    std::sort(names.begin(), names.end(), ComesBefore);
}

std::string MakeTemporaryName(const TemporaryNameBytes& random) {
    constexpr char kDigits[] = "0123456789abcdef";
    std::string name = ".ovi-";
    for (const unsigned char byte : random) {
        name += kDigits[byte >> 4];
        name += kDigits[byte & 15];
    }
    return name + ".tmp";
}

} // namespace Kor
