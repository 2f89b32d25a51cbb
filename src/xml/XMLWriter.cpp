#include "xml/XMLWriter.h"

#include "core/ByteStreams.h"
#include "core/NumberText.h"

#include <array>

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

size_t CountPlainBytes(std::string_view text) {
    size_t count = 0;
    while (count < text.size() && !kSpecialBytes[static_cast<unsigned char>(text[count])])
        ++count;
    return count;
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
    openNames_.push_back(name ? name : "");
    Put("<");
    Put(openNames_.back());
    tagOpen_ = true;
    hasChildren_ = false;
}

void XMLWriter::WriteAttribute(const char* name, std::string_view value) {
    if (!tagOpen_)
        return;
    Put(" ");
    Put(name ? name : "");
    Put("='");
    PutEscaped(value);
    Put("'");
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

// A comment deliberately does not count as a child: an element that holds nothing else gets its end
// tag right behind it.
void XMLWriter::WriteComment(std::string_view text) {
    CloseTag();
    BreakLine();
    Put("<!--");
    PutEscaped(text);
    Put("-->");
}

void XMLWriter::EndElement() {
    const char* name = "";
    if (!openNames_.empty()) {
        name = openNames_.back();
        openNames_.pop_back();
    } else if (indent_ > 0) {
        --indent_;
    } else {
        return;
    }
    if (tagOpen_) {
        Put("/>");
    } else {
        if (hasChildren_)
            BreakLine();
        Put("</");
        Put(name);
        Put(">");
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
        Put(">");
    tagOpen_ = false;
}

void XMLWriter::BreakLine() {
    constexpr std::string_view tabs(kTabs.data(), kTabs.size());
    Put("\n");
    size_t levels = indent_ + openNames_.size();
    for (; levels > tabs.size(); levels -= tabs.size())
        Put(tabs);
    Put(tabs.substr(0, levels));
}

void XMLWriter::Put(std::string_view text) {
    if (!sink_)
        return;
    if (text.size() > kBlockSize - buffered_)
        Flush();
    if (text.size() <= kBlockSize)
        buffered_ += text.copy(buffer_.get() + buffered_, text.size());
    else if (!failed_)
        failed_ = !sink_->Write(text);
}

void XMLWriter::PutEscaped(std::string_view text) {
    for (;;) {
        const size_t plain = CountPlainBytes(text);
        Put(text.substr(0, plain));
        text.remove_prefix(plain);
        if (text.empty() || text.front() == '\0')
            return;
        Put(GetEscape(text.front()));
        text.remove_prefix(1);
    }
}

} // namespace Kor
