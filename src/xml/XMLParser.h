#pragma once

#include "xml/Parser.h"
#include "xml/XMLAttributes.h"

#include <string>
#include <string_view>
#include <vector>

namespace Kor {

class IXMLListener;

/// Reads the small XML dialect of the library's files: a header, elements with attributes, text and
/// comments. Only header faults, a tag without end and a refusing listener stop it; other faults
/// are reported and read over.
class XMLParser : public Parser {
public:
    explicit XMLParser(size_t blockSize = kDefaultBlockSize);

    /// Who receives the elements; null drops them.
    void SetXMLListener(IXMLListener* listener);

    /// True when the source was read to its end, no tag was left open and no listener refused.
    bool Parse(const char* sourceName, ByteSource& source) override;

    /// Called by a listener that needs something done before the next element: Parse (or Resume)
    /// returns behind the current one, true, and Resume goes on from there.
    void Pause() { paused_ = true; }
    bool IsPaused() const { return paused_; }
    bool Resume();

private:
    bool ReadHeader();
    bool ReadContent();
    bool HandleText();
    bool HandleTag();
    bool HandleStartTag();
    void ReadAttributes(char* at);
    char* ReadAttribute(char* at, bool decode);
    char* StopAttributes(const char* message) const;
    std::string_view CutAtNul(char* begin, char* end) const;
    std::string_view Decode(char* begin, char* end) const;
    bool Start(std::string_view name);
    bool Close(std::string_view name);
    std::string_view GetInnermost() const;

    IXMLListener* listener_;
    bool paused_ = false;
    XMLAttributes attributes_;
    std::string openNames_;           ///< The names of the open elements, one behind the other.
    std::vector<size_t> openNameAts_; ///< Where each of them begins.
};

} // namespace Kor
