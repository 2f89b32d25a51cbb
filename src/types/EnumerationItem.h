#pragma once

#include "types/BorrowingType.h"
#include "types/TypedValue.h"

namespace Kor {

class Enumeration;

/// A named constant of an enumeration's base type; as a type it behaves like that one.
class EnumerationItem : public BorrowingType {
public:
    static constexpr int kClassId = kEnumerationItemClass;
    KOR_OBJECT_MEMORY

    /// The value is the value type's zero with its first element read from the text.
    EnumerationItem(std::string_view name, Type* valueType, const char* valueText);
    ~EnumerationItem() override { EnumerationItem::Leave(); }

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || BorrowingType::ImplementsClass(id);
    }
    std::unique_ptr<Object> Clone() const override;

    const void* GetValue() const { return value_.Get(); }

    /// The value when its block follows the rules of that type; else null.
    const void* GetValueOfStorage(const Type* storage) const;

    int GetValueCount() const { return value_.GetCount(); }

    /// The text of the value's first element.
    std::string GetValueText() const;

    /// Replaces the value by a copy.
    void SetValue(const void* value);

    /// Ends the value and forgets its type, before that goes.
    void DropValue();

    void CollectUsedTypes(std::vector<Type*>& types) const override;
    Type* GetValueCarrier() const override { return valueType_.Get(); }

    /// Takes itself out of its enumeration.
    void Leave() noexcept override;

    /// The enumeration that lists the item and follows its name, or null.
    Enumeration* GetEnumeration() const { return enumeration_; }
    void SetEnumeration(Enumeration* enumeration) { enumeration_ = enumeration; }

protected:
    void LeaveSortedLists() override;
    void EnterSortedLists() override;

private:
    EnumerationItem(const EnumerationItem& other);

    TypeRef valueType_;
    TypedValue value_;
    Enumeration* enumeration_ = nullptr;
};

} // namespace Kor
