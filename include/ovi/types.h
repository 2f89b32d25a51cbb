/*
 * Handles and constants of OviCore.
 *
 * A handle is a pointer to an object inside the library, of a type of its own for each class. In
 * C++ a handle converts to those of its base classes (a template's to a type's or a named
 * object's) and not the other way: ask OviObject_ImplementsClass, then use static_cast. In C all
 * handles convert freely.
 *
 * Every function is there since 1.0.0 unless its comment names a later version.
 *
 * Rules for all functions, where a function does not say otherwise:
 * - The library is used from one thread at a time.
 * - Texts handed in are NUL-terminated 8-bit text and are copied; a null text reads as "". Texts
 *   handed out belong to the library and stay valid until the text they show changes or its object
 *   dies; those from tables (labels, descriptions, search paths) until the table changes.
 * - Paths are 8-bit text and are kept as they were given. Windows takes a path as UTF-8 where it is
 *   valid UTF-8, otherwise in the system's code page; Linux takes a backslash as "/", and looks for
 *   what does not exist as written (of a file to be saved, its directory) without regard to ASCII
 *   case.
 * - A null handle, a handle of another class or an index out of range never crashes: the result is
 *   null for a pointer, false for a bool, 0 for a count or a number, -1 for an index result, "" for
 *   a text that is always there. Nothing is changed then. What a handle points to must be alive.
 * - No C++ exception leaves the library; a call that runs out of memory gives the same results.
 * - `..._New` functions and OviObject_Clone give objects that belong to the caller until they are
 *   handed to an owner; the caller frees them with OviObject_Delete. No function makes commands,
 *   levels of detail, alternates, enumerations or their items: they come from template files, and a
 *   host gets further ones with OviObject_Clone.
 * - Index results of lists sorted by key: 0 or more is the place of a new entry; below 0 the
 *   bitwise complement (~result) of the place where an entry of that key was overwritten (or, for
 *   searches and removals, where one would be inserted).
 */
#ifndef OVI_TYPES_H
#define OVI_TYPES_H

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#include "ovi/export.h"

#if defined(__cplusplus)

#define OVI_NO_INSTANCES(Name)                                                                     \
    Name() = delete;                                                                               \
    Name(const Name&) = delete;                                                                    \
    Name& operator=(const Name&) = delete;
#define OVI_HANDLE(Name, Base)                                                                     \
    struct Name : Base {                                                                           \
        OVI_NO_INSTANCES(Name)                                                                     \
    };

/** Any object of the library. */
struct OviObject {
    OVI_NO_INSTANCES(OviObject)
};
/** The lock-state part of an object; see OviObject_GetLockable. */
struct OviLockable {
    OVI_NO_INSTANCES(OviLockable)
};

OVI_HANDLE(OviErrorItem, OviObject)
OVI_HANDLE(OviNamedObject, OviObject)
OVI_HANDLE(OviType, OviNamedObject)
OVI_HANDLE(OviCustomType, OviType)
OVI_HANDLE(OviEnumeration, OviType)
OVI_HANDLE(OviEnumerationItem, OviType)
OVI_HANDLE(OviTemplate, OviType)
OVI_HANDLE(OviProperty, OviNamedObject)
OVI_HANDLE(OviAttributeProperty, OviProperty)
OVI_HANDLE(OviNodeProperty, OviAttributeProperty)
OVI_HANDLE(OviAnchorProperty, OviNodeProperty)
OVI_HANDLE(OviGeometryProperty, OviProperty)
OVI_HANDLE(OviGeometryAlternate, OviNodeProperty)
OVI_HANDLE(OviCommand, OviNamedObject)
OVI_HANDLE(OviLOD, OviNamedObject)
OVI_HANDLE(OviViewItem, OviNamedObject)
OVI_HANDLE(OviGroup, OviViewItem)
OVI_HANDLE(OviView, OviGroup)
OVI_HANDLE(OviViewProperty, OviViewItem)
OVI_HANDLE(OviInstance, OviNamedObject)
OVI_HANDLE(OviAsset, OviInstance)
OVI_HANDLE(OviPropertyInstance, OviNamedObject)
OVI_HANDLE(OviAttributeInstance, OviPropertyInstance)
OVI_HANDLE(OviNodeInstance, OviAttributeInstance)
OVI_HANDLE(OviAnchorInstance, OviNodeInstance)
OVI_HANDLE(OviGeometryInstance, OviPropertyInstance)

#undef OVI_HANDLE
#undef OVI_NO_INSTANCES

#else

typedef void OviObject;
typedef void OviLockable;
typedef void OviErrorItem;
typedef void OviNamedObject;
typedef void OviType;
typedef void OviCustomType;
typedef void OviEnumeration;
typedef void OviEnumerationItem;
typedef void OviTemplate;
typedef void OviProperty;
typedef void OviAttributeProperty;
typedef void OviNodeProperty;
typedef void OviAnchorProperty;
typedef void OviGeometryProperty;
typedef void OviGeometryAlternate;
typedef void OviCommand;
typedef void OviLOD;
typedef void OviViewItem;
typedef void OviGroup;
typedef void OviView;
typedef void OviViewProperty;
typedef void OviInstance;
typedef void OviAsset;
typedef void OviPropertyInstance;
typedef void OviAttributeInstance;
typedef void OviNodeInstance;
typedef void OviAnchorInstance;
typedef void OviGeometryInstance;

#endif

/** Class numbers, as OviObject_GetClass gives them. They only tell classes apart and need not
 *  follow one another. */
enum {
    OVI_CLASS_OBJECT = 0,
    OVI_CLASS_TEMPLATE = 1,
    OVI_CLASS_ATTRIBUTE_INSTANCE = 2,
    OVI_CLASS_ATTRIBUTE_PROPERTY = 3,
    OVI_CLASS_FLOAT_TYPE = 4, /**< "FLOAT" and "DOUBLE" */
    OVI_CLASS_ENUMERATION = 5,
    OVI_CLASS_ENUMERATION_ITEM = 6,
    OVI_CLASS_GEOMETRY_ALTERNATE = 7,
    OVI_CLASS_GEOMETRY_INSTANCE = 8,
    OVI_CLASS_GEOMETRY_PROPERTY = 9,
    OVI_CLASS_INSTANCE = 10,
    OVI_CLASS_INT_TYPE = 11, /**< all eight integer widths */
    OVI_CLASS_LOD = 12,
    OVI_CLASS_NODE_INSTANCE = 13,
    OVI_CLASS_NODE_PROPERTY = 14,
    OVI_CLASS_PROPERTY = 15,
    OVI_CLASS_PROPERTY_INSTANCE = 16,
    OVI_CLASS_STRING_TYPE = 17,
    OVI_CLASS_TYPE = 20,
    OVI_CLASS_ANCHOR_PROPERTY = 28,
    OVI_CLASS_ASSET = 29,
    OVI_CLASS_ANCHOR_INSTANCE = 30,
    OVI_CLASS_NAMED_OBJECT = 31,
    OVI_CLASS_ERROR_ITEM = 32,
    OVI_CLASS_COMMAND = 34,
    OVI_CLASS_BOOL_TYPE = 35,
    OVI_CLASS_GROUP = 36,
    OVI_CLASS_VIEW_ITEM = 37,
    OVI_CLASS_VIEW_PROPERTY = 38,
    OVI_CLASS_VIEW = 39,
    OVI_CLASS_CUSTOM_TYPE = 41
};

/** Levels of diagnostics, as bits. The library reports errors and warnings; 4 and 8 are counted
 *  for hosts that add items of their own. */
enum { OVI_LEVEL_ERROR = 1, OVI_LEVEL_WARNING = 2 };

/** Events. The comment names the list of callbacks that receives it, the object it is about, and
 *  the argument. Texts and addresses given as arguments are valid during the callback only. */
enum {
    /** Instance list; the instance; the template. Sent before the property instances exist. */
    OVI_EVENT_TEMPLATE_ADDED = 0x1001,
    /** Instance list; the instance; the template. */
    OVI_EVENT_TEMPLATE_REMOVED = 0x1002,
    /** Instance list; the instance; the old template. */
    OVI_EVENT_TEMPLATE_UPDATED = 0x1003,
    /** Instance list; the instance; null. The new version is deprecated, the old one was not. */
    OVI_EVENT_TEMPLATE_DEPRECATED = 0x1004,
    /** Instance list; the asset; address of the int that the list's insertion gave. */
    OVI_EVENT_ASSET_ADDED = 0x1005,
    /** Instance list; the asset; address of the int that the list's removal gave. */
    OVI_EVENT_ASSET_REMOVED = 0x1006,
    /** Instance list; the instance; the new name (text), also one that is then refused. */
    OVI_EVENT_INSTANCE_RENAMED = 0x1007,
    /** Instance list; the asset; the file name (text). The file is referenced for the first time.
     */
    OVI_EVENT_REFERENCE_FILE = 0x1008,
    /** Instance list; the asset; the file name (text). The last reference is gone. */
    OVI_EVENT_UNREFERENCE_FILE = 0x1009,
    /** Instance list; the asset; the new reference (text). Sent before the change. */
    OVI_EVENT_REFERENCE_CHANGED = 0x100A,
    /** Property-instance list; the property instance; address of the proposed bool, which a
     *  callback may change. */
    OVI_EVENT_BINDING_LOCKED_CHANGED = 0x2000,
    /** Property-instance list; as OVI_EVENT_BINDING_LOCKED_CHANGED. */
    OVI_EVENT_VALUE_LOCKED_CHANGED = 0x2001,
    /** Property-instance list; the property instance; the new property. */
    OVI_EVENT_PROPERTY_UPDATED = 0x2002,
    /** Property-instance list; the property instance; the new property. */
    OVI_EVENT_PROPERTY_RENAMED = 0x2003,
    /** Property-instance list; the property instance; null. */
    OVI_EVENT_PROPERTY_DEPRECATED = 0x2004,
    /** Instance list; the instance; the property instance. */
    OVI_EVENT_PROPERTY_ADDED = 0x2005,
    /** Instance list; the instance; the property instance that is about to be deleted (a callback
     *  may also do so itself) - or, during the update of a template, the old property whose
     *  property instance stays. */
    OVI_EVENT_PROPERTY_REMOVED = 0x2006,
    /** Property-instance list; the property instance; the command's name (text, a copy). Follows
     *  the event that triggers the command. */
    OVI_EVENT_EXECUTE_COMMAND = 0x2009,
    /** Property-instance list; the property instance; the new binding (text). Sent before the
     *  change. */
    OVI_EVENT_BINDING_CHANGED = 0x3000,
    /** Property-instance list; the property instance; the text of element 0 of the new value. Sent
     *  before the change. */
    OVI_EVENT_ATTRIBUTE_VALUE_CHANGED = 0x4000
};

/** Hosts, as bits. */
enum { OVI_HOST_NONE = 0, OVI_HOST_MAYA = 1, OVI_HOST_3DSMAX = 2 };

/** Kinds of levels of detail. */
enum { OVI_LOD_BOUNDING_VOLUME = 0, OVI_LOD_COLLISION = 1, OVI_LOD_SURFACE = 2 };

/** Primitive shapes that a level of detail may allow, as bits. */
enum {
    OVI_SHAPE_POLYGONS = 1,
    OVI_SHAPE_CUBE = 2,
    OVI_SHAPE_SPHERE = 4,
    OVI_SHAPE_CYLINDER = 8,
    OVI_SHAPE_CONE = 16,
    OVI_SHAPE_PYRAMID = 32
};

/**
 * A host's function for events, called inside the library call that causes them. `object` is the
 * OviInstance or OviPropertyInstance concerned. A callback may do whatever a host may do elsewhere,
 * but for registering and unregistering callbacks: it may delete the object that it is told of, its
 * asset, its template or the scene, load and unload files, and end the library. What it deletes,
 * clears, unloads or ends is gone for every look-up at once and its handle is dead; the memory
 * stays until the outermost call returns, which then gives the result that it can. Once an object
 * is gone the callbacks behind are not told of it.
 */
typedef void (*OviCallback)(void* userData, void* object, int event, void* argument);

#endif
