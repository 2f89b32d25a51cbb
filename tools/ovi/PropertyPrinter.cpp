#include "PropertyPrinter.h"

#include "Declaration.h"
#include "NamedObjectTexts.h"

#include <utility>

namespace OviTool {

namespace {

/// What stands behind the name: the type of an attribute, the sense of an anchor.
std::string DescribeKind(OviProperty* property) {
    const int kind = OviObject_GetClass(property);
    if (kind == OVI_CLASS_ANCHOR_PROPERTY)
        return OviAnchorProperty_IsChild(static_cast<OviAnchorProperty*>(property)) ? ": child"
                                                                                    : ": parent";
    if (kind != OVI_CLASS_ATTRIBUTE_PROPERTY)
        return {};
    auto* const attribute = static_cast<OviAttributeProperty*>(property);
    return (OviAttributeProperty_IsReference(attribute) ? ": reference to " : ": ") +
           ValueText::DescribeType(OviAttributeProperty_GetType(attribute));
}

} // namespace

std::string DescribeLevel(OviLOD* level) {
    const std::string shapes = OviLOD_GetAllowedShapeNames(level);
    return std::string(OviLOD_GetTypeName(level)) + ", threshold " +
           std::to_string(OviLOD_GetThreshold(level)) + ", at most " +
           std::to_string(OviLOD_GetMaxShapes(level)) + " shapes" +
           (shapes.empty() ? "" : ", allows " + shapes);
}

std::vector<OviProperty*> GetOwnProperties(OviTemplate* definition) {
    std::vector<OviProperty*> properties;
    for (int i = 0; OviProperty* next = OviTemplate_GetPropertyAt(definition, i, false); ++i) {
        if (OviTemplate_GetProperty(definition, OviNamedObject_GetName(next)) == next)
            properties.push_back(next);
    }
    return properties;
}

const char* GetPropertyKindName(OviProperty* property) {
    switch (OviObject_GetClass(property)) {
    case OVI_CLASS_NODE_PROPERTY:
        return "node";
    case OVI_CLASS_ANCHOR_PROPERTY:
        return "anchor";
    case OVI_CLASS_GEOMETRY_PROPERTY:
        return "geometry";
    case OVI_CLASS_ATTRIBUTE_PROPERTY:
        return "property";
    default:
        return "unknown kind of property";
    }
}

void PropertyPrinter::Print(int depth, OviProperty* property) {
    std::string line = std::string(GetPropertyKindName(property)) + " " +
                       OviNamedObject_GetName(property) + DescribeKind(property);
    OviTemplate* const introducedBy = OviProperty_GetTemplate(property);
    if (introducedBy && OviTemplate_GetVersion(introducedBy) > 1)
        line += ", of version " + std::to_string(OviTemplate_GetVersion(introducedBy));
    tree_.Line(depth, line);
    PrintTexts(tree_, depth + 1, property);
    if (OviObject_ImplementsClass(property, OVI_CLASS_ATTRIBUTE_PROPERTY))
        PrintAttribute(depth + 1, static_cast<OviAttributeProperty*>(property));
    if (OviObject_ImplementsClass(property, OVI_CLASS_NODE_PROPERTY))
        PrintNode(depth + 1, static_cast<OviNodeProperty*>(property));
    if (OviObject_ImplementsClass(property, OVI_CLASS_ANCHOR_PROPERTY))
        PrintAnchorTypes(depth + 1, static_cast<OviAnchorProperty*>(property));
    if (OviObject_ImplementsClass(property, OVI_CLASS_GEOMETRY_PROPERTY))
        PrintAlternates(depth + 1, static_cast<OviGeometryProperty*>(property));
    for (int i = 0; i < OviProperty_GetCommandCount(property); ++i)
        tree_.Line(depth + 1, std::string("command ") +
                                  OviNamedObject_GetName(OviProperty_GetCommandAt(property, i)));
}

void PropertyPrinter::PrintAttribute(int depth, OviAttributeProperty* attribute) {
    const std::string values = DescribeValues(attribute);
    if (!values.empty())
        tree_.Line(depth, values);
    const std::string autoBind = OviAttributeProperty_GetAutoBind(attribute);
    if (!autoBind.empty())
        tree_.Line(depth, "binds automatically to " + Quoted(autoBind));
}

void PropertyPrinter::PrintNode(int depth, OviNodeProperty* node) {
    const std::string ancestor = OviNodeProperty_GetAncestor(node);
    const int distance = OviNodeProperty_GetAncestorDistance(node);
    std::string line;
    if (!ancestor.empty())
        line += "ancestor " + Quoted(ancestor);
    if (distance != -1)
        line += std::string(line.empty() ? "ancestor" : "") + " at distance " +
                std::to_string(distance);
    if (!line.empty())
        tree_.Line(depth, line);
}

void PropertyPrinter::PrintAnchorTypes(int depth, OviAnchorProperty* anchor) {
    for (int i = 0; i < OviAnchorProperty_GetAnchorTypeCount(anchor); ++i)
        tree_.Line(depth, std::string("accepts ") +
                              OviNamedObject_GetName(OviAnchorProperty_GetAnchorTypeAt(anchor, i)));
}

void PropertyPrinter::PrintAlternates(int depth, OviGeometryProperty* geometry) {
    for (int i = 0; i < OviGeometryProperty_GetAlternateCount(geometry); ++i) {
        auto* const alternate = OviGeometryProperty_GetAlternateAt(geometry, i);
        OviLOD* const level = OviGeometryAlternate_GetLOD(alternate);
        tree_.Line(depth, std::string("alternate ") + OviNamedObject_GetName(level) + ": " +
                              DescribeLevel(level));
        PrintTexts(tree_, depth + 1, alternate);
        PrintNode(depth + 1, alternate);
    }
}

std::string PropertyPrinter::DescribeValues(OviAttributeProperty* attribute) {
    OviType* const type = OviAttributeProperty_GetType(attribute);
    const void* const block = OviAttributeProperty_GetDefaultValue(attribute);
    if (values_.HoldsInstances(type)) { // bounds mean nothing then
        OviInstance* const first = block ? *static_cast<OviInstance* const*>(block) : nullptr;
        const std::string name = OviNamedObject_GetName(first);
        return !first         ? ""
               : name.empty() ? "default instance without a name"
                              : "default instance " + name;
    }
    const std::pair<const char*, const void*> values[] = {
        {"default ", block},
        {"minimum ", OviAttributeProperty_GetMinValue(attribute)},
        {"maximum ", OviAttributeProperty_GetMaxValue(attribute)}};
    std::string result;
    for (const auto& [label, value] : values) {
        if (type && value)
            result += (result.empty() ? "" : "; ") +
                      (label + values_.Describe(type, value, GetDimension(type)));
    }
    return result;
}

} // namespace OviTool
