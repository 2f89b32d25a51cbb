#include "PackedMap.h"

#include "Json.h"

#include <nlohmann/json.hpp>

#include <iomanip>
#include <ostream>

namespace OviTool {

namespace {

/// "00 01 ff"
std::string ToHex(const std::string& bytes) {
    static const char kDigits[] = "0123456789abcdef";
    std::string result;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        result += result.empty() ? "" : " ";
        (result += kDigits[byte >> 4]) += kDigits[byte & 15];
    }
    return result;
}

std::string GetPropertyName(const PackedValue& value) {
    return OviProperty_GetFullName(OviPropertyInstance_GetProperty(value.propertyInstance));
}

void PrintHex(std::ostream& out, const std::string& bytes) {
    constexpr std::size_t kBytesInLine = 16;
    for (std::size_t at = 0; at < bytes.size(); at += kBytesInLine)
        out << std::string(27, ' ') << ToHex(bytes.substr(at, kBytesInLine)) << '\n';
}

} // namespace

/// The kind, and the type of an attribute.
std::string PackedMap::DescribeType(const PackedValue& value) {
    std::string kind = GetInstanceKindName(value.propertyInstance);
    if (kind != "attribute")
        return kind;
    return kind + " " +
           ValueText::DescribeType(OviAttributeProperty_GetType(static_cast<OviAttributeProperty*>(
               OviPropertyInstance_GetProperty(value.propertyInstance))));
}

std::string PackedMap::DescribeValue(const PackedValue& value) {
    if (!value.whyNotPacked.empty())
        return value.whyNotPacked;
    if (!value.hasValue)
        return value.size > 0 ? "no value, packed as zero" : "no value";
    std::string text =
        texts_.DescribeValue(static_cast<OviAttributeInstance*>(value.propertyInstance));
    if (!text.empty())
        return text;
    return value.size > 0 ? "instances" : "instances, of which the library packs nothing";
}

/// What the library's own function for whole instances uses.
unsigned PackedMap::MeasureInstance() const {
    constexpr std::size_t kRoomForPadding = 4096;
    std::vector<char> block(record_.GetBytes().size() + kRoomForPadding);
    return OviInstance_WriteToBinary(asset_, block.data(),
                                     static_cast<std::uint32_t>(block.size()));
}

void PackedMap::PrintText(std::ostream& out, bool hex) {
    out << "asset " << OviNamedObject_GetName(asset_) << ": " << record_.GetBytes().size()
        << " bytes from offset " << record_.GetStart() << "\n"
        << " padding   offset     size  property\n";
    for (const PackedValue& value : record_.GetValues()) {
        out << std::setw(8) << value.padding << ' ' << std::setw(8) << value.offset << ' '
            << std::setw(8) << value.size << "  " << GetPropertyName(value) << ": "
            << DescribeType(value) << " = " << DescribeValue(value) << '\n';
        if (hex)
            PrintHex(out, record_.GetBytesOf(value));
    }
    out << "OviInstance_WriteToBinary uses " << MeasureInstance() << " bytes for this asset\n";
}

void PackedMap::PrintJson(std::ostream& out, bool hex) {
    nlohmann::ordered_json document;
    document["asset"] = OviNamedObject_GetName(asset_);
    document["start"] = record_.GetStart();
    document["size"] = record_.GetBytes().size();
    document["instanceSize"] = MeasureInstance();
    document["values"] = nlohmann::ordered_json::array();
    for (const PackedValue& value : record_.GetValues()) {
        nlohmann::ordered_json entry;
        entry["property"] = GetPropertyName(value);
        entry["type"] = DescribeType(value);
        entry["padding"] = value.padding;
        entry["offset"] = value.offset;
        entry["size"] = value.size;
        entry["packed"] = value.whyNotPacked.empty();
        entry["value"] = DescribeValue(value);
        if (hex)
            entry["bytes"] = ToHex(record_.GetBytesOf(value));
        document["values"].push_back(std::move(entry));
    }
    OviTool::PrintJson(out, document);
}

} // namespace OviTool
