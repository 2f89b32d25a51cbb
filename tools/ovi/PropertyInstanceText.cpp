#include "PropertyInstanceText.h"

#include "ChangeRecorder.h"

namespace OviTool {

namespace {

OviGeometryProperty* GetGeometryProperty(OviGeometryInstance* geometry) {
    return static_cast<OviGeometryProperty*>(OviPropertyInstance_GetProperty(geometry));
}

OviAttributeProperty* GetAttributeProperty(OviAttributeInstance* attribute) {
    return static_cast<OviAttributeProperty*>(OviPropertyInstance_GetProperty(attribute));
}

bool IsNode(OviPropertyInstance* propertyInstance) {
    return OviObject_ImplementsClass(propertyInstance, OVI_CLASS_NODE_INSTANCE);
}

std::string GetBinding(OviPropertyInstance* propertyInstance) {
    if (!OviObject_ImplementsClass(propertyInstance, OVI_CLASS_ATTRIBUTE_INSTANCE))
        return {};
    return OviAttributeInstance_GetBinding(static_cast<OviAttributeInstance*>(propertyInstance));
}

std::string DescribeBinding(const std::string& binding) {
    return "bound to " + Quoted(binding);
}

} // namespace

const char* GetInstanceKindName(OviPropertyInstance* propertyInstance) {
    switch (OviObject_GetClass(propertyInstance)) {
    case OVI_CLASS_NODE_INSTANCE:
        return "node";
    case OVI_CLASS_ANCHOR_INSTANCE:
        return "anchor";
    case OVI_CLASS_GEOMETRY_INSTANCE:
        return "geometry";
    case OVI_CLASS_ATTRIBUTE_INSTANCE:
        return "attribute";
    default:
        return "unknown kind of property instance";
    }
}

int GetAlternateCount(OviGeometryInstance* geometry) {
    return OviGeometryProperty_GetAlternateCount(GetGeometryProperty(geometry));
}

std::string PropertyInstanceText::Describe(OviPropertyInstance* propertyInstance) {
    OviProperty* const property = OviPropertyInstance_GetProperty(propertyInstance);
    std::string line = std::string(OviProperty_GetFullName(property)) + ": ";
    std::string origin;
    if (OviObject_ImplementsClass(propertyInstance, OVI_CLASS_ANCHOR_INSTANCE))
        line += DescribeAnchor(static_cast<OviAnchorInstance*>(propertyInstance));
    else if (OviObject_GetClass(propertyInstance) == OVI_CLASS_ATTRIBUTE_INSTANCE)
        line += DescribeAttribute(static_cast<OviAttributeInstance*>(propertyInstance), origin);
    else
        line += GetInstanceKindName(propertyInstance);
    if (IsNode(propertyInstance) && GetBinding(propertyInstance).empty())
        origin = "not bound";
    return line + DescribeStates(propertyInstance, origin);
}

std::string PropertyInstanceText::DescribeAttribute(OviAttributeInstance* attribute,
                                                    std::string& origin) {
    OviAttributeProperty* const property = GetAttributeProperty(attribute);
    OviType* const type = OviAttributeProperty_GetType(property);
    const bool isReference = OviAttributeProperty_IsReference(property);
    if (!recorder_.HasValue(attribute))
        origin = !values_.HoldsInstances(type) ? "default" : isReference ? "" : "not set";
    const std::string value = DescribeValue(attribute);
    return (isReference ? "reference to " : "") + ValueText::DescribeType(type) +
           (value.empty() ? "" : " = " + value);
}

/// Instances stand below the line instead. A default instance is not asked for, since the library
/// would make it.
std::string PropertyInstanceText::DescribeValue(OviAttributeInstance* attribute) {
    OviType* const type = OviAttributeProperty_GetType(GetAttributeProperty(attribute));
    if (!type || values_.HoldsInstances(type))
        return {};
    // Asking for the value makes it, and so decides the number of elements.
    const void* const block = OviAttributeInstance_GetValue(attribute);
    return values_.Describe(type, block, OviAttributeInstance_GetDimension(attribute));
}

std::string PropertyInstanceText::DescribeAnchor(OviAnchorInstance* anchor) {
    auto* const property = static_cast<OviAnchorProperty*>(OviPropertyInstance_GetProperty(anchor));
    const std::string attached = OviAnchorInstance_GetAttachedAnchor(anchor);
    return std::string(OviAnchorProperty_IsChild(property) ? "child anchor" : "parent anchor") +
           (attached.empty() ? "" : ", attached to " + Quoted(attached));
}

std::string PropertyInstanceText::DescribeAlternate(OviGeometryInstance* geometry, int index) {
    OviGeometryAlternate* const alternate =
        OviGeometryProperty_GetAlternateAt(GetGeometryProperty(geometry), index);
    const std::string binding = GetBinding(OviGeometryInstance_GetNodeInstanceAt(geometry, index));
    return std::string("alternate ") +
           OviNamedObject_GetName(OviGeometryAlternate_GetLOD(alternate)) + "  [" +
           (binding.empty() ? "not bound" : DescribeBinding(binding)) + "]";
}

std::string PropertyInstanceText::DescribeStates(OviPropertyInstance* propertyInstance,
                                                 const std::string& origin) {
    std::vector<std::string> states;
    if (!origin.empty())
        states.push_back(origin);
    const std::string binding = GetBinding(propertyInstance);
    if (!binding.empty())
        states.push_back(DescribeBinding(binding));
    if (OviPropertyInstance_IsValueLocked(propertyInstance))
        states.emplace_back("value locked");
    if (OviPropertyInstance_IsBindingLocked(propertyInstance))
        states.emplace_back("binding locked");
    std::string result;
    for (const std::string& state : states)
        result += (result.empty() ? "  [" : ", ") + state;
    return result.empty() ? result : result + "]";
}

/// No event tells of an attached anchor, and a geometry's node instances send their own.
bool PropertyInstanceText::IsMentioned(OviPropertyInstance* propertyInstance) const {
    if (recorder_.WasChanged(propertyInstance))
        return true;
    if (OviObject_ImplementsClass(propertyInstance, OVI_CLASS_ANCHOR_INSTANCE))
        return *OviAnchorInstance_GetAttachedAnchor(
                   static_cast<OviAnchorInstance*>(propertyInstance)) != '\0';
    if (!OviObject_ImplementsClass(propertyInstance, OVI_CLASS_GEOMETRY_INSTANCE))
        return false;
    auto* const geometry = static_cast<OviGeometryInstance*>(propertyInstance);
    for (int i = 0; i < GetAlternateCount(geometry); ++i) {
        if (recorder_.WasChanged(OviGeometryInstance_GetNodeInstanceAt(geometry, i)))
            return true;
    }
    return false;
}

bool PropertyInstanceText::HasNestedInstances(OviPropertyInstance* propertyInstance) {
    if (!recorder_.HasValue(propertyInstance))
        return false;
    auto* const attribute = static_cast<OviAttributeInstance*>(propertyInstance);
    return values_.HoldsInstances(OviAttributeProperty_GetType(GetAttributeProperty(attribute)));
}

} // namespace OviTool
