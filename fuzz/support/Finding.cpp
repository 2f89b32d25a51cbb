#include "support/Finding.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

/// The line that holds a position, and its number.
std::string LineAt(const std::string& text, size_t position) {
    const size_t at = std::min(position, text.size());
    const size_t begin = at == 0 ? 0 : text.rfind('\n', at - 1) + 1;
    const auto number = 1 + std::count(text.begin(), text.begin() + static_cast<long>(begin), '\n');
    return std::to_string(number) + ": " + text.substr(begin, text.find('\n', at) - begin);
}

} // namespace

void ReportFinding(const std::string& what) {
    std::fprintf(stderr, "FINDING: %s\n", what.c_str());
    std::abort();
}

void ExpectSame(const std::string& what, const std::string& wanted, const std::string& got) {
    if (wanted == got)
        return;
    const size_t shorter = std::min(wanted.size(), got.size());
    const auto difference =
        std::mismatch(wanted.begin(), wanted.begin() + static_cast<long>(shorter), got.begin());
    const auto at = static_cast<size_t>(difference.first - wanted.begin());
    ReportFinding(what + "\nwanted " + LineAt(wanted, at) + "\ngot    " + LineAt(got, at) +
                  "\n---- wanted\n" + wanted + "\n---- got\n" + got);
}
