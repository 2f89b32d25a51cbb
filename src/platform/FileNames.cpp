#include "platform/FileNames.h"

#include <algorithm>
#include <atomic>

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

std::string MakeTemporaryName(unsigned long processId) {
    static std::atomic<unsigned long> counter{0};
    return ".ovi-" + std::to_string(processId) + "-" + std::to_string(++counter) + ".tmp";
}

} // namespace Kor
