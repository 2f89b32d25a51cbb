#include "ValueText.h"

#include "Declaration.h"

#include <cstdint>

namespace OviTool {

namespace {

/// Longer than any number's text.
constexpr std::size_t kNumberCapacity = 64;
/// No sane schema builds types on types this often; a circle of types must not hold us up.
constexpr int kLongestChain = 100000;

} // namespace

std::string Quoted(const std::string& text) {
    static const char kDigits[] = "0123456789abcdef";
    std::string result = "\"";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\')
            (result += '\\') += c;
        else if (c == '\n')
            result += "\\n";
        else if (c == '\t')
            result += "\\t";
        else if (byte < 0x20 || byte == 0x7f)
            ((result += "\\x") += kDigits[byte >> 4]) += kDigits[byte & 15];
        else
            result += c;
    }
    return result + '"';
}

std::string ValueText::DescribeType(OviType* type) {
    return type ? OviType_GetFullName(type) : "no type";
}

bool ValueText::HoldsInstances(OviType* type) {
    return GetStorage(type) == Storage::kInstances;
}

bool ValueText::HoldsTexts(OviType* type) {
    return GetStorage(type) == Storage::kText;
}

std::string ValueText::Describe(OviType* type, const void* block, int count) {
    const Storage storage = GetStorage(type);
    if (!block || storage == Storage::kNone || storage == Storage::kInstances)
        return "none";
    const ItemNames* names = nullptr;
    if (OviObject_ImplementsClass(type, OVI_CLASS_ENUMERATION))
        names = &GetItemNames(static_cast<OviEnumeration*>(type));
    std::string result;
    for (int i = 0; i < count; ++i) {
        const std::string text = ElementText(type, storage, block, i);
        result += i > 0 ? ", " : "";
        result += storage == Storage::kText ? Quoted(text) : text;
        const auto found = names ? names->find(text) : ItemNames::const_iterator();
        if (names && found != names->end())
            result += " (" + found->second + ")";
    }
    return count > 0 ? result : "no elements";
}

std::string ValueText::ElementText(OviType* type, Storage storage, const void* block, int index) {
    const char* text = nullptr;
    switch (storage) {
    case Storage::kText:
        // Read in place: the library would copy a text of any length into a buffer.
        text = static_cast<const char* const*>(block)[index];
        return text ? text : "";
    case Storage::kSigned8:
        return std::to_string(static_cast<const std::int8_t*>(block)[index]);
    case Storage::kUnsigned8:
        return std::to_string(static_cast<const std::uint8_t*>(block)[index]);
    default:
        break;
    }
    char buffer[kNumberCapacity];
    const int length = OviType_GetValueAsString(type, block, index, buffer);
    return {buffer, static_cast<std::size_t>(length)};
}

ValueText::Storage ValueText::GetStorage(OviType* type) {
    const auto [entry, added] = storages_.emplace(type, Storage::kNone);
    if (added)
        entry->second = FindStorage(type);
    return entry->second;
}

/// The type at which the chain of base types ends decides how values lie in memory.
ValueText::Storage ValueText::FindStorage(OviType* type) {
    OviType* last = type;
    for (int steps = 0; last && steps < kLongestChain; ++steps) {
        if (OviObject_ImplementsClass(last, OVI_CLASS_TEMPLATE))
            return Storage::kInstances;
        OviType* const base = OviType_GetBaseType(last);
        if (!base)
            break;
        last = base;
    }
    const std::string name = last ? OviType_GetFullName(last) : "";
    switch (OviObject_GetClass(last)) {
    case OVI_CLASS_STRING_TYPE:
        return Storage::kText;
    case OVI_CLASS_INT_TYPE:
        if (name == "INT8" || name == "UINT8")
            return name == "INT8" ? Storage::kSigned8 : Storage::kUnsigned8;
        return Storage::kOther;
    case OVI_CLASS_FLOAT_TYPE:
    case OVI_CLASS_BOOL_TYPE:
        return Storage::kOther;
    default:
        return Storage::kNone;
    }
}

const ValueText::ItemNames& ValueText::GetItemNames(OviEnumeration* enumeration) {
    const auto [entry, added] = itemNames_.try_emplace(enumeration);
    for (int i = 0; added && i < OviEnumeration_GetItemCount(enumeration); ++i) {
        OviEnumerationItem* const item = OviEnumeration_GetItemAt(enumeration, i);
        entry->second.emplace(Declaration(item).Get("value", ""), OviNamedObject_GetName(item));
    }
    return entry->second;
}

} // namespace OviTool
