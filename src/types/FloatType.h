#pragma once

#include "types/ScalarType.h"

namespace Kor {

/// IEEE 754 numbers of 32 and 64 bits; both widths share one class number.
template <class Element> class FloatType : public ScalarType<Element> {
public:
    static constexpr int kClassId = kFloatTypeClass;
    KOR_OBJECT_MEMORY

    using ScalarType<Element>::ScalarType;

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || Type::ImplementsClass(id);
    }
    std::unique_ptr<Object> Clone() const override;

    /// The count times the width, whatever the dimension: templates are measured with the
    /// dimension as the count, where it makes no difference.
    int GetValueSize(const void* value, int count) const override;

    /// A copy of as many initial elements.
    void MakeElements(void* elements, const void* initial, int count) const override;

    /// General format with 6 significant digits.
    int GetValueAsString(const void* value, std::string& text, int index) const override;

    int GetValueFromString(const char* text, void* value, int index) const override;

private:
    using ScalarType<Element>::At;
};

extern template class FloatType<float>;
extern template class FloatType<double>;

} // namespace Kor
