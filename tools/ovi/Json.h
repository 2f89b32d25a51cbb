#pragma once

#include <nlohmann/json_fwd.hpp>

#include <iosfwd>

namespace OviTool {

/// Prints a document in lines. Files are bytes: what is no UTF-8 is replaced.
void PrintJson(std::ostream& out, const nlohmann::ordered_json& document);

} // namespace OviTool
