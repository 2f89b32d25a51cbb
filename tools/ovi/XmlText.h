#pragma once

#include <string>

namespace OviTool {

/// The text with the entities of the five characters that the library escapes turned back.
std::string Unescaped(const std::string& text);

} // namespace OviTool
