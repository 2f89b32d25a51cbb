/* Anchor and geometry instances. Node instances have no functions of their own: their binding is
 * that of an attribute instance. All of them come with the instance that has the property, and no
 * function makes further ones. */
#ifndef OVI_NODE_INSTANCE_H
#define OVI_NODE_INSTANCE_H

#include "ovi/types.h"

/** The name of the anchor that this one is attached to; "" for none. */
OVI_API const char* OviAnchorInstance_GetAttachedAnchor(OviAnchorInstance* anchor);

/** Stores the name; no event, no check. */
OVI_API void OviAnchorInstance_SetAttachedAnchor(OviAnchorInstance* anchor, const char* attached);

/** The node instance of an alternate, in the order of the geometry property's alternates; null for
 *  an empty place. The geometry owns it. */
OVI_API OviNodeInstance* OviGeometryInstance_GetNodeInstanceAt(OviGeometryInstance* geometry,
                                                               int index);

/** Puts another node instance (or null) in place, which the geometry then owns; the one it replaces
 *  belongs to the caller. A node instance whose value the geometry stands inside of changes
 *  nothing. No event. */
OVI_API void OviGeometryInstance_SetNodeInstanceAt(OviGeometryInstance* geometry, int index,
                                                   OviNodeInstance* node);

#endif
