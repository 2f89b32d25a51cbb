#pragma once

#include <cstdint>

#include "types/ScalarType.h"

namespace Kor {

/// Signed and unsigned integers of 8 to 64 bits; all widths share one class number.
template <class Element> class IntType : public ScalarType<Element> {
public:
    static constexpr int kClassId = kIntTypeClass;
    KOR_OBJECT_MEMORY

    using ScalarType<Element>::ScalarType;

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || Type::ImplementsClass(id);
    }
    std::unique_ptr<Object> Clone() const override;

    /// The dimension times the width, whatever the count: templates are measured with the
    /// dimension as the count, where it makes no difference.
    int GetValueSize(const void* value, int count) const override;

    /// Every element becomes a copy of the first initial one.
    void MakeElements(void* elements, const void* initial, int count) const override;

    /// Decimal; an 8-bit integer is of one of C++'s character types and gives the character: 65
    /// gives "A". It is read as a number; GetReadableText gives that.
    int GetValueAsString(const void* value, std::string& text, int index) const override;

    /// Decimal for every width.
    std::string GetReadableText(const void* value, int index) const override;

    /// Decimal within 32 bits for every width, converted to the element type.
    int GetValueFromString(const char* text, void* value, int index) const override;

private:
    using ScalarType<Element>::At;
};

extern template class IntType<std::int8_t>;
extern template class IntType<std::uint8_t>;
extern template class IntType<std::int16_t>;
extern template class IntType<std::uint16_t>;
extern template class IntType<std::int32_t>;
extern template class IntType<std::uint32_t>;
extern template class IntType<std::int64_t>;
extern template class IntType<std::uint64_t>;

} // namespace Kor
