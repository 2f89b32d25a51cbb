#pragma once

#include "../depth/Case.h"

// Each makes a list as long as the run's size, and changes it in every order.
void RunLabels(Run& run);
void RunAssetsOfOneName(Run& run);
void RunCallbacks(Run& run);
void RunChildren(Run& run);
void RunParents(Run& run);
void RunDeclarations(Run& run);
void RunViews(Run& run);
void RunGroupItems(Run& run);
void RunCommands(Run& run);
void RunAlternates(Run& run);
void RunLevels(Run& run);
void RunEnumerationItems(Run& run);

// Each asks the same questions of a list as long as the run's size.
void RunUsing(Run& run);
void RunTemplatesOfAnAsset(Run& run);
void RunEnumerationValues(Run& run);
void RunVersions(Run& run);
