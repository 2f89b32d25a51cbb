#pragma once

#include "Case.h"

/// Each template extends the one before.
void RunChain(Run& run);

/// Each level has two templates over one and one over the two: 2^size paths to the first.
void RunDiamonds(Run& run);

/// Each template has an attribute of the one before.
void RunContained(Run& run);

/// Diamonds on a long chain with an anchor at its end.
void RunAnchors(Run& run);

/// Views of one template that all show one property, from the last to the first.
void RunViews(Run& run);

/// Each type is based on the one before.
void RunTypes(Run& run);

/// A view with a group in a group in a group.
void RunGroups(Run& run);

/// As many files with a template each.
void RunFiles(Run& run);

/// Saves a file under another name, unloads it and loads what was saved.
void SaveAndUnload(Run& run, const std::string& path);

/// Each package uses the one before.
void RunPackages(Run& run);
