#include "Json.h"

#include <nlohmann/json.hpp>

#include <ostream>

namespace OviTool {

void PrintJson(std::ostream& out, const nlohmann::ordered_json& document) {
    using Handler = nlohmann::ordered_json::error_handler_t;
    out << document.dump(2, ' ', false, Handler::replace) << '\n';
}

} // namespace OviTool
