/* The registry of the schema, its files and packages. */
#ifndef OVI_TEMPLATE_MANAGER_H
#define OVI_TEMPLATE_MANAGER_H

#include "ovi/types.h"

/* ---- templates --------------------------------------------------------------------------------
 */

/** The latest version of the template of that full name; version 1 while that is recycled. Null
 *  when version 1 or the latest version is missing. */
OVI_API OviTemplate* OviTemplateManager_GetTemplate(const char* name);

/** Exactly that version, or null. */
OVI_API OviTemplate* OviTemplateManager_GetTemplateVersion(const char* name, uint32_t version);

/** Number of templates; every version counts. */
OVI_API int OviTemplateManager_GetTemplateCount(void);

/** A template, in key order ("a.B#1"). */
OVI_API OviTemplate* OviTemplateManager_GetTemplateAt(int index);

/** The template of that full name, or a new version 1 under the root, which the manager owns. Null
 *  for an invalid name; and when version 1 exists while the latest version it names was removed:
 *  version 1 is then lost. */
OVI_API OviTemplate* OviTemplateManager_CreateTemplate(const char* name);

/** That version, made as a copy of the nearest lower one when missing; null when there is none. The
 *  manager owns it. */
OVI_API OviTemplate* OviTemplateManager_CreateTemplateVersion(const char* name, int version);

/** Registers a template, which the manager then owns; one without parents gets the root. The
 *  index, or the complement of the index of the template of that key that was overwritten (and
 *  lives on until the manager ends or the host deletes it). */
OVI_API int OviTemplateManager_AddTemplate(OviTemplate* added);

/** Takes a template out by its key; it then belongs to the caller. The index, or a number below 0.
 * The root stays (-1). */
OVI_API int OviTemplateManager_RemoveTemplate(OviTemplate* removed);

/** The root template "Object". */
OVI_API OviTemplate* OviTemplateManager_GetRoot(void);

/** The property of "Template.property" (latest version) or "Template#2.property", inherited ones
 *  included; null when there is none. Templates with a package are not found here. */
OVI_API OviProperty* OviTemplateManager_GetProperty(const char* fullName);

/* ---- enumerations and plain types -------------------------------------------------------------
 */

/** Number of enumerations. */
OVI_API int OviTemplateManager_GetEnumerationCount(void);

/** An enumeration, in order of full names. */
OVI_API OviEnumeration* OviTemplateManager_GetEnumerationAt(int index);

/** The enumeration of that full name, or null. */
OVI_API OviEnumeration* OviTemplateManager_GetEnumeration(const char* name);

/** Registers an enumeration; ownership and result as for templates. */
OVI_API int OviTemplateManager_AddEnumeration(OviEnumeration* enumeration);

/** Takes an enumeration out; ownership and result as for templates. */
OVI_API int OviTemplateManager_RemoveEnumeration(OviEnumeration* enumeration);

/** The plain type of that full name, or null; templates and enumerations are not found here. */
OVI_API OviType* OviTemplateManager_GetType(const char* name);

/** Number of plain types, the 14 built-in ones included. */
OVI_API int OviTemplateManager_GetTypeCount(void);

/** A plain type, in order of full names. */
OVI_API OviType* OviTemplateManager_GetTypeAt(int index);

/** Number of plain types, templates and enumerations (in that order) of a file, whatever the case
 *  of its name; the first `capacity` of them are stored in `types`, which may be null. */
OVI_API int OviTemplateManager_GetTypesByFileName(const char* fileName, OviType** types,
                                                  int capacity);

/** The plain type, enumeration or template (latest version) of exactly that full name, searched in
 *  that order; null when there is none. */
OVI_API OviType* OviTemplateManager_ResolveType(const char* name);

/** Registers a type by its class, as template, enumeration or plain type; ownership and result as
 *  for templates. An enumeration's item becomes a plain type: it is taken from its enumeration
 *  first. */
OVI_API int OviTemplateManager_AddType(OviType* type);

/** Takes a type out by its class; ownership and result as for templates. */
OVI_API int OviTemplateManager_RemoveType(OviType* type);

/* ---- levels of detail and anchor types: referred to, never deleted by the manager -------------
 *
 * A level of detail comes from a template file and lives until the library ends. A host gets
 * further ones, of its own, with OviObject_Clone, renames them and adds them here. OviObject_Delete
 * takes a level or an anchor type out of all lists that have it.
 */

/** Number of levels of detail. */
OVI_API int OviTemplateManager_GetLODCount(void);

/** A level of detail, in name order. */
OVI_API OviLOD* OviTemplateManager_GetLODAt(int index);

/** The level of detail of that name, or null. */
OVI_API OviLOD* OviTemplateManager_GetLOD(const char* name);

/** Adds a level of detail, which stays whose it was and must live while it is listed. The index, or
 *  the complement of the index where another one of its name was overwritten. */
OVI_API int OviTemplateManager_AddLOD(OviLOD* lod);

/** Takes the level of detail of that name out, without deleting it. The index it had, or a number
 *  below 0. */
OVI_API int OviTemplateManager_RemoveLOD(OviLOD* lod);

/** Number of anchor types. */
OVI_API int OviTemplateManager_GetAnchorTypeCount(void);

/** An anchor type, in name order. */
OVI_API OviNamedObject* OviTemplateManager_GetAnchorTypeAt(int index);

/** The anchor type of that name, or null. */
OVI_API OviNamedObject* OviTemplateManager_GetAnchorType(const char* name);

/** Adds an anchor type, which stays whose it was; any named object can serve as one. The index, or
 *  the complement of the index where another one of its name was overwritten. */
OVI_API int OviTemplateManager_AddAnchorType(OviNamedObject* type);

/** Takes the anchor type of that name out, without deleting it. The index it had, or a number below
 *  0. */
OVI_API int OviTemplateManager_RemoveAnchorType(OviNamedObject* type);

/* ---- template files ---------------------------------------------------------------------------
 */

/** Reads a template file; a file that is loaded already is not read again (true). False when it
 *  cannot be opened (only regular files can) or read to its end: what was read before the fault
 *  stays, and "Unable to open file '...' for reading" is reported either way. Faults inside the
 *  file are reported with line and do not make the result false. */
OVI_API bool OviTemplateManager_LoadTemplateFile(const char* path);

/** Deletes what a file defined. What properties, values, instances or other files still refer to
 *  stays, recycled. True when the last definition handled was deleted. */
OVI_API bool OviTemplateManager_UnloadTemplateFile(const char* path);

/** Writes all definitions whose file name is `fileName` to `output` (null: to that file). The old
 *  file is replaced only when the new one is complete; failures are reported and give false. */
OVI_API bool OviTemplateManager_SaveTemplateFile(const char* fileName, const char* output);

/* ---- search paths and packages ----------------------------------------------------------------
 */

/** Number of search paths. */
OVI_API int OviTemplateManager_GetSearchPathCount(void);

/** A search path with its trailing backslash, in the order of adding; "" out of range. */
OVI_API const char* OviTemplateManager_GetSearchPathAt(int index);

/** Adds a directory below which packages are looked for; with `load`, loads all of them;
 *  what cannot be loaded does not change the result. The index of an equal path (whatever its
 *  case; then nothing is loaded), or the complement of the new index. */
OVI_API int OviTemplateManager_AddSearchPath(const char* path, bool load);

/** The index removed; otherwise the complement of the number of paths. Nothing is unloaded. */
OVI_API int OviTemplateManager_RemoveSearchPath(const char* path);

/** Lists the packages below the search paths: their names in order, each with its NUL, then one NUL
 *  more. A directory that cannot be listed is reported at level 2 and left out with all it
 *  contains, a link back to a directory that it lies in is left out in silence. `size` holds the
 *  buffer's size in bytes and receives the size needed; names that do not fit are left out. The
 *  number of packages; -1, leaving `size`, when no search path can be listed, and always with
 *  `loadedOnly`. */
OVI_API int OviTemplateManager_EnumeratePackages(bool loadedOnly, int* size, char* buffer);

/** Loads all template files of a package ("studio.props" is the directory studio/props) below the
 *  first search path that has it; true at once when it is loaded already. A file that cannot be
 *  read ends that search path's copy, and the next search path is tried; what was read before
 *  stays. False when no search path has the package or all copies fail. */
OVI_API bool OviTemplateManager_LoadPackage(const char* name);

/** Loads the file a/b/C.template of the template "a.b.C" below the first search path that has it;
 *  true at once when that file is loaded already. A file that is missing or cannot be read to its
 *  end is passed over for the next search path; a missing one is not reported. False when no search
 *  path has one that can be read. */
OVI_API bool OviTemplateManager_LoadTemplate(const char* name);

#endif
