#pragma once

#include <functional>
#include <memory>
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
    void Clear() noexcept { order_.reset(); }

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

    /// The items whose values have the form of one carrier, by the elements of its dimension.
    struct Order {
        Order(const Type& itsCarrier, int itsDimension);

        const Type* carrier;
        int dimension;
        std::set<Entry, Before> entries;
        std::set<const EnumerationItem*> unordered; ///< those that are equal to unequal ones
    };

    void Build(const SortedObjectList<EnumerationItem>& items, const Type& carrier);
    static void AddTo(Order& order, const EnumerationItem& item);

    std::unique_ptr<Order> order_;
};

} // namespace Kor
