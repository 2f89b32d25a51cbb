#pragma once

#include <ovi/ovi.h>

#include <map>
#include <string>

namespace OviTool {

/// A text in double quotes, with backslashes before quotes and for control characters.
std::string Quoted(const std::string& text);

/// Makes values readable. Remembers what it learns about types, so it must not outlive a change of
/// the schema.
class ValueText {
public:
    /// Whether values of the type are instances of a template.
    bool HoldsInstances(OviType* type);

    /// Whether values of the type are texts.
    bool HoldsTexts(OviType* type);

    /// The elements of a value block, separated by commas: texts in quotes, 8-bit integers as
    /// numbers, items of enumerations with their names.
    std::string Describe(OviType* type, const void* block, int count);

    /// The type's full name; "no type" for null.
    static std::string DescribeType(OviType* type);

private:
    enum class Storage { kNone, kInstances, kText, kSigned8, kUnsigned8, kOther };
    using ItemNames = std::map<std::string, std::string>;

    Storage GetStorage(OviType* type);
    static Storage FindStorage(OviType* type);
    static std::string ElementText(OviType* type, Storage storage, const void* block, int index);
    const ItemNames& GetItemNames(OviEnumeration* enumeration);

    std::map<OviType*, Storage> storages_;
    std::map<OviEnumeration*, ItemNames> itemNames_; ///< Names by the texts of the values.
};

} // namespace OviTool
