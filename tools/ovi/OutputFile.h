#pragma once

#include <string>

namespace OviTool {

/// Writes a file, which is replaced only once its new content is complete. Throws with the reason
/// when that fails.
void WriteFile(const std::string& path, const std::string& content);

/// Writes to the file, or to the standard output when there is no path.
void WriteOutput(const std::string& path, const std::string& content);

} // namespace OviTool
