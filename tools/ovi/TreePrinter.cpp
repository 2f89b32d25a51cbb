#include "TreePrinter.h"

#include <algorithm>
#include <ostream>
#include <sstream>

namespace OviTool {

namespace {

constexpr int kIndentWidth = 2;
/// Nesting is as deep as a file makes it: behind this depth the indentation stays, or the blanks
/// of a deep chain would outgrow the file many times.
constexpr int kDeepestIndent = 64;

} // namespace

void TreePrinter::Line(int depth, const std::string& text) {
    const int indent = std::min(depth, kDeepestIndent) * kIndentWidth;
    out_ << std::string(static_cast<std::size_t>(indent), ' ') << text << '\n';
}

void TreePrinter::Comment(int depth, const std::string& text) {
    static const char kBlanks[] = " \t\r";
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t first = line.find_first_not_of(kBlanks);
        if (first != std::string::npos)
            Line(depth, "# " + line.substr(first, line.find_last_not_of(kBlanks) - first + 1));
    }
}

} // namespace OviTool
