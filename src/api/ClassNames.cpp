#include "api/ClassNames.h"

#include "core/ClassId.h"

namespace Kor {

namespace {

struct ClassName {
    int classId;
    const char* name;
};

// Those of handles, and of the classes that only their numbers tell apart.
constexpr ClassName kNames[] = {
    {kObjectClass, "an Object"},
    {kTemplateClass, "a Template"},
    {kAttributeInstanceClass, "an AttributeInstance"},
    {kAttributePropertyClass, "an AttributeProperty"},
    {kFloatTypeClass, "a FloatType"},
    {kEnumerationClass, "an Enumeration"},
    {kEnumerationItemClass, "an EnumerationItem"},
    {kGeometryAlternateClass, "a GeometryAlternate"},
    {kGeometryInstanceClass, "a GeometryInstance"},
    {kGeometryPropertyClass, "a GeometryProperty"},
    {kInstanceClass, "an Instance"},
    {kIntTypeClass, "an IntType"},
    {kLODClass, "an LOD"},
    {kNodeInstanceClass, "a NodeInstance"},
    {kNodePropertyClass, "a NodeProperty"},
    {kPropertyClass, "a Property"},
    {kPropertyInstanceClass, "a PropertyInstance"},
    {kStringTypeClass, "a StringType"},
    {kTypeClass, "a Type"},
    {kAnchorPropertyClass, "an AnchorProperty"},
    {kAssetClass, "an Asset"},
    {kAnchorInstanceClass, "an AnchorInstance"},
    {kNamedObjectClass, "a NamedObject"},
    {kErrorItemClass, "an ErrorItem"},
    {kCommandClass, "a Command"},
    {kBoolTypeClass, "a BoolType"},
    {kGroupClass, "a Group"},
    {kViewItemClass, "a ViewItem"},
    {kViewPropertyClass, "a ViewProperty"},
    {kViewClass, "a View"},
    {kCustomTypeClass, "a CustomType"},
};

} // namespace

const char* NameWithArticle(int classId) noexcept {
    for (const ClassName& known : kNames) {
        if (known.classId == classId)
            return known.name;
    }
    return "an object";
}

} // namespace Kor
