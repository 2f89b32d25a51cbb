#pragma once

#include "Case.h"

/// Each asset stands in a value of the one before.
void RunNested(Run& run);
