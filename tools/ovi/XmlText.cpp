#include "XmlText.h"

#include <utility>

namespace OviTool {

std::string Unescaped(const std::string& text) {
    static const std::pair<std::string, char> kEntities[] = {
        {"&quot;", '"'}, {"&amp;", '&'}, {"&apos;", '\''}, {"&lt;", '<'}, {"&gt;", '>'}};
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        result += text[at];
        for (const auto& [entity, character] : kEntities) {
            if (text.compare(at, entity.size(), entity) == 0) {
                result.back() = character;
                at += entity.size() - 1;
                break;
            }
        }
    }
    return result;
}

} // namespace OviTool
