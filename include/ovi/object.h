/* What all objects have in common. */
#ifndef OVI_OBJECT_H
#define OVI_OBJECT_H

#include "ovi/types.h"

/** Deletes an object, whose handle is dead from then on. Null does nothing; the root template and
 *  error items are never deleted. The object leaves its owner, all lists and all registries at
 * once. What instances have of a template, a property or an alternate goes as when it is removed,
 * with OVI_EVENT_PROPERTY_REMOVED and OVI_EVENT_TEMPLATE_REMOVED; deleting anything else sends no
 * event. A type or a property that others still use lives on, unlisted, until the last of them
 * goes. */
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
