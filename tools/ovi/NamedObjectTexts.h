#pragma once

#include <ovi/ovi.h>

namespace OviTool {

class TreePrinter;

/// Prints the comment, the labels and the descriptions of an object.
void PrintTexts(TreePrinter& tree, int depth, OviNamedObject* object);

} // namespace OviTool
