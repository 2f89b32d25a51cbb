#pragma once

#include <map>
#include <set>

#include "core/SortedObjectList.h"

namespace Kor {

class EnumerationItem;
class Type;

/// Finds an enumeration's items by their values in a few steps. It is a help that may be missing:
/// it comes with the first question about many items, and goes when memory runs out. An item's
/// value is in order while it does not change: it is to be taken out before that, and added
/// afterwards.
class EnumerationValues {
public:
    /// Whether an item's value has the same first elements as a value block of a carrier. Throws
    /// std::bad_alloc.
    bool Has(const SortedObjectList<EnumerationItem>& items, const Type& carrier, const void* value,
             int elements);

    void Add(const EnumerationItem& item) noexcept;
    void Remove(const EnumerationItem& item) noexcept;
    void Clear() noexcept { orders_.clear(); }

private:
    /// A value, and whose it is; that of nobody comes before those that are equal.
    struct Entry {
        const void* value;
        const EnumerationItem* item;
    };

    struct Before {
        const Type* carrier;
        int elements;
        bool operator()(const Entry& a, const Entry& b) const;
    };

    /// The items by the first elements of their values, as far as they have so many.
    struct Order {
        explicit Order(Before before) : entries(before) {}

        std::set<Entry, Before> entries;
        std::set<const EnumerationItem*> unordered; ///< those that are equal to unequal ones
    };

    const Order& GetOrder(const SortedObjectList<EnumerationItem>& items, int elements);
    void AddTo(Order& order, int elements, const EnumerationItem& item) const;

    const Type* carrier_ = nullptr;
    std::map<int, Order> orders_; // by the number of elements
};

} // namespace Kor
