#pragma once

#include <ovi/ovi.h>

namespace OviTool {

class TreePrinter;

/// Prints a view with its groups and properties.
void PrintView(TreePrinter& tree, int depth, OviView* view);

} // namespace OviTool
