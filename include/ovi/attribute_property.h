/* Attribute properties: members with typed values. */
#ifndef OVI_ATTRIBUTE_PROPERTY_H
#define OVI_ATTRIBUTE_PROPERTY_H

#include "ovi/types.h"

/** A new property of that name (stored only when valid), for a template version, without a type.
 *  It belongs to the caller until a template owns it. */
OVI_API OviAttributeProperty* OviAttributeProperty_New(const char* name, uint32_t version);

/** The type of the values, or null. */
OVI_API OviType* OviAttributeProperty_GetType(OviAttributeProperty* property);

/** Sets the type. False, changing nothing, when the owner would come to contain itself, unless the
 *  property is marked as a reference. An unregistered custom type then belongs to the properties
 *  that use it; the type it replaces goes back to the caller. Values stay as they are. */
OVI_API bool OviAttributeProperty_SetType(OviAttributeProperty* property, OviType* type);

/** The default value, a block of the type's dimension; null for none. */
OVI_API void* OviAttributeProperty_GetDefaultValue(OviAttributeProperty* property);

/** Takes over a block made by the property's type with its dimension, or null; frees the old one.
 */
OVI_API void OviAttributeProperty_SetDefaultValue(OviAttributeProperty* property, void* value);

/** The minimum; null for none. */
OVI_API void* OviAttributeProperty_GetMinValue(OviAttributeProperty* property);

/** As OviAttributeProperty_SetDefaultValue. */
OVI_API void OviAttributeProperty_SetMinValue(OviAttributeProperty* property, void* value);

/** The maximum; null for none. */
OVI_API void* OviAttributeProperty_GetMaxValue(OviAttributeProperty* property);

/** As OviAttributeProperty_SetDefaultValue. */
OVI_API void OviAttributeProperty_SetMaxValue(OviAttributeProperty* property, void* value);

/** Whether a block lies within the bounds. For numbers both bounds are inclusive and a bound of 0
 *  is none; for texts the maximum is exclusive and empty texts are invalid. False for null and
 *  without a type. */
OVI_API bool OviAttributeProperty_IsValueValid(OviAttributeProperty* property, const void* value);

/** Whether the property refers to an object of its type instead of holding one. */
OVI_API bool OviAttributeProperty_IsReference(OviAttributeProperty* property);

/** Marks the property as a reference, or not. */
OVI_API void OviAttributeProperty_SetReference(OviAttributeProperty* property, bool reference);

/** A text for the host about automatic binding; not interpreted. */
OVI_API const char* OviAttributeProperty_GetAutoBind(OviAttributeProperty* property);

/** Replaces the text about automatic binding. */
OVI_API void OviAttributeProperty_SetAutoBind(OviAttributeProperty* property, const char* text);

#endif
