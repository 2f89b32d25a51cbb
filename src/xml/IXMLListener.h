#pragma once

#include <string_view>

namespace Kor {

class XMLAttributes;

/// Receives what a document holds, in its order. Every operation returns true to go on; false ends
/// the parse at once. The texts end with a NUL byte at data()[size()] and live during the call
/// only.
class IXMLListener {
public:
    virtual ~IXMLListener() = default;

    virtual bool StartElement(std::string_view name, const XMLAttributes& attributes) = 0;

    virtual bool EndElement(std::string_view name) = 0;

    virtual bool Comment(std::string_view text) = 0;

    /// The text between two tags, blanks and newlines included.
    virtual bool Characters(std::string_view text) = 0;
};

} // namespace Kor
