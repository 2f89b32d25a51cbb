#pragma once

#include "types/BorrowingType.h"

namespace Kor {

/// A named type that borrows all value behaviour from its base type, perhaps with another
/// dimension.
class CustomType : public BorrowingType {
public:
    static constexpr int kClassId = kCustomTypeClass;
    KOR_OBJECT_MEMORY

    CustomType(std::string_view name, int dimension) : BorrowingType(name, dimension, 1) {}

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || BorrowingType::ImplementsClass(id);
    }
    std::unique_ptr<Object> Clone() const override;

protected:
    CustomType(const CustomType&) = default;
};

} // namespace Kor
