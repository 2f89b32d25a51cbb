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

/**
 * Switches the checks of handles on or off. They find mistakes of a host: with them on, every
 * handle that a function is given, be it the object or an argument, is looked up among the living
 * objects of the library, also those made before. What is no handle of a living object (one that
 * was deleted, with its owner or by itself, also one deleted twice, and any other address) is not
 * touched. The call does nothing then, and gives what it gives for a null handle. It adds one error
 * item: level 1, source "", line -1, and a message that names the function and, where that is still
 * known, what the object was, as in
 *   "OviNamedObject_GetName: the handle is dead (it was an Asset)"
 *   "OviObject_Delete: not a handle (no object begins there)"
 * Null handles, and handles of another class than the function takes, are as without checks.
 *
 * While the checks are on, the memory of the last 65,536 objects that were deleted is kept, so that
 * their handles differ from those of new objects. Switching them off gives it back.
 *
 * Off at first, and without any cost then, unless the environment variable OVI_CHECKS is "1" when
 * the library is first used. Ovi_Terminate leaves the setting as it is. Since 1.1.0.
 */
OVI_API void Ovi_SetChecks(bool on);

/** Whether the checks of handles are on. Since 1.1.0. */
OVI_API bool Ovi_GetChecks(void);

#endif
