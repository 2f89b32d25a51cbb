#include "XmlScanner.h"

#include "XmlText.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace OviTool {

namespace {

const char kBlanks[] = " \t\r\n";

std::string Lowered(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return text;
}

bool IsComment(const std::string& tag) {
    return tag.size() >= 5 && tag.compare(0, 3, "!--") == 0 &&
           tag.compare(tag.size() - 2, 2, "--") == 0;
}

} // namespace

const std::string* XmlItem::Find(const std::string& attribute) const {
    for (const auto& [key, value] : attributes) {
        if (key == attribute)
            return &value;
    }
    return nullptr;
}

XmlScanner::XmlScanner(std::string text) : text_(std::move(text)) {
    static const std::string kByteOrderMark = "\xef\xbb\xbf";
    if (text_.compare(0, kByteOrderMark.size(), kByteOrderMark) == 0)
        at_ = kByteOrderMark.size();
}

XmlItem XmlScanner::Next() {
    if (closesAtOnce_) {
        closesAtOnce_ = false;
        XmlItem item;
        item.kind = XmlItem::Kind::kEnd;
        item.name = lastName_;
        item.line = line_;
        return item;
    }
    while (at_ < text_.size()) {
        XmlItem item = text_[at_] == '<' ? ReadTag() : ReadText();
        if (item.kind != XmlItem::Kind::kNothing)
            return item;
    }
    return {};
}

/// Moves behind the given place and gives what lies in between.
std::string XmlScanner::Take(std::size_t end) {
    end = std::min(end, text_.size());
    std::string taken = text_.substr(at_, end - at_);
    line_ += static_cast<int>(std::count(taken.begin(), taken.end(), '\n'));
    at_ = end;
    return taken;
}

XmlItem XmlScanner::ReadText() {
    XmlItem item;
    item.line = line_;
    item.text = Unescaped(Take(text_.find('<', at_)));
    if (item.text.find_first_not_of(kBlanks) != std::string::npos)
        item.kind = XmlItem::Kind::kText;
    return item;
}

/// Whatever stands between the brackets: the library ends a tag at the first ">", even in quotes,
/// and takes for an element what is neither a comment nor the header.
XmlItem XmlScanner::ReadTag() {
    XmlItem item;
    item.line = line_;
    std::string tag = Take(text_.find('>', at_)).substr(1);
    Take(at_ + 1);
    if (IsComment(tag)) {
        item.kind = XmlItem::Kind::kComment;
        item.text = Unescaped(tag.substr(3, tag.size() - 5));
        return item;
    }
    if (!sawHeader_) {
        sawHeader_ = true;
        return item;
    }
    const bool isEnd = !tag.empty() && tag[0] == '/';
    const bool isEmpty = !isEnd && !tag.empty() && tag.back() == '/';
    tag = tag.substr(isEnd ? 1 : 0, tag.size() - (isEnd || isEmpty ? 1 : 0));
    item.kind = isEnd ? XmlItem::Kind::kEnd : XmlItem::Kind::kStart;
    item.name = Lowered(tag.substr(0, tag.find_first_of(kBlanks)));
    ReadAttributes(tag, item);
    closesAtOnce_ = isEmpty;
    lastName_ = item.name;
    return item;
}

/// As for the library, any character may serve as the quote.
void XmlScanner::ReadAttributes(const std::string& tag, XmlItem& item) const {
    std::size_t at = tag.find_first_of(kBlanks);
    while ((at = tag.find_first_not_of(kBlanks, at)) != std::string::npos) {
        const std::size_t equals = tag.find('=', at);
        if (equals == std::string::npos)
            return;
        const std::size_t open = tag.find_first_not_of(kBlanks, equals + 1);
        if (open == std::string::npos)
            return;
        const std::size_t close = tag.find(tag[open], open + 1);
        const std::string name = tag.substr(at, equals - at);
        item.attributes.emplace_back(name.substr(0, name.find_last_not_of(kBlanks) + 1),
                                     Unescaped(tag.substr(open + 1, close - open - 1)));
        at = close == std::string::npos ? close : close + 1;
    }
}

bool ReadFile(const std::string& path, std::string& content) {
    std::ifstream file(std::filesystem::u8path(path), std::ios::binary);
    if (!file)
        return false;
    content.assign(std::istreambuf_iterator<char>(file), {});
    return !file.bad();
}

} // namespace OviTool
