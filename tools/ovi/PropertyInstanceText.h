#pragma once

#include "ValueText.h"

#include <ovi/ovi.h>

#include <string>
#include <vector>

namespace OviTool {

class ChangeRecorder;

/// A property instance's word for its kind: "attribute", "node", "anchor" or "geometry".
const char* GetInstanceKindName(OviPropertyInstance* propertyInstance);

/// Describes property instances of every kind, each in one line.
class PropertyInstanceText {
public:
    explicit PropertyInstanceText(const ChangeRecorder& recorder) : recorder_(recorder) {}

    /// The full name with type, value, binding and locks.
    std::string Describe(OviPropertyInstance* propertyInstance);

    /// The level of detail and the binding of a geometry's node instance.
    static std::string DescribeAlternate(OviGeometryInstance* geometry, int index);

    /// The value of an attribute, or nothing where it has none of its own.
    std::string DescribeValue(OviAttributeInstance* attribute);

    /// Whether the file said anything about the property instance.
    bool IsMentioned(OviPropertyInstance* propertyInstance) const;

    /// Whether the file gave it instances as its value.
    bool HasNestedInstances(OviPropertyInstance* propertyInstance);

private:
    std::string DescribeAttribute(OviAttributeInstance* attribute, std::string& origin);
    static std::string DescribeAnchor(OviAnchorInstance* anchor);
    static std::string DescribeStates(OviPropertyInstance* propertyInstance,
                                      const std::string& origin);

    const ChangeRecorder& recorder_;
    ValueText values_;
};

/// How many alternates a geometry instance has.
int GetAlternateCount(OviGeometryInstance* geometry);

} // namespace OviTool
