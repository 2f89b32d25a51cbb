/* Types and value blocks.
 *
 * A value is a block of `count` elements made by its type: numbers and truth values one behind the
 * other (BOOL, INT8 and UINT8 1 byte, INT16 and UINT16 2, INT32, UINT32 and FLOAT 4, INT64, UINT64
 * and DOUBLE 8), texts as an array of char pointers (each null or owned by the block), instances
 * of a template as an array of OviInstance pointers. The number of elements is the type's
 * dimension, 0 meaning that it varies. */
#ifndef OVI_TYPE_H
#define OVI_TYPE_H

#include "ovi/types.h"

/** The type whose behaviour this one borrows or builds on; null when there is none. */
OVI_API OviType* OviType_GetBaseType(OviType* type);

/** Sets the base type (borrowed; null for none). Types that are base types of each other in a
 * circle would keep each other for ever when they are deleted: open the circle before. */
OVI_API void OviType_SetBaseType(OviType* type, OviType* base);

/** Alignment in bytes of packed values. */
OVI_API int OviType_GetAlignment(OviType* type);

/** Sets the alignment, 1 or more; smaller ones count as 1. */
OVI_API void OviType_SetAlignment(OviType* type, int alignment);

/**
 * Bytes of a value. By kind of type: integers dimension times width, whatever the count; floats
 * count times width; truth values the count; texts for each element its length and 4; templates by
 * their properties. A null value is measured as declared.
 */
OVI_API int OviType_GetValueSize(OviType* type, const void* value, int count);

/**
 * A new block of `count` elements, freed by OviType_DeleteValue of the same type; null for a count
 * below 1. From `initial` (null: zeroes) integers and truth values repeat the first element, floats
 * and texts take as many, templates copy as many instances (without `initial`: make new ones).
 */
OVI_API void* OviType_NewValue(OviType* type, const void* initial, int count);

/** Frees a block made with the same count; null does nothing. A block of instances is left as it
 *  is, with the instances, because hosts may still hold them. */
OVI_API void OviType_DeleteValue(OviType* type, void* value, int count);

/** -1, 0 or 1 at the first different element. Enumerations find all values equal. */
OVI_API int OviType_CompareValues(OviType* type, const void* a, const void* b, int count);

/** Writes the text of an element to `buffer`, which must be large enough, without a terminating
 *  NUL, and gives its length; a null buffer only measures. 8-bit integers are written as the single
 * character. */
OVI_API int OviType_GetValueAsString(OviType* type, const void* value, int index, char* buffer);

/** Reads a text into an element of an existing block and gives the bytes of one element (for texts:
 *  the length). Integers of every width are read within 32 bits; bad numbers read as 0. */
OVI_API int OviType_GetValueFromString(OviType* type, const char* text, void* value, int index);

/**
 * Packs `count` elements (a null value: zeroes) into a buffer of `bufferSize` bytes and gives the
 * bytes used. Elements are aligned on their absolute addresses; the padding behind the last number
 * is written even past the end of the buffer, so leave room for the alignment. Stops early when the
 * space runs out.
 */
OVI_API int OviType_WriteValueToBinary(OviType* type, const void* value, int count, void* buffer,
                                       int bufferSize);

/**
 * Writes the type's declaration as XML, `indent` levels deep. `size` holds the buffer's size in
 * bytes; when the text and its NUL do not fit, as much as fits is copied without a NUL and `size`
 * becomes the size needed; otherwise `size` stays. A null buffer only measures; a null `size` does
 * nothing, and neither does a text so long that `size` could not tell it.
 */
OVI_API void OviType_WriteToXML(OviType* type, int indent, int* size, char* buffer);

/** Package, ".", name; the name alone without a package. */
OVI_API const char* OviType_GetFullName(OviType* type);

/** The template file that defines the type; "" for none. */
OVI_API const char* OviType_GetFileName(OviType* type);

/** Moves the type to another file. The new file counts as loaded, the old one no longer when
 *  nothing of it is left. */
OVI_API void OviType_SetFileName(OviType* type, const char* fileName);

/** The package, such as "studio.props"; "" for none. */
OVI_API const char* OviType_GetPackageName(OviType* type);

/** Sets the package; any text. */
OVI_API void OviType_SetPackageName(OviType* type, const char* package);

/** Recomputes the file name: search path, package as directories, and the file's own name (or the
 *  type's name and ".template"). */
OVI_API void OviType_SetSearchPath(OviType* type, const char* path);

/** Whether the type is still registered only because something refers to it, its file being
 *  unloaded. */
OVI_API bool OviType_IsRecycled(OviType* type);

#endif
