#pragma once

#include <vector>

namespace OviTool {

class Findings;
struct InputFile;

/// Loads the files one after the other and collects what the library reports. Each scene goes into
/// a fresh one; the schema stays.
void LoadFiles(const std::vector<InputFile>& files, Findings& findings);

} // namespace OviTool
