#pragma once

#include <iosfwd>
#include <string>

namespace OviTool {

/// Prints lines indented by their depth.
class TreePrinter {
public:
    explicit TreePrinter(std::ostream& out) : out_(out) {}

    /// One line; a deeper one belongs to the last line that is less deep.
    void Line(int depth, const std::string& text);

    /// The lines of a text, each behind "# "; nothing for an empty text.
    void Comment(int depth, const std::string& text);

private:
    std::ostream& out_;
};

} // namespace OviTool
