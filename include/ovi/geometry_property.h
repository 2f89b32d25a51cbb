/* Geometry in levels of detail.
 *
 * Levels of detail and alternates come from template files, and go with their schema. A host gets
 * further ones with OviObject_Clone: such a copy is the host's, also while lists refer to it, and
 * OviObject_Delete takes it out of them. */
#ifndef OVI_GEOMETRY_PROPERTY_H
#define OVI_GEOMETRY_PROPERTY_H

#include "ovi/types.h"

/** The kind of level, OVI_LOD_...; a new one is a surface. */
OVI_API int OviLOD_GetType(OviLOD* lod);

/** Stores the kind as it is given. */
OVI_API void OviLOD_SetType(OviLOD* lod, int type);

/** "Bounding Volume", "Collision" or "Surface"; "" for any other kind. */
OVI_API const char* OviLOD_GetTypeName(OviLOD* lod);

/** The switching threshold; not interpreted. */
OVI_API int OviLOD_GetThreshold(OviLOD* lod);

/** Replaces the threshold. */
OVI_API void OviLOD_SetThreshold(OviLOD* lod, int threshold);

/** The maximum number of shapes; not interpreted but by OviLOD_IsShapeAllowed. */
OVI_API int OviLOD_GetMaxShapes(OviLOD* lod);

/** Replaces the maximum number of shapes. */
OVI_API void OviLOD_SetMaxShapes(OviLOD* lod, int count);

/** Allows shapes, OVI_SHAPE_... bits. */
OVI_API void OviLOD_AllowShape(OviLOD* lod, int shapes);

/** Takes the permission for shapes back. */
OVI_API void OviLOD_DisallowShape(OviLOD* lod, int shapes);

/** Whether all given bits are set in the maximum number of shapes: mind that this does not look at
 *  the allowed shapes. */
OVI_API bool OviLOD_IsShapeAllowed(OviLOD* lod, int shapes);

/** The names of the allowed shapes, such as "Polygons, Pyramid". */
OVI_API const char* OviLOD_GetAllowedShapeNames(OviLOD* lod);

/** A new geometry property without alternates. It belongs to the caller until a template owns it;
 *  alternates are never deleted with it. */
OVI_API OviGeometryProperty* OviGeometryProperty_New(const char* name, uint32_t version);

/** Adds an alternate, which stays whose it was. The index, or the complement of the index where the
 *  alternate of that level was overwritten. */
OVI_API int OviGeometryProperty_AddAlternate(OviGeometryProperty* property,
                                             OviGeometryAlternate* alternate);

/** The index it had, or a number below 0. It is not deleted. */
OVI_API int OviGeometryProperty_RemoveAlternate(OviGeometryProperty* property,
                                                OviGeometryAlternate* alternate);

/** Number of alternates. */
OVI_API int OviGeometryProperty_GetAlternateCount(OviGeometryProperty* property);

/** An alternate, in order of the levels' names. */
OVI_API OviGeometryAlternate* OviGeometryProperty_GetAlternateAt(OviGeometryProperty* property,
                                                                 int index);

/** The alternate of exactly that level, or null. */
OVI_API OviGeometryAlternate* OviGeometryProperty_GetAlternate(OviGeometryProperty* property,
                                                               const char* lod);

/** The level of detail that the alternate stands for (borrowed), or null. */
OVI_API OviLOD* OviGeometryAlternate_GetLOD(OviGeometryAlternate* alternate);

/** Sets the level of detail (borrowed, or null) and the full name; the alternate's place in a
 *  geometry stays. */
OVI_API void OviGeometryAlternate_SetLOD(OviGeometryAlternate* alternate, OviLOD* lod);

#endif
