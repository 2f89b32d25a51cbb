#pragma once

#include "api/CallTable.h"

/// The table for node, anchor and geometry properties and instances, levels of detail, groups and
/// view properties.
Calls NodeCalls();
