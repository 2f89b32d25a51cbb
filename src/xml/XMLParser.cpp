#include "xml/XMLParser.h"

#include "core/IErrorListener.h"
#include "core/Names.h"
#include "xml/IXMLListener.h"

#include <array>
#include <cstring>

namespace Kor {

namespace {

enum ByteClass : unsigned char { kNameByte = 1, kBlankByte = 2 };

/// Names are made of capitals, digits and all from "_" to "z", the backquote among them. Blanks are
/// all bytes up to 32 and from 128 on, so that spaces outside of ASCII separate attributes, too.
constexpr std::array<unsigned char, 256> MakeByteClasses() {
    std::array<unsigned char, 256> classes{};
    for (unsigned c = 0; c < classes.size(); ++c) {
        if ((c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || (c >= '_' && c <= 'z'))
            classes[c] = kNameByte;
        else if (c <= ' ' || c >= 128)
            classes[c] = kBlankByte;
    }
    return classes;
}

constexpr std::array<unsigned char, 256> kByteClasses = MakeByteClasses();

/// The first byte of another class; one must follow before the end of the buffer.
char* Skip(char* at, ByteClass byteClass) {
    while (kByteClasses[static_cast<unsigned char>(*at)] == byteClass)
        ++at;
    return at;
}

struct Entity {
    std::string_view rest; ///< What follows the ampersand.
    char byte;
};

constexpr Entity kEntities[] = {
    {"gt;", '>'}, {"lt;", '<'}, {"apos;", '\''}, {"quot;", '"'}, {"amp;", '&'}};

/// The entity that the text behind an ampersand names, or null.
const Entity* FindEntity(std::string_view rest) {
    for (const Entity& entity : kEntities) {
        if (rest.substr(0, entity.rest.size()) == entity.rest)
            return &entity;
    }
    return nullptr;
}

/// Decodes the entities in place, from the first ampersand on, and gives the new end. The space won
/// is filled with NUL bytes: they end the text, and are not taken for lines afterwards.
char* DecodeEntities(char* from, char* end) {
    char* to = from;
    while (from != end) {
        const auto length = static_cast<size_t>(end - from);
        const Entity* entity = *from == '&' ? FindEntity({from + 1, length - 1}) : nullptr;
        *to++ = entity ? entity->byte : *from;
        from += entity ? entity->rest.size() + 1 : 1;
    }
    std::memset(to, '\0', static_cast<size_t>(end - to));
    return to;
}

bool IsHeader(std::string_view tag) {
    constexpr std::string_view kStart = "?xml";
    return tag.size() > kStart.size() && EqualsIgnoreCase(tag.substr(0, kStart.size()), kStart) &&
           tag.back() == '?';
}

bool IsComment(std::string_view tag) {
    return tag.size() >= 5 && tag.substr(0, 3) == "!--" && tag.substr(tag.size() - 2) == "--";
}

/// Stands in for a listener that was not set.
class IgnoringListener : public IXMLListener {
public:
    bool StartElement(std::string_view, const XMLAttributes&) override { return true; }
    bool EndElement(std::string_view) override { return true; }
    bool Comment(std::string_view) override { return true; }
    bool Characters(std::string_view) override { return true; }
};

IXMLListener* GetIgnoringListener() {
    static IgnoringListener listener;
    return &listener;
}

} // namespace

XMLParser::XMLParser(size_t blockSize) : Parser(blockSize), listener_(GetIgnoringListener()) {}

void XMLParser::SetXMLListener(IXMLListener* listener) {
    listener_ = listener ? listener : GetIgnoringListener();
}

bool XMLParser::Parse(const char* sourceName, ByteSource& source) {
    Begin(sourceName, source);
    openNames_.clear();
    openNameAts_.clear();
    paused_ = false;
    return ReadHeader() && ReadContent();
}

bool XMLParser::Resume() {
    paused_ = false;
    return ReadContent();
}

// Whatever stands before the header, a byte-order mark for instance, is ignored.
bool XMLParser::ReadHeader() {
    if (!ReadUntil('<')) {
        Report(kError, "Missing XML header element");
        return false;
    }
    if (!ReadUntil('>') || !IsHeader({tokenBegin_, Distance(tokenBegin_, tokenEnd_)})) {
        Report(kError, "Invalid XML header element");
        return false;
    }
    return true;
}

// A text is delivered when the next tag ends it, so what stands behind the last tag is not.
// Elements that are still open are the listener's to report.
bool XMLParser::ReadContent() {
    while (!paused_ && ReadUntil('<')) {
        if (!HandleText())
            return false;
        if (!ReadUntil('>')) {
            Report(kError, "Element opened on line " + std::to_string(GetTokenLine()) +
                               " has no closing bracket");
            return false;
        }
        if (!HandleTag())
            return false;
    }
    // Half a file looks like a whole one, and would replace it when it is saved.
    if (!paused_ && HasSourceFailed()) {
        Report(kError, "Unable to read the file to its end");
        return false;
    }
    return true;
}

bool XMLParser::HandleText() {
    return tokenBegin_ == tokenEnd_ || listener_->Characters(Decode(tokenBegin_, tokenEnd_));
}

bool XMLParser::HandleTag() {
    const std::string_view tag(tokenBegin_, Distance(tokenBegin_, tokenEnd_));
    if (!tag.empty() && tag.front() == '/')
        return Close(CutAtNul(tokenBegin_ + 1, tokenEnd_));
    if (IsComment(tag))
        return listener_->Comment(Decode(tokenBegin_ + 3, tokenEnd_ - 2));
    return HandleStartTag();
}

bool XMLParser::HandleStartTag() {
    const bool selfClosing = tokenEnd_ != tokenBegin_ && tokenEnd_[-1] == '/';
    char* nameEnd = Skip(tokenBegin_, kNameByte);
    Terminate(nameEnd);
    ReadAttributes(nameEnd + 1);

    const std::string_view name(tokenBegin_, Distance(tokenBegin_, nameEnd));
    if (selfClosing) // nothing can come between its two events
        return listener_->StartElement(name, attributes_) && listener_->EndElement(name);
    return Start(name);
}

// The tag's last byte never begins an attribute, since it may be the "/" of an empty element: so a
// name of one byte there is passed over in silence. The ">" behind it stops every search for the
// end of a run.
void XMLParser::ReadAttributes(char* at) {
    attributes_.Clear();
    if (tokenEnd_ - at <= 1)
        return;
    const bool decode = sawNul_ || std::memchr(at, '&', Distance(at, tokenEnd_));
    while (at && tokenEnd_ - at > 1)
        at = ReadAttribute(at, decode);
}

/// Reads the attribute that comes next and gives the place behind it, or null to stop.
char* XMLParser::ReadAttribute(char* at, bool decode) {
    char* name = Skip(at, kBlankByte);
    char* nameEnd = Skip(name, kNameByte);
    if (nameEnd == name)
        return nullptr;
    char* equals = Skip(nameEnd, kBlankByte);
    if (*equals != '=')
        return StopAttributes("Missing equal operator");

    // Whatever byte comes first serves as the quote.
    char* value = Skip(equals + 1, kBlankByte);
    if (value == tokenEnd_)
        return StopAttributes("Missing closing quote");
    const char quote = *value++;
    auto* valueEnd = static_cast<char*>(std::memchr(value, quote, Distance(value, tokenEnd_)));
    if (!valueEnd)
        return StopAttributes("Missing closing quote");

    Terminate(nameEnd);
    Terminate(valueEnd);
    attributes_.Add({name, Distance(name, nameEnd)},
                    decode ? Decode(value, valueEnd)
                           : std::string_view(value, Distance(value, valueEnd)));
    return valueEnd + 1;
}

char* XMLParser::StopAttributes(const char* message) const {
    Report(kError, message);
    return nullptr;
}

/// Ends the text with a NUL byte, at the first one in it when there is one.
std::string_view XMLParser::CutAtNul(char* begin, char* end) const {
    *end = '\0';
    return {begin, sawNul_ ? std::strlen(begin) : Distance(begin, end)};
}

std::string_view XMLParser::Decode(char* begin, char* end) const {
    const std::string_view text = CutAtNul(begin, end);
    auto* ampersand = static_cast<char*>(std::memchr(begin, '&', text.size()));
    if (!ampersand)
        return text;
    return {begin, Distance(begin, DecodeEntities(ampersand, begin + text.size()))};
}

bool XMLParser::Start(std::string_view name) {
    openNameAts_.push_back(openNames_.size());
    openNames_.append(name);
    return listener_->StartElement(name, attributes_);
}

// A mismatch is reported and leaves the open elements as they are; only the listener can end it.
bool XMLParser::Close(std::string_view name) {
    if (openNameAts_.empty()) {
        Report(kError, "Attempting to close element <" + std::string(name) +
                           ">, while no element is currently open");
    } else if (GetInnermost() != name) {
        Report(kError, "Attempting to close element <" + std::string(name) +
                           ">, which does not match current element <" +
                           std::string(GetInnermost()) + ">");
    } else {
        openNames_.resize(openNameAts_.back());
        openNameAts_.pop_back();
    }
    return listener_->EndElement(name);
}

std::string_view XMLParser::GetInnermost() const {
    return std::string_view(openNames_).substr(openNameAts_.back());
}

} // namespace Kor
