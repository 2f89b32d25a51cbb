#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace OviTool {

/// A piece of an XML text.
struct XmlItem {
    enum class Kind { kStart, kEnd, kComment, kText, kNothing };

    Kind kind = Kind::kNothing;
    std::string name; ///< Of an element, in lower case: the library does not look at the case.
    std::vector<std::pair<std::string, std::string>> attributes;
    std::string text; ///< Of a comment, or of characters that are not all blank.
    int line = 0;

    /// The attribute's value; null when it is missing.
    const std::string* Find(const std::string& attribute) const;
};

/// Goes through a text that the library could read, to find what the library does not hand out.
/// Knows no more of XML than the library's files need.
class XmlScanner {
public:
    explicit XmlScanner(std::string text);

    /// The next piece; one of kind kNothing at the end.
    XmlItem Next();

private:
    XmlItem ReadTag();
    XmlItem ReadText();
    void ReadAttributes(const std::string& tag, XmlItem& item) const;
    std::string Take(std::size_t end);

    std::string text_;
    std::size_t at_ = 0;
    int line_ = 1;
    bool sawHeader_ = false;
    bool closesAtOnce_ = false; ///< The last start tag was <name/>, whose end is still to come.
    std::string lastName_;
};

/// The whole content of a file; false when it cannot be read.
bool ReadFile(const std::string& path, std::string& content);

} // namespace OviTool
