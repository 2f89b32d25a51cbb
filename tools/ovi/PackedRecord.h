#pragma once

#include "PropertyInstanceText.h"

#include <ovi/ovi.h>

#include <cstddef>
#include <string>
#include <vector>

namespace OviTool {

class ChangeRecorder;

/// A property instance's place in a record.
struct PackedValue {
    OviPropertyInstance* propertyInstance;
    std::size_t padding; ///< Bytes in front of it that are left as they are.
    std::size_t offset;
    std::size_t size;         ///< As the library gave it; 0 when nothing can be packed.
    bool hasValue;            ///< The file gave a value; otherwise zeroes are packed.
    std::string whyNotPacked; ///< Empty when it was packed.
};

/// Packs values one behind the other as the library packs those of an instance: each at the next
/// multiple of its type's alignment, with the bytes that the type writes. A value that was never
/// set is packed as zeroes.
class PackedRecord {
public:
    /// The record begins at an offset of a larger block, from which all offsets count.
    PackedRecord(const ChangeRecorder& recorder, std::size_t start)
        : recorder_(recorder), start_(start) {}

    void Add(OviPropertyInstance* propertyInstance);

    /// Packs everything once more, in place in one block. Throws when that gives other bytes.
    void Verify() const;

    const std::vector<PackedValue>& GetValues() const { return values_; }

    /// From the start on.
    const std::string& GetBytes() const { return bytes_; }
    std::string GetBytesOf(const PackedValue& value) const;
    std::size_t GetStart() const { return start_; }

private:
    std::size_t GetEnd() const { return start_ + bytes_.size(); }

    const ChangeRecorder& recorder_;
    std::size_t start_;
    std::string bytes_;
    std::vector<PackedValue> values_;
};

} // namespace OviTool
