#pragma once

#include "TreePrinter.h"
#include "ValueText.h"

#include <string>
#include <vector>

namespace OviTool {

/// A level of detail without its name: type, threshold, shapes.
std::string DescribeLevel(OviLOD* level);

/// The own properties of a template in the order of declaration, without the older definitions
/// that stay in the library's list.
std::vector<OviProperty*> GetOwnProperties(OviTemplate* definition);

/// A property's word for its kind: "property" for an attribute, "node", "anchor" or "geometry".
const char* GetPropertyKindName(OviProperty* property);

/// Prints properties of every kind.
class PropertyPrinter {
public:
    explicit PropertyPrinter(TreePrinter& tree) : tree_(tree) {}

    void Print(int depth, OviProperty* property);

private:
    void PrintAttribute(int depth, OviAttributeProperty* attribute);
    void PrintNode(int depth, OviNodeProperty* node);
    void PrintAnchorTypes(int depth, OviAnchorProperty* anchor);
    void PrintAlternates(int depth, OviGeometryProperty* geometry);
    std::string DescribeValues(OviAttributeProperty* attribute);

    TreePrinter& tree_;
    ValueText values_;
};

} // namespace OviTool
