#include "xml/XMLWriter.h"

#include "core/ByteStreams.h"
#include "core/NumberText.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace Kor {

namespace {

constexpr size_t kBlockSize = 64 * 1024;

/// What stands for a byte in a text; empty for a byte that stands for itself.
std::string_view GetEscape(char c) {
    switch (c) {
    case '"':
        return "&quot;";
    case '&':
        return "&amp;";
    case '\'':
        return "&apos;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    default:
        return {};
    }
}

/// The bytes that end a run of plain ones, the NUL byte among them.
constexpr std::array<bool, 256> MakeSpecialBytes() {
    std::array<bool, 256> special{};
    for (const char c : {'\0', '"', '&', '\'', '<', '>'})
        special[static_cast<unsigned char>(c)] = true;
    return special;
}

constexpr std::array<bool, 256> kSpecialBytes = MakeSpecialBytes();

/// Many, since an indentation may be as deep as a caller likes.
constexpr std::array<char, 4096> MakeTabs() {
    std::array<char, 4096> tabs{};
    for (char& tab : tabs)
        tab = '\t';
    return tabs;
}

constexpr std::array<char, 4096> kTabs = MakeTabs();

bool IsSpecial(char c) {
    return kSpecialBytes[static_cast<unsigned char>(c)];
}

constexpr size_t kLongestEscape = 6;

size_t SizeOf(std::string_view text) {
    return text.size();
}

char* CopyTo(char* to, std::string_view text) {
    return to + text.copy(to, text.size());
}

// Literals are copied without a call.
template <size_t kSize> constexpr size_t SizeOf(const char (&)[kSize]) {
    return kSize - 1;
}

template <size_t kSize> char* CopyTo(char* to, const char (&text)[kSize]) {
    std::memcpy(to, text, kSize - 1);
    return to + kSize - 1;
}

} // namespace

XMLWriter::~XMLWriter() {
    Close();
}

void XMLWriter::AddIndent(int levels) {
    if (levels <= 0)
        return;
    if (openNames_.empty())
        indent_ += static_cast<size_t>(levels);
    else
        openNames_.insert(openNames_.end(), static_cast<size_t>(levels), "");
}

void XMLWriter::Open(ByteSink& sink, bool writeHeader) {
    Close();
    if (!buffer_)
        buffer_.reset(new char[kBlockSize]);
    sink_ = &sink;
    tagOpen_ = hasChildren_ = failed_ = false;
    if (writeHeader)
        Put("<?xml version='1.0' encoding='UTF-8'?>");
}

void XMLWriter::StartElement(const char* name) {
    CloseTag();
    BreakLine();
    openNames_.emplace_back(name ? name : "");
    PutAll("<", openNames_.back());
    tagOpen_ = true;
    hasChildren_ = false;
}

void XMLWriter::WriteAttribute(const char* name, std::string_view value) {
    if (!tagOpen_)
        return;
    PutAll(" ", std::string_view(name ? name : ""), "='");
    PutEscaped(value);
    PutAll("'");
}

void XMLWriter::WriteAttribute(const char* name, int value) {
    char text[kNumberTextCapacity];
    WriteAttribute(name, std::string_view(text, FormatInteger(value, text, sizeof text)));
}

void XMLWriter::WriteAttribute(const char* name, double value) {
    char text[kNumberTextCapacity];
    WriteAttribute(name, std::string_view(text, FormatDouble(value, text, sizeof text)));
}

void XMLWriter::WriteText(std::string_view text) {
    CloseTag();
    PutEscaped(text);
}

// A comment does not count as a child: an element that holds nothing else gets its end tag right
// behind it.
void XMLWriter::WriteComment(std::string_view text) {
    CloseTag();
    BreakLine();
    Put("<!--");
    PutEscaped(text);
    Put("-->");
}

void XMLWriter::EndElement() {
    std::string_view name;
    if (!openNames_.empty()) {
        name = openNames_.back();
        openNames_.pop_back();
    } else if (indent_ > 0) {
        --indent_;
    } else {
        return;
    }
    if (tagOpen_) {
        PutAll("/>");
    } else {
        if (hasChildren_)
            BreakLine();
        PutAll("</", name, ">");
    }
    tagOpen_ = false;
    hasChildren_ = true;
}

bool XMLWriter::Close() {
    while (sink_ && (indent_ > 0 || !openNames_.empty()))
        EndElement();
    Abandon();
    return !failed_;
}

void XMLWriter::Abandon() {
    Flush();
    sink_ = nullptr;
    openNames_.clear();
    indent_ = 0;
}

void XMLWriter::Flush() {
    if (sink_ && !failed_ && buffered_ > 0)
        failed_ = !sink_->Write({buffer_.get(), buffered_});
    buffered_ = 0;
}

void XMLWriter::CloseTag() {
    if (tagOpen_)
        PutAll(">");
    tagOpen_ = false;
}

void XMLWriter::BreakLine() {
    const std::string_view tabs(kTabs.data(), kTabs.size());
    size_t levels = indent_ + openNames_.size();
    if (levels <= tabs.size()) {
        PutAll("\n", tabs.substr(0, levels));
        return;
    }
    Put("\n");
    for (; levels > tabs.size(); levels -= tabs.size())
        Put(tabs);
    Put(tabs.substr(0, levels));
}

/// The place for that many bytes, at most a block; null without a sink.
char* XMLWriter::Reserve(size_t size) {
    if (!sink_)
        return nullptr;
    if (size > kBlockSize - buffered_)
        Flush();
    return buffer_.get() + buffered_;
}

void XMLWriter::Put(std::string_view text) {
    if (text.size() > kBlockSize) {
        Flush();
        if (sink_ && !failed_)
            failed_ = !sink_->Write(text);
    } else if (char* to = Reserve(text.size())) {
        buffered_ += text.copy(to, text.size());
    }
}

/// Several texts at once; of names and tabs, a few bytes each.
template <class... Texts> void XMLWriter::PutAll(const Texts&... texts) {
    const size_t size = (SizeOf(texts) + ...);
    if (size > kBlockSize) {
        (Put(texts), ...);
    } else if (char* to = Reserve(size)) {
        ((to = CopyTo(to, texts)), ...);
        buffered_ += size;
    }
}

/// Texts are mostly short: looking at a byte and copying it go together.
void XMLWriter::PutEscaped(std::string_view text) {
    constexpr size_t kPart = kBlockSize / kLongestEscape;
    for (; !text.empty(); text.remove_prefix(std::min(text.size(), kPart))) {
        const std::string_view part = text.substr(0, kPart);
        char* const begin = Reserve(part.size() * kLongestEscape);
        if (!begin)
            return;
        char* to = begin;
        const char* from = part.data();
        const char* const end = from + part.size();
        for (; from != end; ++from) {
            if (!IsSpecial(*from))
                *to++ = *from;
            else if (*from != '\0')
                to = CopyTo(to, GetEscape(*from));
            else
                break;
        }
        buffered_ += static_cast<size_t>(to - begin);
        if (from != end) // a NUL byte ends the text
            return;
    }
}

} // namespace Kor
