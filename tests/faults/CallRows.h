#pragma once

#include <ostream>
#include <vector>

#include "faults/FailureRuns.h"

/// One call of an exported function with what it needs to succeed.
struct CallRow {
    const char* text;
    Promise promise;
    Step step;

    friend void PrintTo(const CallRow& row, std::ostream* out) { *out << row.text; }
};

using CallRows = std::vector<CallRow>;

/// A result as a number: of pointers only whether there is one.
template <class T> long AsNumber(T* pointer) {
    return pointer ? 1 : 0;
}
template <class T> long AsNumber(T number) {
    return static_cast<long>(number);
}

/// A call that is done or not, and whose result says which.
#define OVI_CALL(call)                                                                             \
    {                                                                                              \
#call, Promise::kAllOrNothing, []([[maybe_unused]] Model & m) { return AsNumber(call); }   \
    }

/// The same of a call without a result.
#define OVI_DO(call)                                                                               \
    {                                                                                              \
#call, Promise::kAllOrNothing, []([[maybe_unused]] Model& m) -> long {                     \
            call;                                                                                  \
            return 0;                                                                              \
        }       \
    }

/// A call that works on many objects and may stop between them.
#define OVI_PARTS(call)                                                                            \
    {                                                                                              \
#call, Promise::kInParts, []([[maybe_unused]] Model& m) -> long {                          \
            call;                                                                                  \
            return 0;                                                                              \
        }       \
    }

// Every exported function at least once, by families.
CallRows ObjectRows();
CallRows TypeRows();
CallRows SchemaRows();
CallRows NodeRows();
CallRows ManagerRows();
CallRows SceneRows();
