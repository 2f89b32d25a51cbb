#include "XmlContent.h"

#include <sstream>

namespace OviTool {

namespace {

/// The words of a text: the library may indent its lines anew.
std::string WithSingleBlanks(const std::string& text) {
    std::istringstream words(text);
    std::string result;
    for (std::string word; words >> word;)
        result += (result.empty() ? "" : " ") + word;
    return result;
}

} // namespace

std::size_t XmlPlaces::Get(std::size_t parent, const std::string& step) {
    return numbers_.emplace(std::make_pair(parent, step), numbers_.size() + 1).first->second;
}

XmlContent::XmlContent(const std::string& text, const FormatRules& rules, XmlPlaces& places)
    : rules_(rules), places_(places) {
    XmlScanner scanner(text);
    for (XmlItem item = scanner.Next(); item.kind != XmlItem::Kind::kNothing;
         item = scanner.Next()) {
        if (item.kind == XmlItem::Kind::kStart)
            Start(item);
        else if (item.kind == XmlItem::Kind::kEnd)
            End();
        else if (item.kind == XmlItem::Kind::kComment)
            comments_.push_back({WithSingleBlanks(item.text), item.line});
        else if (!open_.empty() && rules_.HasText(open_.back().name))
            open_.back().text += item.text;
        else
            extras_.push_back({"these characters", item.line});
    }
}

void XmlContent::Start(const XmlItem& item) {
    const std::size_t parent = open_.empty() ? 0 : open_.back().place;
    open_.push_back({parent, item.name, {}, item.line, 0, rules_.IsKnown(item.name)});
    if (!open_.back().isKnown && !rules_.IsReportedByLibrary(item.name))
        extras_.push_back({"the element <" + item.name + ">", item.line});
    if (!open_.back().isKnown)
        return;
    if (item.name != "value" && !rules_.IsLeftToLibrary(item.name))
        StartKnown(item);
}

void XmlContent::StartKnown(const XmlItem& item) {
    OpenElement& self = open_.back();
    self.place =
        places_.Get(rules_.StandsAnywhere(item.name) ? 0 : self.place, rules_.GetIdentity(item));
    statements_.push_back({self.place, item.name, {}, {}, item.line});
    for (const auto& [attribute, value] : item.attributes) {
        if (item.name == "attribute" && attribute == "value")
            AddValue(self, value, item.line);
        else if (!rules_.IsDefault(item.name, attribute, value))
            statements_.push_back({self.place, item.name, attribute, value, item.line});
    }
}

void XmlContent::End() {
    if (open_.empty())
        return;
    const OpenElement closed = std::move(open_.back());
    open_.pop_back();
    if (!closed.isKnown || !rules_.HasText(closed.name))
        return;
    if (closed.name == "value" && !open_.empty())
        AddValue(open_.back(), closed.text, closed.line);
    else
        statements_.push_back({closed.place, closed.name, "text", closed.text, closed.line});
}

/// A value of one element is written as an attribute, several as elements of their own.
void XmlContent::AddValue(OpenElement& attribute, const std::string& text, int line) {
    statements_.push_back({attribute.place, "attribute",
                           "value " + std::to_string(++attribute.valueCount), text, line});
}

} // namespace OviTool
