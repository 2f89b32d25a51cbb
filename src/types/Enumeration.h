#pragma once

#include "core/SortedObjectList.h"
#include "types/BorrowingType.h"
#include "types/EnumerationItem.h"
#include "types/EnumerationValues.h"

namespace Kor {

/// A named set of constants of a base type, which holds the values.
class Enumeration : public BorrowingType {
public:
    static constexpr int kClassId = kEnumerationClass;
    KOR_OBJECT_MEMORY

    Enumeration(std::string_view name, Type* base);
    ~Enumeration() override;

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || BorrowingType::ImplementsClass(id);
    }

    /// The copy has items of its own.
    std::unique_ptr<Object> Clone() const override;

    /// Takes the item over. An item of the same name is overwritten: it is not deleted, since a
    /// host may hold it, and belongs to the caller. The result is then the complement of its index.
    int AddItem(EnumerationItem* item);

    /// The item of that full name, or null.
    EnumerationItem* GetItem(std::string_view name) const { return items_.Get(name); }
    int GetItemCount() const { return items_.GetCount(); }
    EnumerationItem* GetItemAt(int index) const { return items_.GetAt(index); }

    /// Takes the item of that full name out and gives its index, or a number below 0.
    int RemoveItem(EnumerationItem* item);

    /// Ends all items.
    void DeleteItems();

    /// Finds any two values equal: it compares the first one with itself. What tells values apart
    /// is the comparison of the base type.
    int CompareValues(const void* a, const void* b, int count) const override;

    /// Whether the value stands for an item: by the text of its first element, by its bytes, or
    /// because the block itself is an item's name. Bounds mean nothing here.
    bool IsValueValid(const void* value, const void* minimum, const void* maximum,
                      int count) const override;

    void CollectUsedTypes(std::vector<Type*>& types) const override;

    /// Called by an item around a change of its name.
    void Unlist(EnumerationItem& item) { items_.RemoveExactly(&item); }
    void List(EnumerationItem& item) { items_.Place(&item); }

    /// Called by an item around a change of its value.
    void ForgetValue(const EnumerationItem& item) { values_.Remove(item); }
    void KeepValue(const EnumerationItem& item) { values_.Add(item); }

private:
    Enumeration(const Enumeration& other);

    static size_t GetReadableSize(const Type& carrier, int count);
    bool IsNameOfItem(const char* block, size_t size) const;
    int CountNamesBelow(int first, int end, size_t place, unsigned byte) const;
    bool IsValueOfItem(const Type& carrier, const void* value, int elements) const;

    SortedObjectList<EnumerationItem> items_;
    mutable EnumerationValues values_;
};

} // namespace Kor
