#pragma once

#include <string>

namespace OviTool {

/// Draws a graph in the DOT language as SVG with Graphviz' program `dot`. Throws when that is not
/// on the PATH, or fails.
std::string DrawAsSvg(const std::string& dot);

} // namespace OviTool
