#pragma once

#include "types/Type.h"

namespace Kor {

/// What types share that have no values of their own: blocks, texts and packing are those of the
/// type at the end of their chain of carriers. Without one, or where the chain runs in a circle,
/// values have no size and everything is valid.
class BorrowingType : public Type {
public:
    using Type::Type;

    int GetValueSize(const void* value, int count) const override;
    void* NewValue(const void* initial, int count) const override;
    void DeleteValue(void* value, int count) const override;
    size_t GetInlineSize(int count) const override;
    void MakeElements(void* elements, const void* initial, int count) const override;
    void EndElements(void* elements, int count) const override;

    /// By the rules of the first enumeration on the way to the carrier, else by the carrier's.
    int CompareValues(const void* a, const void* b, int count) const override;
    bool IsValueValid(const void* value, const void* minimum, const void* maximum,
                      int count) const override;

    int GetValueAsString(const void* value, std::string& text, int index) const override;
    int GetValueFromString(const char* text, void* value, int index) const override;
    int WriteValueToBinary(const void* value, int count, void* buffer,
                           int bufferSize) const override;

    Type* GetValueCarrier() const override { return GetBaseType(); }

protected:
    BorrowingType(const BorrowingType&) = default;

private:
    /// The type that compares and checks values; null where the chain of carriers leads nowhere.
    const Type* FindComparingType() const;
};

} // namespace Kor
