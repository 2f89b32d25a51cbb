#pragma once

#include "types/ScalarType.h"

namespace Kor {

/// Truth values of one byte each.
class BoolType : public ScalarType<unsigned char> {
public:
    static constexpr int kClassId = kBoolTypeClass;
    KOR_OBJECT_MEMORY

    using ScalarType::ScalarType;

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || Type::ImplementsClass(id);
    }
    std::unique_ptr<Object> Clone() const override;

    /// The count.
    int GetValueSize(const void* value, int count) const override;

    /// Every element becomes a copy of the first initial one.
    void MakeElements(void* elements, const void* initial, int count) const override;

    /// False before true, whatever the byte that stands for true.
    int CompareValues(const void* a, const void* b, int count) const override;

    /// True exactly when the count fits the dimension; bounds mean nothing to truth values.
    bool IsValueValid(const void* value, const void* minimum, const void* maximum,
                      int count) const override;

    int GetValueAsString(const void* value, std::string& text, int index) const override;

    /// False for "0" and for "false" in any case; true for every other text, the empty one too.
    int GetValueFromString(const char* text, void* value, int index) const override;
};

} // namespace Kor
