#include "types/EnumerationValues.h"

#include <algorithm>
#include <new>

#include "types/EnumerationItem.h"
#include "types/FloatType.h"

namespace Kor {

namespace {

template <class Element> bool HasNaNOf(const Type& carrier, const void* value, int count) {
    const auto* elements = static_cast<const Element*>(value);
    return dynamic_cast<const FloatType<Element>*>(&carrier) &&
           std::any_of(elements, elements + count, [](Element e) { return !(e == e); });
}

/// What is no number compares equal to all numbers, so that it has no place among them.
bool HasNaN(const Type& carrier, const void* value, int count) {
    return HasNaNOf<float>(carrier, value, count) || HasNaNOf<double>(carrier, value, count);
}

} // namespace

EnumerationValues::Order::Order(const Type& itsCarrier, int itsDimension)
    : carrier(&itsCarrier), dimension(itsDimension), entries(Before{carrier, dimension}) {}

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
    // Elements in part, and what is no number, are rare: each item is looked at.
    if (elements != carrier.GetDimension() || HasNaN(carrier, value, elements))
        return std::any_of(items.begin(), items.end(), isEqual);
    if (!order_ || order_->carrier != &carrier || order_->dimension != elements)
        Build(items, carrier);
    const auto found = order_->entries.lower_bound({value, nullptr});
    if (found != order_->entries.end() && isEqual(found->item))
        return true;
    return std::any_of(order_->unordered.begin(), order_->unordered.end(), isEqual);
}

void EnumerationValues::Build(const SortedObjectList<EnumerationItem>& items, const Type& carrier) {
    auto order = std::make_unique<Order>(carrier, carrier.GetDimension());
    for (const EnumerationItem* item : items)
        AddTo(*order, *item);
    order_ = std::move(order);
}

void EnumerationValues::AddTo(Order& order, const EnumerationItem& item) {
    const void* value = item.GetValueOfStorage(order.carrier);
    if (value && HasNaN(*order.carrier, value, order.dimension))
        order.unordered.insert(&item);
    else if (value)
        order.entries.insert({value, &item});
}

void EnumerationValues::Add(const EnumerationItem& item) noexcept {
    try {
        if (order_)
            AddTo(*order_, item);
    } catch (const std::bad_alloc&) {
        Clear();
    }
}

void EnumerationValues::Remove(const EnumerationItem& item) noexcept {
    if (!order_)
        return;
    order_->unordered.erase(&item);
    if (const void* value = item.GetValueOfStorage(order_->carrier))
        order_->entries.erase({value, &item});
}

} // namespace Kor
