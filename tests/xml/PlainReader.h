#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Kor::XMLTest {

/// The rules of the XML dialect, followed byte by byte and without any care for speed. It writes
/// down what a reader has to deliver and report, so that XMLParser can be held against it.
class PlainReader {
public:
    explicit PlainReader(std::string_view text) : text_(text) {}

    std::vector<std::string> Run() {
        events_.push_back(Parse() ? "true" : "false");
        return events_;
    }

private:
    bool ReadUntil(char terminator) {
        token_.clear();
        while (at_ < text_.size()) {
            const char c = text_[at_++];
            line_ += c == '\n';
            if (c == terminator)
                return true;
            token_ += c;
        }
        return false;
    }

    void Report(const std::string& message) {
        events_.push_back("line " + std::to_string(line_) + ": " + message);
    }

    bool Parse() {
        if (!ReadUntil('<')) {
            Report("Missing XML header element");
            return false;
        }
        if (!ReadUntil('>') || !IsHeader()) {
            Report("Invalid XML header element");
            return false;
        }
        while (ReadUntil('<')) {
            if (!token_.empty())
                events_.push_back("text " + Decode(token_));
            const int openingLine = line_;
            if (!ReadUntil('>')) {
                Report("Element opened on line " + std::to_string(openingLine) +
                       " has no closing bracket");
                return false;
            }
            HandleTag();
        }
        return true;
    }

    bool IsHeader() const {
        if (token_.size() + 1 < 6 || token_.back() != '?' || token_[0] != '?')
            return false;
        const std::string name = "xml";
        for (size_t i = 0; i < name.size(); ++i) {
            if (token_[i + 1] != name[i] && token_[i + 1] != name[i] - 32)
                return false;
        }
        return true;
    }

    void HandleTag() {
        const size_t size = token_.size();
        if (token_.substr(0, 1) == "/")
            Close(UpToNul(token_.substr(1)));
        else if (size >= 5 && token_.substr(0, 3) == "!--" && token_.substr(size - 2) == "--")
            events_.push_back("comment " + Decode(token_.substr(3, size - 5)));
        else
            HandleStartTag();
    }

    void HandleStartTag() {
        const bool selfClosing = !token_.empty() && token_.back() == '/';
        size_t at = 0;
        const std::string name = TakeName(at);
        std::map<std::string, std::string> attributes;
        ++at;
        while (at + 1 < token_.size() && TakeAttribute(at, attributes)) {
        }
        open_.push_back(name);
        std::string event = "start " + name;
        for (const auto& [key, value] : attributes)
            event += " " + key + "=" + value;
        events_.push_back(event);
        if (selfClosing)
            Close(name);
    }

    bool TakeAttribute(size_t& at, std::map<std::string, std::string>& attributes) {
        SkipBlanks(at);
        const std::string name = TakeName(at);
        if (name.empty())
            return false;
        SkipBlanks(at);
        if (at >= token_.size() || token_[at] != '=') {
            Report("Missing equal operator");
            return false;
        }
        SkipBlanks(++at);
        const size_t quoteAt = at;
        const size_t endAt =
            quoteAt < token_.size() ? token_.find(token_[quoteAt], quoteAt + 1) : std::string::npos;
        if (endAt == std::string::npos) {
            Report("Missing closing quote");
            return false;
        }
        attributes.insert({name, Decode(token_.substr(quoteAt + 1, endAt - quoteAt - 1))});
        at = endAt + 1;
        return true;
    }

    void Close(const std::string& name) {
        if (open_.empty())
            Report("Attempting to close element <" + name +
                   ">, while no element is currently open");
        else if (open_.back() != name)
            Report("Attempting to close element <" + name +
                   ">, which does not match current element <" + open_.back() + ">");
        else
            open_.pop_back();
        events_.push_back("end " + name);
    }

    std::string TakeName(size_t& at) const {
        const size_t begin = at;
        while (at < token_.size() && ((token_[at] >= 'A' && token_[at] <= 'Z') ||
                                      (token_[at] >= '0' && token_[at] <= '9') ||
                                      (token_[at] >= '_' && token_[at] <= 'z')))
            ++at;
        return token_.substr(begin, at - begin);
    }

    void SkipBlanks(size_t& at) const {
        while (at < token_.size() && static_cast<signed char>(token_[at]) <= 32)
            ++at;
    }

    static std::string UpToNul(const std::string& text) { return text.c_str(); }

    static std::string Decode(const std::string& bytes) {
        static const std::map<std::string, char> entities{
            {"&gt;", '>'}, {"&lt;", '<'}, {"&apos;", '\''}, {"&quot;", '"'}, {"&amp;", '&'}};
        const std::string text = UpToNul(bytes);
        std::string decoded;
        for (size_t at = 0; at < text.size();) {
            const size_t end = text.find(';', at);
            const auto entity = entities.find(
                end == std::string::npos ? std::string() : text.substr(at, end + 1 - at));
            decoded += entity == entities.end() ? text[at] : entity->second;
            at += entity == entities.end() ? 1 : entity->first.size();
        }
        return decoded;
    }

    std::string_view text_;
    size_t at_ = 0;
    int line_ = 1;
    std::string token_;
    std::vector<std::string> open_;
    std::vector<std::string> events_;
};

} // namespace Kor::XMLTest
