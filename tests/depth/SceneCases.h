#pragma once

#include "Case.h"

/// Each asset stands in a value of the one before.
void RunNested(Run& run);

/// An asset with a geometry in as many levels of detail.
void RunAlternates(Run& run);

/// Each asset has a value that the host holds on to when the scene is gone.
void RunFormerValues(Run& run);

/// An asset gets the properties of a second template, which all come before the first one's.
void RunProperties(Run& run);
