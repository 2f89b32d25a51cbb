/* What all objects have in common. */
#ifndef OVI_OBJECT_H
#define OVI_OBJECT_H

#include "ovi/types.h"

/** Deletes an object. Null does nothing. An object that still has an owner is taken from it first;
 *  other objects must no longer refer to it. A type that values, properties or other types still
 *  use is only taken from its owner and goes with the last of them. The root template and
 *  error items are never deleted. Sends no event. */
OVI_API void OviObject_Delete(OviObject* object);

/** A deep copy of the same class, which belongs to the caller. Classes without a copy of their own
 *  (instances, assets, property instances, error items) give a bare object of class 0. */
OVI_API OviObject* OviObject_Clone(OviObject* object);

/** The number of the object's most derived class (OVI_CLASS_...); -1 for null. */
OVI_API int OviObject_GetClass(OviObject* object);

/** Whether the object's class is `classId` or derives from it; false for null. */
OVI_API bool OviObject_ImplementsClass(OviObject* object, int classId);

/** The object's lock-state part for the OviLockable functions; null when it has none. Properties
 *  and view items have one. */
OVI_API OviLockable* OviObject_GetLockable(OviObject* object);

/** The stored lock state, 0 at first. The library attaches no meaning to it. */
OVI_API int OviLockable_GetLockState(OviLockable* lockable);

/** Stores a lock state, any value. */
OVI_API void OviLockable_SetLockState(OviLockable* lockable, int state);

#endif
