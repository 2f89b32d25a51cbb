// The numbers that hosts see are declared twice, for hosts and for the library: no build succeeds
// while the two differ.

#include "core/ClassId.h"
#include "core/IErrorListener.h"
#include "notify/NotificationManager.h"
#include "ovi/types.h"
#include "schema/LOD.h"

namespace Kor {

namespace {

constexpr bool Same(int outer, int inner) {
    return outer == inner;
}

// Classes.
static_assert(Same(OVI_CLASS_OBJECT, kObjectClass));
static_assert(Same(OVI_CLASS_TEMPLATE, kTemplateClass));
static_assert(Same(OVI_CLASS_ATTRIBUTE_INSTANCE, kAttributeInstanceClass));
static_assert(Same(OVI_CLASS_ATTRIBUTE_PROPERTY, kAttributePropertyClass));
static_assert(Same(OVI_CLASS_FLOAT_TYPE, kFloatTypeClass));
static_assert(Same(OVI_CLASS_ENUMERATION, kEnumerationClass));
static_assert(Same(OVI_CLASS_ENUMERATION_ITEM, kEnumerationItemClass));
static_assert(Same(OVI_CLASS_GEOMETRY_ALTERNATE, kGeometryAlternateClass));
static_assert(Same(OVI_CLASS_GEOMETRY_INSTANCE, kGeometryInstanceClass));
static_assert(Same(OVI_CLASS_GEOMETRY_PROPERTY, kGeometryPropertyClass));
static_assert(Same(OVI_CLASS_INSTANCE, kInstanceClass));
static_assert(Same(OVI_CLASS_INT_TYPE, kIntTypeClass));
static_assert(Same(OVI_CLASS_LOD, kLODClass));
static_assert(Same(OVI_CLASS_NODE_INSTANCE, kNodeInstanceClass));
static_assert(Same(OVI_CLASS_NODE_PROPERTY, kNodePropertyClass));
static_assert(Same(OVI_CLASS_PROPERTY, kPropertyClass));
static_assert(Same(OVI_CLASS_PROPERTY_INSTANCE, kPropertyInstanceClass));
static_assert(Same(OVI_CLASS_STRING_TYPE, kStringTypeClass));
static_assert(Same(OVI_CLASS_TYPE, kTypeClass));
static_assert(Same(OVI_CLASS_ANCHOR_PROPERTY, kAnchorPropertyClass));
static_assert(Same(OVI_CLASS_ASSET, kAssetClass));
static_assert(Same(OVI_CLASS_ANCHOR_INSTANCE, kAnchorInstanceClass));
static_assert(Same(OVI_CLASS_NAMED_OBJECT, kNamedObjectClass));
static_assert(Same(OVI_CLASS_ERROR_ITEM, kErrorItemClass));
static_assert(Same(OVI_CLASS_COMMAND, kCommandClass));
static_assert(Same(OVI_CLASS_BOOL_TYPE, kBoolTypeClass));
static_assert(Same(OVI_CLASS_GROUP, kGroupClass));
static_assert(Same(OVI_CLASS_VIEW_ITEM, kViewItemClass));
static_assert(Same(OVI_CLASS_VIEW_PROPERTY, kViewPropertyClass));
static_assert(Same(OVI_CLASS_VIEW, kViewClass));
static_assert(Same(OVI_CLASS_CUSTOM_TYPE, kCustomTypeClass));

// Events.
static_assert(Same(OVI_EVENT_TEMPLATE_ADDED, kTemplateAdded));
static_assert(Same(OVI_EVENT_TEMPLATE_REMOVED, kTemplateRemoved));
static_assert(Same(OVI_EVENT_TEMPLATE_UPDATED, kTemplateUpdated));
static_assert(Same(OVI_EVENT_TEMPLATE_DEPRECATED, kTemplateDeprecated));
static_assert(Same(OVI_EVENT_ASSET_ADDED, kAssetAdded));
static_assert(Same(OVI_EVENT_ASSET_REMOVED, kAssetRemoved));
static_assert(Same(OVI_EVENT_INSTANCE_RENAMED, kInstanceRenamed));
static_assert(Same(OVI_EVENT_REFERENCE_FILE, kReferenceFile));
static_assert(Same(OVI_EVENT_UNREFERENCE_FILE, kUnreferenceFile));
static_assert(Same(OVI_EVENT_REFERENCE_CHANGED, kReferenceChanged));
static_assert(Same(OVI_EVENT_BINDING_LOCKED_CHANGED, kBindingLockedChanged));
static_assert(Same(OVI_EVENT_VALUE_LOCKED_CHANGED, kValueLockedChanged));
static_assert(Same(OVI_EVENT_PROPERTY_UPDATED, kPropertyUpdated));
static_assert(Same(OVI_EVENT_PROPERTY_RENAMED, kPropertyRenamed));
static_assert(Same(OVI_EVENT_PROPERTY_DEPRECATED, kPropertyDeprecated));
static_assert(Same(OVI_EVENT_PROPERTY_ADDED, kPropertyAdded));
static_assert(Same(OVI_EVENT_PROPERTY_REMOVED, kPropertyRemoved));
static_assert(Same(OVI_EVENT_EXECUTE_COMMAND, kExecuteCommand));
static_assert(Same(OVI_EVENT_BINDING_CHANGED, kBindingChanged));
static_assert(Same(OVI_EVENT_ATTRIBUTE_VALUE_CHANGED, kAttributeValueChanged));

// Hosts.
static_assert(Same(OVI_HOST_NONE, kNoHost));
static_assert(Same(OVI_HOST_MAYA, kMaya));
static_assert(Same(OVI_HOST_3DSMAX, k3dsMax));

// Levels of diagnostics.
static_assert(Same(OVI_LEVEL_ERROR, kError));
static_assert(Same(OVI_LEVEL_WARNING, kWarning));

// Levels of detail.
static_assert(Same(OVI_LOD_BOUNDING_VOLUME, LOD::kBoundingVolume));
static_assert(Same(OVI_LOD_COLLISION, LOD::kCollision));
static_assert(Same(OVI_LOD_SURFACE, LOD::kSurface));

// Shapes, in bit order.
static_assert(Same(OVI_SHAPE_POLYGONS, kLODShapes[0].bit));
static_assert(Same(OVI_SHAPE_CUBE, kLODShapes[1].bit));
static_assert(Same(OVI_SHAPE_SPHERE, kLODShapes[2].bit));
static_assert(Same(OVI_SHAPE_CYLINDER, kLODShapes[3].bit));
static_assert(Same(OVI_SHAPE_CONE, kLODShapes[4].bit));
static_assert(Same(OVI_SHAPE_PYRAMID, kLODShapes[5].bit));

} // namespace

} // namespace Kor
