#pragma once

#include <string>

namespace OviTool {

struct XmlItem;

/// What the library's layout of template and scene files may change without a loss.
class FormatRules {
public:
    explicit FormatRules(bool isScene) : isScene_(isScene) {}

    /// Whether the library stores what the element says.
    bool IsKnown(const std::string& element) const;

    /// Whether the library itself warns of an unknown element.
    bool IsReportedByLibrary(const std::string& unknown) const;

    /// Whether the library writes elements of that name where it needs them, whatever was read.
    bool IsLeftToLibrary(const std::string& element) const;

    /// Whether elements of that name mean the same wherever they stand.
    bool StandsAnywhere(const std::string& element) const;

    /// Whether characters inside of the element are kept.
    bool HasText(const std::string& element) const;

    /// The element's name with what tells it from others beside it.
    std::string GetIdentity(const XmlItem& item) const;

    /// Whether leaving the attribute out says the same.
    bool IsDefault(const std::string& element, const std::string& attribute,
                   const std::string& value) const;

    /// Whether two texts of an attribute say the same.
    static bool SayTheSame(const std::string& attribute, const std::string& a,
                           const std::string& b);

private:
    bool isScene_;
};

} // namespace OviTool
