#pragma once

#include <ovi/ovi.h>

#include <map>
#include <string>

namespace OviTool {

/// The attributes with which a type, an enumeration or an enumeration's item is declared in XML.
/// A type's dimension and an item's value are to be had in no other way.
class Declaration {
public:
    explicit Declaration(OviType* type);

    /// The attribute's text; the fallback when it is missing.
    std::string Get(const std::string& name, const std::string& fallback) const;

private:
    void Read(const std::string& xml);

    std::map<std::string, std::string> attributes_;
};

/// The declared number of elements of a type's values; 0 when it varies.
int GetDimension(OviType* type);

} // namespace OviTool
