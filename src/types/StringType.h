#pragma once

#include "types/Type.h"

namespace Kor {

/// Texts: a value is an array of pointers, each null or owning a NUL-terminated copy.
class StringType : public Type {
public:
    static constexpr int kClassId = kStringTypeClass;
    KOR_OBJECT_MEMORY

    using Type::Type;

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || Type::ImplementsClass(id);
    }
    std::unique_ptr<Object> Clone() const override;

    /// For each element its length and 4 bytes more.
    int GetValueSize(const void* value, int count) const override;

    /// Own copies of the initial texts; null where there is none.
    void* NewValue(const void* initial, int count) const override;
    size_t GetInlineSize(int count) const override;
    void MakeElements(void* elements, const void* initial, int count) const override;
    void EndElements(void* elements, int count) const override;

    void DeleteValue(void* value, int count) const override;

    /// Null before any text; texts by unsigned byte order.
    int CompareValues(const void* a, const void* b, int count) const override;

    /// No element may be null or empty. The minimum is inclusive and the maximum exclusive, so that
    /// "a" to "b" are all texts that begin with "a".
    bool IsValueValid(const void* value, const void* minimum, const void* maximum,
                      int count) const override;

    /// Appends the text of the element and returns the length of the whole.
    int GetValueAsString(const void* value, std::string& text, int index) const override;

    /// Copies the text in; an empty text stores null. Returns the text's length.
    int GetValueFromString(const char* text, void* value, int index) const override;

    int WriteValueToBinary(const void* value, int count, void* buffer,
                           int bufferSize) const override;

protected:
    StringType(const StringType&) = default;
};

} // namespace Kor
