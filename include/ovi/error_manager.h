/* Diagnostics of loading and saving. */
#ifndef OVI_ERROR_MANAGER_H
#define OVI_ERROR_MANAGER_H

#include "ovi/types.h"

/** Adds a diagnostic. `level` is a sum of level bits, `lineNumber` -1 when a whole file is meant.
 */
OVI_API void OviErrorManager_AddErrorItem(int level, const char* sourceName, int lineNumber,
                                          const char* message);

/**
 * How often the level bits of the mask (1, 2, 4, 8) were reported since the last clearing. An item
 * with two bits counts twice, one with none not at all: the result is not the number of items
 * unless each has exactly one bit.
 */
OVI_API int OviErrorManager_GetErrorItemCount(int levelMask);

/** The item at a position of the whole list, whatever its level; null behind the last, and in the
 *  place of an item for which there was no memory: that one is only counted. An item belongs to the
 *  library and stays valid until the list is cleared. */
OVI_API OviErrorItem* OviErrorManager_GetErrorItemAt(int index);

/** Deletes all items. Nothing else ever clears the list but the end of the library. */
OVI_API void OviErrorManager_Clear(void);

/** The item's level bits. */
OVI_API int OviErrorItem_GetErrorLevel(OviErrorItem* item);

/** The file concerned, normally its path. */
OVI_API const char* OviErrorItem_GetSourceName(OviErrorItem* item);

/** The line, from 1; -1 when the whole file is meant. */
OVI_API int OviErrorItem_GetLineNumber(OviErrorItem* item);

/** The message. */
OVI_API const char* OviErrorItem_GetMessage(OviErrorItem* item);

#endif
