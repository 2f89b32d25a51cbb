#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "ovi/ovi.h"

// Calls of every exported function that takes handles, with one of them replaced.

/// Living objects for the handles of a call, one for each class.
OviObject* LivingObject(int classId);

template <class T> struct HandleClass { static constexpr bool kIsHandle = false; };
#define OVI_HANDLE_CLASS(Handle, id)                                                               \
    template <> struct HandleClass<Handle*> {                                                      \
        static constexpr bool kIsHandle = true;                                                    \
        static constexpr int kId = id;                                                             \
    };
OVI_HANDLE_CLASS(OviObject, OVI_CLASS_ASSET)
OVI_HANDLE_CLASS(OviErrorItem, OVI_CLASS_ERROR_ITEM)
OVI_HANDLE_CLASS(OviNamedObject, OVI_CLASS_LOD)
OVI_HANDLE_CLASS(OviType, OVI_CLASS_CUSTOM_TYPE)
OVI_HANDLE_CLASS(OviEnumeration, OVI_CLASS_ENUMERATION)
OVI_HANDLE_CLASS(OviEnumerationItem, OVI_CLASS_ENUMERATION_ITEM)
OVI_HANDLE_CLASS(OviTemplate, OVI_CLASS_TEMPLATE)
OVI_HANDLE_CLASS(OviProperty, OVI_CLASS_ATTRIBUTE_PROPERTY)
OVI_HANDLE_CLASS(OviAttributeProperty, OVI_CLASS_ATTRIBUTE_PROPERTY)
OVI_HANDLE_CLASS(OviNodeProperty, OVI_CLASS_NODE_PROPERTY)
OVI_HANDLE_CLASS(OviAnchorProperty, OVI_CLASS_ANCHOR_PROPERTY)
OVI_HANDLE_CLASS(OviGeometryProperty, OVI_CLASS_GEOMETRY_PROPERTY)
OVI_HANDLE_CLASS(OviGeometryAlternate, OVI_CLASS_GEOMETRY_ALTERNATE)
OVI_HANDLE_CLASS(OviCommand, OVI_CLASS_COMMAND)
OVI_HANDLE_CLASS(OviLOD, OVI_CLASS_LOD)
OVI_HANDLE_CLASS(OviViewItem, OVI_CLASS_GROUP)
OVI_HANDLE_CLASS(OviGroup, OVI_CLASS_GROUP)
OVI_HANDLE_CLASS(OviView, OVI_CLASS_VIEW)
OVI_HANDLE_CLASS(OviViewProperty, OVI_CLASS_VIEW_PROPERTY)
OVI_HANDLE_CLASS(OviInstance, OVI_CLASS_ASSET)
OVI_HANDLE_CLASS(OviAsset, OVI_CLASS_ASSET)
OVI_HANDLE_CLASS(OviPropertyInstance, OVI_CLASS_ATTRIBUTE_INSTANCE)
OVI_HANDLE_CLASS(OviAttributeInstance, OVI_CLASS_ATTRIBUTE_INSTANCE)
OVI_HANDLE_CLASS(OviNodeInstance, OVI_CLASS_NODE_INSTANCE)
OVI_HANDLE_CLASS(OviAnchorInstance, OVI_CLASS_ANCHOR_INSTANCE)
OVI_HANDLE_CLASS(OviGeometryInstance, OVI_CLASS_GEOMETRY_INSTANCE)
OVI_HANDLE_CLASS(OviLockable, OVI_CLASS_VIEW)
#undef OVI_HANDLE_CLASS

/// A function, which of its arguments are handles, and a call with one of these replaced. The call
/// gives its result as a text.
struct HandleRow {
    std::string function;
    std::vector<size_t> handles;
    std::function<std::string(size_t replaced, void* by)> call;
    bool isRefusedLikeNull; ///< Null among the arguments means nothing of its own.
};

/// An argument: the replacement, a living object, or nothing.
template <class T> T MakeArgument(bool isReplaced, void* by) {
    if constexpr (std::is_same_v<T, OviLockable*>) {
        return isReplaced ? static_cast<T>(by)
                          : OviObject_GetLockable(LivingObject(HandleClass<T>::kId));
    } else if constexpr (HandleClass<T>::kIsHandle) {
        return isReplaced ? static_cast<T>(by) : static_cast<T>(LivingObject(HandleClass<T>::kId));
    } else {
        return T();
    }
}

template <class Result> std::string AsText(Result result) {
    if constexpr (std::is_same_v<Result, const char*>)
        return result ? "'" + std::string(result) + "'" : "null";
    else if constexpr (std::is_pointer_v<Result>)
        return result ? "an address" : "null";
    else
        return std::to_string(result);
}

template <class Result, class... Arguments, size_t... kIndices>
std::string CallWith(Result (*function)(Arguments...), size_t replaced, void* by,
                     std::index_sequence<kIndices...>) {
    const std::tuple<Arguments...> arguments{MakeArgument<Arguments>(kIndices == replaced, by)...};
    if constexpr (std::is_void_v<Result>) {
        std::apply(function, arguments);
        return "nothing";
    } else {
        return AsText(std::apply(function, arguments));
    }
}

template <class Result, class... Arguments>
HandleRow MakeHandleRow(const char* name, Result (*function)(Arguments...), bool isLikeNull) {
    HandleRow row{name, {}, {}, isLikeNull};
    const std::array<bool, sizeof...(Arguments)> isHandle{HandleClass<Arguments>::kIsHandle...};
    for (size_t i = 0; i < isHandle.size(); ++i) {
        if (isHandle[i])
            row.handles.push_back(i);
    }
    row.call = [function](size_t replaced, void* by) {
        return CallWith(function, replaced, by, std::index_sequence_for<Arguments...>());
    };
    return row;
}

/// Every exported function that takes handles.
std::vector<HandleRow> AllHandleRows();
