#pragma once

#include "Case.h"

/// Each asset stands in a value of the one before.
void RunNested(Run& run);

/// An asset with a geometry in as many levels of detail.
void RunAlternates(Run& run);
