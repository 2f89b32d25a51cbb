#include "api/ClassNames.h"

#include <cstring>

#include "core/ClassId.h"

namespace Kor {

namespace {

struct ClassName {
    int classId;
    const char* name;
};

// Those of handles, and of the classes that only their numbers tell apart.
constexpr ClassName kNames[] = {
    {kObjectClass, "Object"},
    {kTemplateClass, "Template"},
    {kAttributeInstanceClass, "AttributeInstance"},
    {kAttributePropertyClass, "AttributeProperty"},
    {kFloatTypeClass, "FloatType"},
    {kEnumerationClass, "Enumeration"},
    {kEnumerationItemClass, "EnumerationItem"},
    {kGeometryAlternateClass, "GeometryAlternate"},
    {kGeometryInstanceClass, "GeometryInstance"},
    {kGeometryPropertyClass, "GeometryProperty"},
    {kInstanceClass, "Instance"},
    {kIntTypeClass, "IntType"},
    {kLODClass, "LOD"},
    {kNodeInstanceClass, "NodeInstance"},
    {kNodePropertyClass, "NodeProperty"},
    {kPropertyClass, "Property"},
    {kPropertyInstanceClass, "PropertyInstance"},
    {kStringTypeClass, "StringType"},
    {kTypeClass, "Type"},
    {kAnchorPropertyClass, "AnchorProperty"},
    {kAssetClass, "Asset"},
    {kAnchorInstanceClass, "AnchorInstance"},
    {kNamedObjectClass, "NamedObject"},
    {kErrorItemClass, "ErrorItem"},
    {kCommandClass, "Command"},
    {kBoolTypeClass, "BoolType"},
    {kGroupClass, "Group"},
    {kViewItemClass, "ViewItem"},
    {kViewPropertyClass, "ViewProperty"},
    {kViewClass, "View"},
    {kCustomTypeClass, "CustomType"},
};

} // namespace

const char* NameOfClass(int classId) noexcept {
    for (const ClassName& known : kNames) {
        if (known.classId == classId)
            return known.name;
    }
    return "object";
}

const char* ArticleOf(const char* name) noexcept {
    const bool isSpelled = std::strcmp(name, "LOD") == 0;
    return isSpelled || std::strchr("AEIOaeio", name[0]) ? "an" : "a";
}

} // namespace Kor
