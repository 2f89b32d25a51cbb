#pragma once

#include <functional>
#include <string>

#include "faults/Model.h"

/// What must hold of a step that runs out of memory.
enum class Promise {
    kAllOrNothing, ///< It is done or it is not, and its result says which.
    kInParts,      ///< It may be done in part; what was there before and is not its business stays.
    kWhole, ///< It may be done in part and concerns everything: the model must be whole, no more.
};

/// A step on a model. It gives what tells success from failure: a count, an index, a truth value,
/// or whether there is an object.
using Step = std::function<long(Model&)>;

/// Runs a step over and over, each time with a fresh model and another allocation that fails, until
/// none fails any more; once with that allocation failing alone, once with all behind it failing
/// too. Everything that does not hold is a failure of the current test. Gives the number of runs in
/// which an allocation failed.
///
/// What is done afterwards, without failures, must lead to the state that the step by itself leads
/// to.
long RunWithFailures(const char* name, Promise promise, const Step& step,
                     const std::function<void(Model&)>& afterwards = nullptr);
