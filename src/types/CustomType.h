#pragma once

#include "types/Type.h"

namespace Kor {

/// A named type that borrows all value behaviour from its base type, perhaps with another
/// dimension. Without a base type values have no size and everything is valid.
class CustomType : public Type {
public:
    static constexpr int kClassId = kCustomTypeClass;

    CustomType(std::string_view name, int dimension) : Type(name, dimension, 1) {}

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || Type::ImplementsClass(id);
    }
    std::unique_ptr<Object> Clone() const override;

    int GetValueSize(const void* value, int count) const override;
    void* NewValue(const void* initial, int count) const override;
    void DeleteValue(void* value, int count) const override;
    int CompareValues(const void* a, const void* b, int count) const override;
    bool IsValueValid(const void* value, const void* minimum, const void* maximum,
                      int count) const override;
    int GetValueAsString(const void* value, std::string& text, int index) const override;
    int GetValueFromString(const char* text, void* value, int index) const override;
    int WriteValueToBinary(const void* value, int count, void* buffer,
                           int bufferSize) const override;
    void WriteValueToXML(const void* value, int count, XMLWriter& writer) const override;

    Type* GetValueCarrier() const override { return GetBaseType(); }

protected:
    CustomType(const CustomType&) = default;

private:
    /// The type at the end of the chain of carriers, and the first on the way that is an
    /// enumeration (which compares and checks in its own way); else the same.
    const Type* FindCarrier() const { return FollowCarriers(); }
    const Type* FindJudge() const;
};

} // namespace Kor
