/* Instances of templates and their property instances. */
#ifndef OVI_INSTANCE_H
#define OVI_INSTANCE_H

#include "ovi/types.h"

/** A new instance without templates; the name is stored only when valid. It belongs to the caller.
 */
OVI_API OviInstance* OviInstance_New(const char* name);

/** Implements a template (borrowed), with property instances for all its properties, inherited ones
 *  included. The place, or the complement of the place of the same key that was overwritten. Sends
 *  OVI_EVENT_TEMPLATE_ADDED. Of properties with one full name, as two versions of a template have
 *  them, the instance takes the first; a scene file names templates in the order of their keys, so
 *  that after loading it is the first in that order. */
OVI_API int OviInstance_AddTemplate(OviInstance* instance, OviTemplate* added);

/** The highest implemented version of the template of that full name that is not newer than the
 *  latest known; null when none is implemented or known. */
OVI_API OviTemplate* OviInstance_GetTemplate(OviInstance* instance, const char* name);

/** An implemented template, in key order. */
OVI_API OviTemplate* OviInstance_GetTemplateAt(OviInstance* instance, int index);

/** Number of implemented templates. */
OVI_API int OviInstance_GetTemplateCount(OviInstance* instance);

/** Removes a template and the property instances of its own properties; those of inherited ones
 *  stay. The place it had, or the complement of its insertion point. Sends
 *  OVI_EVENT_PROPERTY_REMOVED for each property instance and OVI_EVENT_TEMPLATE_REMOVED. */
OVI_API int OviInstance_RemoveTemplate(OviInstance* instance, OviTemplate* removed);

/**
 * Moves from an implemented version of a template to the next one and gives its place; -1,
 * changing nothing, when there is no next one or the version is not implemented. No value is lost.
 * Sends OVI_EVENT_TEMPLATE_DEPRECATED where it applies, OVI_EVENT_TEMPLATE_UPDATED,
 * OVI_EVENT_PROPERTY_REMOVED for dropped properties (their property instances stay), and
 * OVI_EVENT_PROPERTY_ADDED for the version's own properties that had no property instance of their
 * full name. A redefined property keeps its property instance; only one whose earlier definition
 * has no owner is announced, by OVI_EVENT_PROPERTY_UPDATED, _RENAMED or _DEPRECATED. Properties
 * that parents gained are not added.
 */
OVI_API int OviInstance_UpdateTemplate(OviInstance* instance, OviTemplate* old);

/** The property instance of a property's full name ("Mesh.points"). With `create`, a missing one is
 *  made when the template manager knows the property; no event is sent. Null when there is none.
 *  It belongs to the instance. */
OVI_API OviPropertyInstance* OviInstance_GetPropertyInstance(OviInstance* instance,
                                                             const char* fullName, bool create);

/** Whether there is a property instance of that full name and it is valid. */
OVI_API bool OviInstance_IsPropertyInstanceValid(OviInstance* instance, const char* fullName);

/** Whether the property instances of all own properties of all implemented templates are there and
 *  valid. Inherited properties are not looked at. */
OVI_API bool OviInstance_IsValid(OviInstance* instance);

/** The sum of the value sizes of the implemented templates, in bytes. May add property instances;
 *  is not in general what OviInstance_WriteToBinary uses. */
OVI_API uint32_t OviInstance_GetSize(OviInstance* instance);

/** Packs the values into a block of `bufferSize` bytes and gives the bytes used. The zero bytes
 *  behind each template are written even past the end, so leave room for the alignment. */
OVI_API uint32_t OviInstance_WriteToBinary(OviInstance* instance, void* buffer,
                                           uint32_t bufferSize);

/** The asset at the top of the chain of instances that this one is nested in; null when there is
 *  none. An asset gives itself. */
OVI_API OviAsset* OviInstance_GetParentAsset(OviInstance* instance);

/** The attribute instance whose value this instance is; null for assets and free instances. */
OVI_API OviPropertyInstance* OviInstance_GetParentPropertyInstance(OviInstance* instance);

/** Writes the instance with all it contains as XML, `indent` levels deep; sizes as in
 *  OviType_WriteToXML. */
OVI_API void OviInstance_WriteToXML(OviInstance* instance, uint32_t indent, uint32_t* size,
                                    char* buffer);

/** The property whose value side this is. */
OVI_API OviProperty* OviPropertyInstance_GetProperty(OviPropertyInstance* propertyInstance);

/** The version of the property's owner template that the instance implements; null without. */
OVI_API OviTemplate* OviPropertyInstance_GetTemplate(OviPropertyInstance* propertyInstance);

/** Whether the property instance is valid by the rules of its kind. An attribute instance is once
 *  it has a value that its property accepts. */
OVI_API bool OviPropertyInstance_IsValid(OviPropertyInstance* propertyInstance);

/** The stored lock of the binding; not enforced by the library. */
OVI_API bool OviPropertyInstance_IsBindingLocked(OviPropertyInstance* propertyInstance);

/** The stored lock of the value; not enforced by the library. */
OVI_API bool OviPropertyInstance_IsValueLocked(OviPropertyInstance* propertyInstance);

/** Locks or unlocks the binding. Sends OVI_EVENT_BINDING_LOCKED_CHANGED first, even without a
 *  change; a callback may change the flag. True. */
OVI_API bool OviPropertyInstance_SetBindingLocked(OviPropertyInstance* propertyInstance,
                                                  bool locked);

/** As OviPropertyInstance_SetBindingLocked for the value, with OVI_EVENT_VALUE_LOCKED_CHANGED. */
OVI_API bool OviPropertyInstance_SetValueLocked(OviPropertyInstance* propertyInstance, bool locked);

#endif
