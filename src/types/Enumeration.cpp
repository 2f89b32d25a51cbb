#include "types/Enumeration.h"

#include <algorithm>
#include <cstdint>
#include <new>
#include <utility>

// An item that is registered as a plain type as well is the manager's.
#include "manager/TemplateManager.h"

#include "core/Ending.h"
#include "core/Undo.h"

namespace Kor {

namespace {

constexpr int kFewItems = 16; // searched as quickly one by one

} // namespace

Enumeration::Enumeration(std::string_view name, Type* base)
    : BorrowingType(name, 1, base ? base->GetAlignment() : 1) {
    SetBaseType(base);
}

Enumeration::Enumeration(const Enumeration& other) : BorrowingType(other) {
    Undo copied([this] { DeleteItems(); });
    items_.Reserve(other.items_.GetCount());
    for (const EnumerationItem* item : other.items_) {
        auto* copy = static_cast<EnumerationItem*>(item->Clone().release());
        copy->SetEnumeration(this);
        items_.Append(copy);
    }
    copied.Commit();
}

Enumeration::~Enumeration() {
    Enumeration::Leave();
    DeleteItems();
}

void Enumeration::DeleteItems() {
    const SortedObjectList<EnumerationItem> items = std::move(items_);
    items_.Clear();
    values_.Clear();
    for (EnumerationItem* item : items) {
        item->SetEnumeration(nullptr);
        Ending::End(item);
    }
}

std::unique_ptr<Object> Enumeration::Clone() const {
    return std::unique_ptr<Object>(new Enumeration(*this));
}

int Enumeration::AddItem(EnumerationItem* item) {
    items_.MakeRoom();
    // Whoever owned the item so far would delete it, too.
    if (Enumeration* before = item->GetEnumeration(); before && before != this)
        before->RemoveItem(item);
    if (item->IsRegistered() || item->GetOwner() == Owner::kManager)
        TemplateManager::Get()->GiveAway(*item);
    item->TakeFromUsers();
    EnumerationItem* replaced = nullptr;
    const int result = items_.Insert(item, &replaced);
    if (replaced) {
        values_.Remove(*replaced);
        replaced->SetEnumeration(nullptr);
    }
    values_.Add(*item);
    item->SetEnumeration(this);
    return result;
}

int Enumeration::RemoveItem(EnumerationItem* item) {
    const int index = items_.FindEntry(item);
    if (index < 0)
        return index;
    EnumerationItem* removed = items_.GetAt(index);
    removed->SetEnumeration(nullptr);
    values_.Remove(*removed);
    items_.Remove(removed);
    return index;
}

void Enumeration::CollectUsedTypes(std::vector<Type*>& types) const {
    BorrowingType::CollectUsedTypes(types);
    for (const EnumerationItem* item : items_)
        item->CollectUsedTypes(types);
}

int Enumeration::CompareValues(const void* a, const void*, int count) const {
    const Type* carrier = FollowCarriers();
    return carrier ? carrier->CompareValues(a, a, count) : 0;
}

bool Enumeration::IsValueValid(const void* value, const void*, const void*, int count) const {
    const Type* carrier = FollowCarriers();
    if (!value || !carrier)
        return false;
    // The names come first: a block that is a name need not hold an element of the base type.
    if (IsNameOfItem(static_cast<const char*>(value), GetReadableSize(*carrier, count)))
        return true;
    std::string text;
    carrier->GetValueAsString(value, text, 0);
    if (items_.Find(text) >= 0)
        return true;
    // An item's value may have more elements than the given one.
    const int elements = std::min(carrier->GetDimension(), std::max(count, 1));
    return IsValueOfItem(*carrier, value, elements);
}

/// Few items are looked at one by one; and all of them where memory for more is missing, or where
/// the values are instances, whose names order them and may change.
bool Enumeration::IsValueOfItem(const Type& carrier, const void* value, int elements) const {
    if (items_.GetCount() > kFewItems && !carrier.ImplementsClass(kTemplateClass)) {
        try {
            return values_.Has(items_, carrier, value, elements);
        } catch (const std::bad_alloc&) {
            values_.Clear();
        }
    }
    return std::any_of(items_.begin(), items_.end(), [&](const EnumerationItem* item) {
        const void* other = item->GetValueOfStorage(&carrier);
        return other && carrier.CompareValues(value, other, elements) == 0;
    });
}

/// How much of a block may be read as a name. Numbers of one or two bytes easily look like the
/// beginning of one, with nothing behind them; wider ones do not, and hosts pass names for them.
size_t Enumeration::GetReadableSize(const Type& carrier, int count) {
    const size_t width = carrier.GetInlineSize(1);
    const bool isNarrow = width > 0 && width < sizeof(std::int32_t);
    return isNarrow ? width * static_cast<size_t>(std::max(count, 1)) : std::string::npos;
}

/// The block may be shorter than a name, so nothing behind the first difference is read: a byte is
/// looked at only while there are names that begin with all those before it.
bool Enumeration::IsNameOfItem(const char* block, size_t size) const {
    int first = 0;
    int end = items_.GetCount();
    for (size_t place = 0; first < end && place < size; ++place) {
        const unsigned byte = static_cast<unsigned char>(block[place]);
        first = CountNamesBelow(first, end, place, byte);
        if (byte == 0) // the shortest of these names comes first
            return first < end && items_.GetAt(first)->GetFullName().size() == place;
        end = CountNamesBelow(first, end, place, byte + 1);
    }
    return false;
}

/// The index of the first item in a range whose name has at least that byte at a place. Up to there
/// the names of the range are the same; one that ends there has a zero.
int Enumeration::CountNamesBelow(int first, int end, size_t place, unsigned byte) const {
    while (first < end) {
        const int middle = first + (end - first) / 2;
        const std::string& name = items_.GetAt(middle)->GetFullName();
        const unsigned other = static_cast<unsigned char>(name.c_str()[place]);
        if (other < byte)
            first = middle + 1;
        else
            end = middle;
    }
    return first;
}

} // namespace Kor
