/* Properties: the members that templates declare. */
#ifndef OVI_PROPERTY_H
#define OVI_PROPERTY_H

#include "ovi/types.h"

/** "Owner.name", with the owner's short name; the name alone while there is no owner. Instances
 *  know their property instances by this name. */
OVI_API const char* OviProperty_GetFullName(OviProperty* property);

/** The template version that introduced the property; null before it was added there. */
OVI_API OviTemplate* OviProperty_GetTemplate(OviProperty* property);

/** Adds a command, which stays whose it was: properties never delete commands that a host knows.
 *  Commands come from template files, and those live until the library ends; a host gets further
 *  ones, of its own, with OviObject_Clone. The index, or the complement of the index of the command
 *  of that name that was overwritten. */
OVI_API int OviProperty_AddCommand(OviProperty* property, OviCommand* command);

/** The index that the command of that name had, or a number below 0. It is not deleted. */
OVI_API int OviProperty_RemoveCommand(OviProperty* property, OviCommand* command);

/** Number of commands. */
OVI_API int OviProperty_GetCommandCount(OviProperty* property);

/** A command, in name order. */
OVI_API OviCommand* OviProperty_GetCommandAt(OviProperty* property, int index);

#endif
