/* Node and anchor properties: members that stand for nodes of the host's scene. */
#ifndef OVI_NODE_PROPERTY_H
#define OVI_NODE_PROPERTY_H

#include "ovi/types.h"

/** A new node property of that name (stored only when valid), for a template version. It belongs to
 *  the caller until a template owns it. */
OVI_API OviNodeProperty* OviNodeProperty_New(const char* name, uint32_t version);

/** The expected ancestor node, a text for the host; "" for none. */
OVI_API const char* OviNodeProperty_GetAncestor(OviNodeProperty* property);

/** Replaces the text about the ancestor. */
OVI_API void OviNodeProperty_SetAncestor(OviNodeProperty* property, const char* ancestor);

/** How many levels above the node the ancestor is expected; -1 for no expectation. */
OVI_API int OviNodeProperty_GetAncestorDistance(OviNodeProperty* property);

/** Stores the distance as it is given. */
OVI_API void OviNodeProperty_SetAncestorDistance(OviNodeProperty* property, int distance);

/** A new anchor property: a parent anchor without anchor types. It belongs to the caller until a
 *  template owns it. */
OVI_API OviAnchorProperty* OviAnchorProperty_New(const char* name, uint32_t version);

/** Whether it is a child anchor (attaches to something) and not a parent anchor. */
OVI_API bool OviAnchorProperty_IsChild(OviAnchorProperty* property);

/** Makes it a child anchor or a parent anchor. */
OVI_API void OviAnchorProperty_SetChild(OviAnchorProperty* property, bool child);

/** Adds an anchor type (borrowed; any named object). The index, or the complement of the index
 * where one of that name was overwritten. */
OVI_API int OviAnchorProperty_AddAnchorType(OviAnchorProperty* property, OviNamedObject* type);

/** The index it had, or a number below 0. */
OVI_API int OviAnchorProperty_RemoveAnchorType(OviAnchorProperty* property, OviNamedObject* type);

/** Number of anchor types. */
OVI_API int OviAnchorProperty_GetAnchorTypeCount(OviAnchorProperty* property);

/** An anchor type, in name order. */
OVI_API OviNamedObject* OviAnchorProperty_GetAnchorTypeAt(OviAnchorProperty* property, int index);

/** The anchor type of exactly that name, or null. */
OVI_API OviNamedObject* OviAnchorProperty_GetAnchorType(OviAnchorProperty* property,
                                                        const char* name);

/**
 * Finds the anchors of the scene that an anchor of this property could attach to: in every asset
 * whose "AssetNode" is bound, each anchor property of the other sense (child or parent), whatever
 * the anchor types; one inherited along several paths counts for each. Stores the property
 * instances (null where none can be had) of the first `capacity` in `found`, from the last asset to
 * the first, and gives the number of all. May make property instances; sends no events.
 */
OVI_API int OviAnchorProperty_GetCompatibleAnchors(OviAnchorProperty* property, int capacity,
                                                   OviPropertyInstance** found);

#endif
