#pragma once

#include "PropertyPrinter.h"
#include "TreePrinter.h"
#include "ValueText.h"

#include <string>

namespace OviTool {

/// Prints what a template file defines as a tree.
class SchemaPrinter {
public:
    explicit SchemaPrinter(TreePrinter& tree) : tree_(tree), properties_(tree) {}

    /// Prints the definitions of a file, which the library knows by the given path. The title is
    /// the path by which it can be read.
    void Print(const std::string& title, const std::string& path);

private:
    void PrintType(OviType* type);
    void PrintEnumeration(OviEnumeration* enumeration);
    void PrintLevel(OviLOD* level);
    void PrintTemplate(OviTemplate* definition);

    TreePrinter& tree_;
    PropertyPrinter properties_;
    ValueText values_;
};

} // namespace OviTool
