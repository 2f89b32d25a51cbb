/* Attribute instances: values and bindings. */
#ifndef OVI_ATTRIBUTE_INSTANCE_H
#define OVI_ATTRIBUTE_INSTANCE_H

#include "ovi/types.h"

/** The value block (see ovi/type.h), made from the property's default when there is none yet. It
 *  belongs to the attribute and stays valid until the value or the dimension is set. Null when the
 *  property has no type. */
OVI_API void* OviAttributeInstance_GetValue(OviAttributeInstance* attribute);

/**
 * Replaces the value by a copy of a block of the type's form (which may be the attribute's own),
 * with as many elements as the dimension says, by the rules of OviType_NewValue; null gives zeroes.
 * Does nothing without a type. Sends OVI_EVENT_ATTRIBUTE_VALUE_CHANGED first; for a template type
 * also OVI_EVENT_PROPERTY_REMOVED and OVI_EVENT_TEMPLATE_REMOVED for the old instance, and
 * OVI_EVENT_INSTANCE_RENAMED and OVI_EVENT_TEMPLATE_ADDED for the new one.
 */
OVI_API void OviAttributeInstance_SetValue(OviAttributeInstance* attribute, const void* value);

/** The binding; "" when none. */
OVI_API const char* OviAttributeInstance_GetBinding(OviAttributeInstance* attribute);

/** Replaces the binding. Sends OVI_EVENT_BINDING_CHANGED first. */
OVI_API void OviAttributeInstance_SetBinding(OviAttributeInstance* attribute, const char* binding);

/** Number of elements of the value. */
OVI_API int OviAttributeInstance_GetDimension(OviAttributeInstance* attribute);

/** Sets the number of elements; another one drops the value. False, changing nothing, when the
 *  type fixes another dimension, is missing, or the number is below 0. */
OVI_API bool OviAttributeInstance_SetDimension(OviAttributeInstance* attribute, int dimension);

#endif
