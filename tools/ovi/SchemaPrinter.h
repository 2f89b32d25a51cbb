#pragma once

#include "TreePrinter.h"
#include "ValueText.h"

#include <string>
#include <vector>

namespace OviTool {

/// Prints what a template file defines as a tree.
class SchemaPrinter {
public:
    explicit SchemaPrinter(TreePrinter& tree) : tree_(tree) {}

    /// Prints the definitions of the file that was loaded by that path.
    void Print(const std::string& title, const std::string& path);

private:
    void PrintType(OviType* type);
    void PrintEnumeration(OviEnumeration* enumeration);
    void PrintTemplate(OviTemplate* definition);
    void PrintProperties(OviTemplate* definition);
    void PrintProperty(OviProperty* property);
    void PrintAttribute(OviAttributeProperty* attribute);
    std::string DescribeValues(OviAttributeProperty* attribute);
    void PrintTexts(int depth, OviNamedObject* object);

    TreePrinter& tree_;
    ValueText values_;
};

} // namespace OviTool
