#pragma once

#include "FormatRules.h"
#include "XmlScanner.h"

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace OviTool {

/// Numbers for places in files, equal for equal places.
class XmlPlaces {
public:
    std::size_t Get(std::size_t parent, const std::string& step);

private:
    std::map<std::pair<std::size_t, std::string>, std::size_t> numbers_;
};

/// Something that a file says.
struct XmlStatement {
    std::size_t place;
    std::string element;
    std::string attribute; ///< Empty: that the element is there. Otherwise what has the value.
    std::string value;
    int line;
};

/// Something that the library does not read.
struct XmlExtra {
    std::string what;
    int line;
};

/// All that a template or scene file says, without the order in which it says it.
class XmlContent {
public:
    XmlContent(const std::string& text, const FormatRules& rules, XmlPlaces& places);

    const std::vector<XmlStatement>& GetStatements() const { return statements_; }
    const std::vector<XmlExtra>& GetComments() const { return comments_; }

    /// Unknown elements, and characters where the library reads none.
    const std::vector<XmlExtra>& GetExtras() const { return extras_; }

private:
    struct OpenElement {
        std::size_t place;
        std::string name;
        std::string text;
        int line;
        int valueCount;
        bool isKnown;
    };

    void Start(const XmlItem& item);
    void StartKnown(const XmlItem& item);
    void End();
    void AddValue(OpenElement& attribute, const std::string& text, int line);

    const FormatRules& rules_;
    XmlPlaces& places_;
    std::vector<OpenElement> open_;
    std::vector<XmlStatement> statements_;
    std::vector<XmlExtra> comments_;
    std::vector<XmlExtra> extras_;
};

} // namespace OviTool
