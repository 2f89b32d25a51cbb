#pragma once

#include <functional>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "ovi/ovi.h"

// Calls with what no host should hand in, and what must come back.

/// One call: its text, which begins with the function's name, and what to do.
struct Call {
    const char* text;
    std::function<::testing::AssertionResult()> run;

    std::string Function() const {
        const std::string call = text;
        const size_t start = call.find("Ovi");
        return call.substr(start, call.find('(') - start);
    }
};

using Calls = std::vector<Call>;

/// The handle that a table hands in: null, or an object of a class that no row asks for.
inline OviObject*& badHandle() {
    static OviObject* handle = nullptr;
    return handle;
}

/// Converts to every handle type.
struct BadHandle {
    template <class Handle> operator Handle*() const {
        return reinterpret_cast<Handle*>(badHandle());
    }
};
constexpr BadHandle bad;

template <class Got, class Wanted>::testing::AssertionResult Gives(Got got, Wanted wanted) {
    bool same = false;
    if constexpr (std::is_same_v<Got, const char*> && !std::is_same_v<Wanted, std::nullptr_t>)
        same = got && std::string(got) == wanted;
    else if constexpr (std::is_integral_v<Got>)
        same = got == static_cast<Got>(wanted);
    else
        same = got == wanted;
    if (same)
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "gives " << ::testing::PrintToString(got);
}

/// A row whose call must give the value.
#define OVI_GIVES(value, call)                                                                     \
    {                                                                                              \
#call, [] { return Gives(call, value); }                                                   \
    }

/// A row whose call gives nothing; it must only come back.
#define OVI_RETURNS(call)                                                                          \
    {                                                                                              \
#call, [] {                                                                                \
            call;                                                                                  \
            return ::testing::AssertionSuccess();                                                  \
        }       \
    }

// The tables, one a family of functions: for handles of model objects, for handles of schema and
// scene objects, and for functions that work on the managers.
Calls ObjectCalls();
Calls SchemaCalls();
Calls InstanceCalls();
Calls ManagerCalls();
