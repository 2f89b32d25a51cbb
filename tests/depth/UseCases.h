#pragma once

#include "Case.h"

/// The chain of templates while the host holds a template that is not registered.
void RunChainBesideClone(Run& run);

/// Each template has a default value with an instance of the next one, by the order of their names,
/// against it, and in neither order.
void RunDefaults(Run& run);

/// Versions of one template that list the same properties.
void RunVersions(Run& run);

/// A second version of a template whose attributes are of templates with as many attributes.
void RunFullVersions(Run& run);
