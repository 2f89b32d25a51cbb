/* Custom types and enumerations.
 *
 * Enumerations and items come from template files. A host gets further ones with OviObject_Clone:
 * of an enumeration with all its items, or of one item. */
#ifndef OVI_ENUMERATION_H
#define OVI_ENUMERATION_H

#include "ovi/types.h"

/** A new custom type, which borrows all behaviour from the base type set later. The name may carry
 *  a package. It belongs to the caller until it is registered, or set as the type of a property. */
OVI_API OviCustomType* OviCustomType_New(const char* name, int dimension);

/** Adds an item, which the enumeration then owns; another enumeration or the template manager that
 *  has it loses it first. The index, or the complement of the index of the item of that name that
 *  was overwritten and then belongs to the caller. */
OVI_API int OviEnumeration_AddItem(OviEnumeration* enumeration, OviEnumerationItem* item);

/** The item of exactly that full name, or null. */
OVI_API OviEnumerationItem* OviEnumeration_GetItem(OviEnumeration* enumeration, const char* name);

/** Number of items. */
OVI_API int OviEnumeration_GetItemCount(OviEnumeration* enumeration);

/** An item, in byte order of the full names. */
OVI_API OviEnumerationItem* OviEnumeration_GetItemAt(OviEnumeration* enumeration, int index);

/** Takes out the entry with the item's full name and gives its index, or a number below 0. The
 *  item then belongs to the caller. */
OVI_API int OviEnumeration_RemoveItem(OviEnumeration* enumeration, OviEnumerationItem* item);

/** Replaces an item's value by a copy of a block of the enumeration's base type; null: zeroes. */
OVI_API void OviEnumerationItem_SetValue(OviEnumerationItem* item, const void* value);

#endif
