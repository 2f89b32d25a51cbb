#pragma once

namespace Kor {

/// The class numbers that hosts see. A number never changes, since hosts are compiled with it; the
/// numbers only tell classes apart and need not follow one another.
enum ClassId : int {
    kObjectClass = 0,
    kTemplateClass = 1,
    kAttributeInstanceClass = 2,
    kAttributePropertyClass = 3,
    kFloatTypeClass = 4,
    kEnumerationClass = 5,
    kEnumerationItemClass = 6,
    kGeometryAlternateClass = 7,
    kGeometryInstanceClass = 8,
    kGeometryPropertyClass = 9,
    kInstanceClass = 10,
    kIntTypeClass = 11,
    kLODClass = 12,
    kNodeInstanceClass = 13,
    kNodePropertyClass = 14,
    kPropertyClass = 15,
    kPropertyInstanceClass = 16,
    kStringTypeClass = 17,
    kTypeClass = 20,
    kAnchorPropertyClass = 28,
    kAssetClass = 29,
    kAnchorInstanceClass = 30,
    kNamedObjectClass = 31,
    kErrorItemClass = 32,
    kCommandClass = 34,
    kBoolTypeClass = 35,
    kGroupClass = 36,
    kViewItemClass = 37,
    kViewPropertyClass = 38,
    kViewClass = 39,
    kCustomTypeClass = 41,
};

} // namespace Kor
