#pragma once

#include <tuple>
#include <vector>

#include "calls/World.h"
#include "core/ClassId.h"
#include "support/Touch.h"

/// One exported function that the fuzzer can call.
struct Call {
    enum Traits : unsigned {
        kReads = 1,   ///< Changes nothing.
        kOutside = 2, ///< Must not be called while a callback runs.
        kDrastic = 4, ///< Ends or replaces what calls further out may be working on.
    };

    const char* name;
    void (*run)(World&);
    unsigned traits;
};

// -- arguments by their type ----------------------------------------------------------------------

template <class Handle> struct HandleClass;
#define OVI_HANDLE_CLASS(Handle, id)                                                               \
    template <> struct HandleClass<Handle> { static constexpr int kId = id; };
OVI_HANDLE_CLASS(OviObject, OVI_CLASS_OBJECT)
OVI_HANDLE_CLASS(OviErrorItem, OVI_CLASS_ERROR_ITEM)
OVI_HANDLE_CLASS(OviNamedObject, OVI_CLASS_NAMED_OBJECT)
OVI_HANDLE_CLASS(OviType, OVI_CLASS_TYPE)
OVI_HANDLE_CLASS(OviCustomType, OVI_CLASS_CUSTOM_TYPE)
OVI_HANDLE_CLASS(OviEnumeration, OVI_CLASS_ENUMERATION)
OVI_HANDLE_CLASS(OviEnumerationItem, OVI_CLASS_ENUMERATION_ITEM)
OVI_HANDLE_CLASS(OviTemplate, OVI_CLASS_TEMPLATE)
OVI_HANDLE_CLASS(OviProperty, OVI_CLASS_PROPERTY)
OVI_HANDLE_CLASS(OviAttributeProperty, OVI_CLASS_ATTRIBUTE_PROPERTY)
OVI_HANDLE_CLASS(OviNodeProperty, OVI_CLASS_NODE_PROPERTY)
OVI_HANDLE_CLASS(OviAnchorProperty, OVI_CLASS_ANCHOR_PROPERTY)
OVI_HANDLE_CLASS(OviGeometryProperty, OVI_CLASS_GEOMETRY_PROPERTY)
OVI_HANDLE_CLASS(OviGeometryAlternate, OVI_CLASS_GEOMETRY_ALTERNATE)
OVI_HANDLE_CLASS(OviCommand, OVI_CLASS_COMMAND)
OVI_HANDLE_CLASS(OviLOD, OVI_CLASS_LOD)
OVI_HANDLE_CLASS(OviViewItem, OVI_CLASS_VIEW_ITEM)
OVI_HANDLE_CLASS(OviGroup, OVI_CLASS_GROUP)
OVI_HANDLE_CLASS(OviView, OVI_CLASS_VIEW)
OVI_HANDLE_CLASS(OviViewProperty, OVI_CLASS_VIEW_PROPERTY)
OVI_HANDLE_CLASS(OviInstance, OVI_CLASS_INSTANCE)
OVI_HANDLE_CLASS(OviAsset, OVI_CLASS_ASSET)
OVI_HANDLE_CLASS(OviPropertyInstance, OVI_CLASS_PROPERTY_INSTANCE)
OVI_HANDLE_CLASS(OviAttributeInstance, OVI_CLASS_ATTRIBUTE_INSTANCE)
OVI_HANDLE_CLASS(OviNodeInstance, OVI_CLASS_NODE_INSTANCE)
OVI_HANDLE_CLASS(OviAnchorInstance, OVI_CLASS_ANCHOR_INSTANCE)
OVI_HANDLE_CLASS(OviGeometryInstance, OVI_CLASS_GEOMETRY_INSTANCE)
#undef OVI_HANDLE_CLASS

template <class T> struct Argument;

template <class Handle> struct Argument<Handle*> {
    static Handle* Take(World& world) {
        return reinterpret_cast<Handle*>(world.PickObject(HandleClass<Handle>::kId));
    }
};

/// Only the lockable part of an object may be handed in: nothing can tell it from other addresses.
template <> struct Argument<OviLockable*> {
    static OviLockable* Take(World& world) {
        return OviObject_GetLockable(Argument<OviObject*>::Take(world));
    }
};

template <> struct Argument<const char*> {
    static const char* Take(World& world) { return world.PickText(); }
};

template <> struct Argument<int> {
    static int Take(World& world) { return world.PickInt(); }
};

template <> struct Argument<std::uint32_t> {
    static std::uint32_t Take(World& world) { return static_cast<std::uint32_t>(world.PickInt()); }
};

template <> struct Argument<bool> {
    static bool Take(World& world) { return world.GetInput().TakeByte() % 2 != 0; }
};

// -- results by their type ------------------------------------------------------------------------

inline void Look(const char* text) {
    if (text)
        Touch(text);
}

/// Reads the object behind a handle.
template <class Handle> auto Look(Handle* handle) -> decltype(HandleClass<Handle>::kId, void()) {
    OviObject_GetClass(handle);
}

inline void Look(const void*) {}
inline void Look(OviLockable*) {}
inline void Look(int) {}

/// Calls with arguments of the input's choice, taken from left to right with every compiler.
template <class Result, class... Arguments>
Result Invoke(World& world, Result (*function)(Arguments...)) {
    const std::tuple<Arguments...> arguments{Argument<Arguments>::Take(world)...};
    return std::apply(function, arguments);
}

template <class Result, class... Arguments>
void InvokeAndLook(World& world, Result (*function)(Arguments...)) {
    if constexpr (std::is_void_v<Result>)
        Invoke(world, function);
    else
        Look(Invoke(world, function));
}

// -- rows -----------------------------------------------------------------------------------------

#define OVI_ROW(function, traits)                                                                  \
    Call {                                                                                         \
#function, [](World & world) { InvokeAndLook(world, &function); }, traits                  \
    }
/// Looks without changing anything.
#define OVI_READS(function) OVI_ROW(function, Call::kReads)
/// Changes something, and may make objects, end them or hand them over.
#define OVI_CHANGES(function) OVI_ROW(function, 0)
/// Gives an object that belongs to the host.
#define OVI_MAKES(function)                                                                        \
    Call {                                                                                         \
#function, [](World & world) { world.Own(Invoke(world, &function)); }, 0                   \
    }
/// Needs a function of its own, whose name is the second argument.
#define OVI_SPECIAL(function, run, traits)                                                         \
    Call {                                                                                         \
#function, &run, traits                                                                    \
    }

// The tables, in the order of the public headers. The bytes of an input name places in them: a new
// row goes to the end of the last table, so that the committed inputs keep their meaning.
std::vector<Call> CallsOfObjects();
std::vector<Call> CallsOfTypes();
std::vector<Call> CallsOfSchema();
std::vector<Call> CallsOfManager();
std::vector<Call> CallsOfInstances();

/// All tables.
const std::vector<Call>& AllCalls();
