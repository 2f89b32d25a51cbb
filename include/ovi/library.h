/* Start and end of the library. */
#ifndef OVI_LIBRARY_H
#define OVI_LIBRARY_H

#include "ovi/types.h"

/** Takes one use of each manager (errors, notifications, templates, assets). Calls nest. */
OVI_API void Ovi_Initialize(void);

/**
 * Gives back one use of each manager in the reverse order. A manager whose uses are gone deletes
 * itself with all it owns, so every handle to templates, types, enumerations and assets becomes
 * invalid. Objects that belong to the host survive and must still be deleted by it. Without a
 * matching Ovi_Initialize the managers are deleted all the same.
 */
OVI_API void Ovi_Terminate(void);

/** The library's version, such as "1.0.0". */
OVI_API const char* Ovi_GetVersion(void);

#endif
