/* Names, comments, and texts per language. */
#ifndef OVI_NAMED_OBJECT_H
#define OVI_NAMED_OBJECT_H

#include "ovi/types.h"

/** The name; "" when none was ever set. */
OVI_API const char* OviNamedObject_GetName(OviNamedObject* object);

/**
 * Sets the name; false, changing nothing, when it breaks the rule for names. A type's name may
 * carry its package ("a.b.Vector"). Property instances refuse every name. Instances send
 * OVI_EVENT_INSTANCE_RENAMED first, also for a name that is then refused. Registered types and
 * assets keep being found, under the new name.
 */
OVI_API bool OviNamedObject_SetName(OviNamedObject* object, const char* name);

/** The rule for names: not empty, and only A-Z, a-z, 0-9 and "_"; a digit may come first. */
OVI_API bool OviNamedObject_IsValidName(const char* name);

/** The comment; "" when unset. */
OVI_API const char* OviNamedObject_GetComment(OviNamedObject* object);

/** Replaces the comment; any text. */
OVI_API void OviNamedObject_SetComment(OviNamedObject* object, const char* comment);

/** The label for a language such as "en_GB": that entry, else the one for the part before the
 *  first "_", else the default entry, else null. A null language asks for the default alone. */
OVI_API const char* OviNamedObject_GetLabel(OviNamedObject* object, const char* language);

/** Sets the label of a language (null or "": the default entry); a null text removes it. */
OVI_API void OviNamedObject_SetLabel(OviNamedObject* object, const char* language,
                                     const char* text);

/** Number of labels. */
OVI_API int OviNamedObject_GetLabelCount(OviNamedObject* object);

/** The language of a label, in ascending byte order; null for the default entry and out of range.
 */
OVI_API const char* OviNamedObject_GetLabelLanguageAt(OviNamedObject* object, int index);

/** The text of a label; "" out of range. */
OVI_API const char* OviNamedObject_GetLabelTextAt(OviNamedObject* object, int index);

/** As OviNamedObject_GetLabel, for descriptions. */
OVI_API const char* OviNamedObject_GetDescription(OviNamedObject* object, const char* language);

/** As OviNamedObject_SetLabel, for descriptions. */
OVI_API void OviNamedObject_SetDescription(OviNamedObject* object, const char* language,
                                           const char* text);

/** Number of descriptions. */
OVI_API int OviNamedObject_GetDescriptionCount(OviNamedObject* object);

/** As OviNamedObject_GetLabelLanguageAt, for descriptions. */
OVI_API const char* OviNamedObject_GetDescriptionLanguageAt(OviNamedObject* object, int index);

/** The text of a description; "" out of range. */
OVI_API const char* OviNamedObject_GetDescriptionTextAt(OviNamedObject* object, int index);

#endif
