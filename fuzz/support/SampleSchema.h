#pragma once

/// Loads the sample schema and fuzz/Kinds.template: every kind of property, in several versions.
/// A finding when that reports anything but the one type that the file leaves unknown.
void LoadSampleSchema();
