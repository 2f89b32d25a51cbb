#include "types/EnumerationValues.h"

#include <cmath>
#include <algorithm>
#include <functional>
#include <new>
#include <utility>

#include "types/EnumerationItem.h"
#include "types/FloatType.h"

namespace Kor {

namespace {

template <class Element> bool HasNaNOf(const Type& carrier, const void* value, int count) {
    const auto* elements = static_cast<const Element*>(value);
    return dynamic_cast<const FloatType<Element>*>(&carrier) &&
           std::any_of(elements, elements + count, [](Element e) { return std::isnan(e); });
}

/// What is no number compares equal to all numbers, so that it has no place among them.
bool HasNaN(const Type& carrier, const void* value, int count) {
    return HasNaNOf<float>(carrier, value, count) || HasNaNOf<double>(carrier, value, count);
}

} // namespace

bool EnumerationValues::Before::operator()(const Entry& a, const Entry& b) const {
    const int order = carrier->CompareValues(a.value, b.value, elements);
    return order == 0 ? std::less<>()(a.item, b.item) : order < 0;
}

bool EnumerationValues::Has(const SortedObjectList<EnumerationItem>& items, const Type& carrier,
                            const void* value, int elements) {
    const auto isEqual = [&](const EnumerationItem* item) {
        const void* other = item->GetValueOfStorage(&carrier);
        return other && carrier.CompareValues(value, other, elements) == 0;
    };
    if (HasNaN(carrier, value, elements)) // rare: each item is looked at
        return std::any_of(items.begin(), items.end(), isEqual);
    if (carrier_ != &carrier)
        Clear();
    carrier_ = &carrier;
    const Order& order = GetOrder(items, elements);
    const auto found = order.entries.lower_bound({value, nullptr});
    if (found != order.entries.end() && isEqual(found->item))
        return true;
    return std::any_of(order.unordered.begin(), order.unordered.end(), isEqual);
}

const EnumerationValues::Order&
EnumerationValues::GetOrder(const SortedObjectList<EnumerationItem>& items, int elements) {
    const auto known = orders_.find(elements);
    if (known != orders_.end())
        return known->second;
    Order order(Before{carrier_, elements});
    for (const EnumerationItem* item : items)
        AddTo(order, elements, *item);
    return orders_.emplace(elements, std::move(order)).first->second;
}

void EnumerationValues::AddTo(Order& order, int elements, const EnumerationItem& item) const {
    const void* value = item.GetValueOfStorage(carrier_);
    if (!value || item.GetValueCount() < elements)
        return;
    if (HasNaN(*carrier_, value, elements))
        order.unordered.insert(&item);
    else
        order.entries.insert({value, &item});
}

void EnumerationValues::Add(const EnumerationItem& item) noexcept {
    try {
        for (auto& [elements, order] : orders_)
            AddTo(order, elements, item);
    } catch (const std::bad_alloc&) {
        Clear();
    }
}

void EnumerationValues::Remove(const EnumerationItem& item) noexcept {
    if (orders_.empty())
        return;
    const void* value = item.GetValueOfStorage(carrier_);
    for (auto& [elements, order] : orders_) {
        order.unordered.erase(&item);
        if (value && item.GetValueCount() >= elements && !HasNaN(*carrier_, value, elements))
            order.entries.erase({value, &item});
    }
}

} // namespace Kor
