#pragma once

#include <string>
#include <vector>

/// What does not hold although it always must: registries show as many objects as they say, in the
/// order of their keys, and find each by its key; parents and children, templates and properties,
/// groups and items know each other. Empty when all is well.
std::vector<std::string> CheckModel();

/// Renames all objects of the schema and the scene so that every list must follow, and says what
/// does not hold then.
std::vector<std::string> CheckAfterRenaming();
