/* Templates: classes of scene objects, in numbered versions. A template is also a type. */
#ifndef OVI_TEMPLATE_H
#define OVI_TEMPLATE_H

#include "ovi/types.h"

/** The version that this template stands for, from 1. */
OVI_API int OviTemplate_GetVersion(OviTemplate* self);

/** The highest version known for the template's name. */
OVI_API int OviTemplate_GetLatestVersion(OviTemplate* self);

/** Adds a parent (borrowed). The index; -1 when the parent is the template or descends from it; the
 *  complement of the index when a parent of that key was overwritten. The root gives way to the
 *  first other parent. */
OVI_API int OviTemplate_AddParent(OviTemplate* self, OviTemplate* parent);

/** The index the parent had, or a number below 0. The root becomes the parent of a template that
 *  would be left without one. */
OVI_API int OviTemplate_RemoveParent(OviTemplate* self, OviTemplate* parent);

/** Number of direct parents. */
OVI_API int OviTemplate_GetParentCount(OviTemplate* self);

/** A direct parent, in key order. */
OVI_API OviTemplate* OviTemplate_GetParentAt(OviTemplate* self, int index);

/** The direct parent of that key (full name, "#", version: "geo.Mesh#1"), or null. */
OVI_API OviTemplate* OviTemplate_GetParent(OviTemplate* self, const char* key);

/** Number of direct children. */
OVI_API int OviTemplate_GetChildCount(OviTemplate* self);

/** A direct child, in key order. */
OVI_API OviTemplate* OviTemplate_GetChildAt(OviTemplate* self, int index);

/** The direct child of that key, or null. */
OVI_API OviTemplate* OviTemplate_GetChild(OviTemplate* self, const char* key);

/** Whether `other` is a direct parent. */
OVI_API bool OviTemplate_IsChildOf(OviTemplate* self, OviTemplate* other);

/** Whether `other` is a parent, or an ancestor through any parent. */
OVI_API bool OviTemplate_IsDescendantOf(OviTemplate* self, OviTemplate* other);

/**
 * Adds a property at a position of the declaration order (below 0: at the end). The template owns
 * the property when the versions of both are equal. The result is the index by name; the
 * complement of the index when an older definition of that name gave way in the lookup; -1 when
 * refused, because the template would contain itself or has a property of that name and version.
 * The complement of the first index is -1, too: OviProperty_GetTemplate tells whose it is then.
 */
OVI_API int OviTemplate_AddProperty(OviTemplate* self, OviProperty* property, int position);

/**
 * Takes the property out, and its name out of the lookup, and gives the place it had in the
 * declaration order, or -1. The property then belongs to the caller, unless it is another
 * template's: one that this version shares with a lower one stays that version's.
 */
OVI_API int OviTemplate_RemoveProperty(OviTemplate* self, OviProperty* property);

/** Number of own properties by name; inherited and redefined ones do not count. */
OVI_API int OviTemplate_GetPropertyCount(OviTemplate* self);

/** An own property, by name or in declaration order. The latter may hold more entries than
 *  OviTemplate_GetPropertyCount says: older definitions stay in it, within reach of the index. */
OVI_API OviProperty* OviTemplate_GetPropertyAt(OviTemplate* self, int index, bool sortedByName);

/** The property of that name, own or inherited, or null. */
OVI_API OviProperty* OviTemplate_GetProperty(OviTemplate* self, const char* name);

/** Adds a new view of that name, which the template owns; as OviTemplate_AddView, and -1 for an
 *  invalid name. */
OVI_API int OviTemplate_CreateView(OviTemplate* self, const char* name);

/** Adds a view, which the template then owns. The index, or the complement of the index of the
 *  view of that name that was overwritten (and is neither deleted nor told). */
OVI_API int OviTemplate_AddView(OviTemplate* self, OviView* view);

/** The index the view had, or a number below 0. The view then belongs to the caller. */
OVI_API int OviTemplate_RemoveView(OviTemplate* self, OviView* view);

/** Number of own views. */
OVI_API int OviTemplate_GetViewCount(OviTemplate* self);

/** An own view, in name order. */
OVI_API OviView* OviTemplate_GetViewAt(OviTemplate* self, int index);

/** The own view of that name; with `includeInherited` else the first that the parents have. */
OVI_API OviView* OviTemplate_GetView(OviTemplate* self, const char* name, bool includeInherited);

#endif
