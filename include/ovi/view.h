/* Views: trees of groups that arrange a template's properties for an editor. Views are made with
 * OviTemplate_CreateView; the group functions serve views too. */
#ifndef OVI_VIEW_H
#define OVI_VIEW_H

#include "ovi/types.h"

/** A new group; null when the name is invalid. It belongs to the caller until a group owns it. */
OVI_API OviGroup* OviGroup_New(const char* name);

/** Inserts an item before a position (below 0 or past the end: at the end). The group then owns it.
 *  An item may be added twice; a null item, or one that contains the group, is not added. */
OVI_API void OviGroup_AddViewItemAt(OviGroup* group, OviViewItem* item, int position);

/** Takes an item out; it then belongs to the caller. */
OVI_API void OviGroup_RemoveViewItemAt(OviGroup* group, int index);

/** Number of items. */
OVI_API int OviGroup_GetViewItemCount(OviGroup* group);

/** An item, in list order. */
OVI_API OviViewItem* OviGroup_GetViewItemAt(OviGroup* group, int index);

/** A new leaf that refers to a property (which may be null); null when the name is invalid. It
 *  belongs to the caller until a group owns it. */
OVI_API OviViewProperty* OviViewProperty_New(const char* name, OviProperty* property);

/** The property referred to; null when there is none, or when it was deleted. */
OVI_API OviProperty* OviViewProperty_GetProperty(OviViewProperty* viewProperty);

/** Refers to another property, or to none. */
OVI_API void OviViewProperty_SetProperty(OviViewProperty* viewProperty, OviProperty* property);

#endif
