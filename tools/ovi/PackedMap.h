#pragma once

#include "PackedRecord.h"

#include <iosfwd>
#include <string>

namespace OviTool {

/// Prints what lies where in a packed record.
class PackedMap {
public:
    PackedMap(const PackedRecord& record, const ChangeRecorder& recorder, OviAsset* asset)
        : record_(record), texts_(recorder), asset_(asset) {}

    /// As a table; with `hex`, the bytes of each value below it.
    void PrintText(std::ostream& out, bool hex);

    /// As a JSON object.
    void PrintJson(std::ostream& out, bool hex);

private:
    static std::string DescribeType(const PackedValue& value);
    std::string DescribeValue(const PackedValue& value);
    unsigned MeasureInstance() const;

    const PackedRecord& record_;
    PropertyInstanceText texts_;
    OviAsset* asset_;
};

} // namespace OviTool
