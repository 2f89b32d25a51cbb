#include "PackedRecord.h"

#include "ChangeRecorder.h"
#include "PropertyInstanceText.h"

#include <algorithm>
#include <memory>
#include <stdexcept>

namespace OviTool {

namespace {

/// Memory that begins at a multiple of any alignment that a type has, so that addresses in it need
/// the same padding as offsets.
class AlignedBlock {
public:
    explicit AlignedBlock(std::size_t size) : memory_(size + kAlignment) {
        void* start = memory_.data();
        std::size_t space = memory_.size();
        start_ = static_cast<char*>(std::align(kAlignment, size, start, space));
    }

    char* At(std::size_t offset) { return start_ + offset; }

    static constexpr std::size_t kAlignment = 4096;

private:
    std::vector<char> memory_;
    char* start_;
};

OviType* GetType(OviPropertyInstance* propertyInstance) {
    return OviAttributeProperty_GetType(
        static_cast<OviAttributeProperty*>(OviPropertyInstance_GetProperty(propertyInstance)));
}

std::size_t GetAlignment(OviType* type) {
    return static_cast<std::size_t>(std::max(OviType_GetAlignment(type), 1));
}

std::string FindObstacle(OviPropertyInstance* propertyInstance) {
    if (!OviObject_ImplementsClass(propertyInstance, OVI_CLASS_ATTRIBUTE_INSTANCE))
        return std::string(GetInstanceKindName(propertyInstance)) + " is not packable";
    return GetType(propertyInstance) ? "" : "not packable without a type";
}

/// What a value takes at most, with the padding that each element may need.
std::size_t GetCapacity(OviType* type, const void* value, int count) {
    const auto declared = std::max(OviType_GetValueSize(type, value, count), 0);
    constexpr std::size_t kWidest = 16;
    return static_cast<std::size_t>(declared) +
           (static_cast<std::size_t>(count) + 8) * (GetAlignment(type) + kWidest);
}

/// An attribute's value as the library packs it: not made from the default for this.
struct PackableValue {
    OviType* type;
    const void* block = nullptr;
    int count;

    PackableValue(OviPropertyInstance* propertyInstance, bool hasValue)
        : type(GetType(propertyInstance)) {
        auto* const attribute = static_cast<OviAttributeInstance*>(propertyInstance);
        if (hasValue)
            block = OviAttributeInstance_GetValue(attribute);
        count = OviAttributeInstance_GetDimension(attribute);
    }

    std::size_t Write(char* position, std::size_t size) const {
        return static_cast<std::size_t>(
            OviType_WriteValueToBinary(type, block, count, position, static_cast<int>(size)));
    }
};

} // namespace

void PackedRecord::Add(OviPropertyInstance* propertyInstance) {
    PackedValue entry{propertyInstance,
                      0,
                      GetEnd(),
                      0,
                      recorder_.HasValue(propertyInstance),
                      FindObstacle(propertyInstance)};
    if (entry.whyNotPacked.empty()) {
        const PackableValue value(propertyInstance, entry.hasValue);
        const std::size_t alignment = GetAlignment(value.type);
        entry.padding = (alignment - entry.offset % alignment) % alignment;
        entry.offset += entry.padding;
        // In a place whose address asks for the same padding as the offset.
        const std::size_t place = entry.offset % AlignedBlock::kAlignment;
        const std::size_t capacity = GetCapacity(value.type, value.block, value.count);
        AlignedBlock block(place + capacity);
        entry.size = value.Write(block.At(place), capacity);
        bytes_.append(entry.padding, '\0').append(block.At(place), entry.size);
    }
    values_.push_back(std::move(entry));
}

void PackedRecord::Verify() const {
    constexpr std::size_t kRoomForPadding = AlignedBlock::kAlignment;
    AlignedBlock block(GetEnd() + kRoomForPadding);
    for (const PackedValue& entry : values_) {
        if (entry.whyNotPacked.empty())
            PackableValue(entry.propertyInstance, entry.hasValue)
                .Write(block.At(entry.offset), GetEnd() - entry.offset);
    }
    if (bytes_.compare(0, bytes_.size(), block.At(start_), bytes_.size()) != 0)
        throw std::logic_error("packing the record in one block gives other bytes");
}

std::string PackedRecord::GetBytesOf(const PackedValue& value) const {
    return bytes_.substr(value.offset - start_, value.size);
}

} // namespace OviTool
