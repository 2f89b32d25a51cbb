#include "types/EnumerationItem.h"

#include "types/Enumeration.h"

namespace Kor {

EnumerationItem::EnumerationItem(std::string_view name, Type* valueType, const char* valueText)
    : BorrowingType(name, 1, 1), valueType_(valueType) {
    if (!valueType)
        return;
    const int count = valueType->GetDimension();
    value_.Adopt(valueType, valueType->NewValue(nullptr, count), count);
    if (value_)
        valueType->GetValueFromString(valueText, value_.Get(), 0);
}

EnumerationItem::EnumerationItem(const EnumerationItem& other)
    : BorrowingType(other), valueType_(other.valueType_) {
    // Every element: making a new value from another one may repeat the first.
    Type* type = other.value_.GetType();
    const int count = other.value_.GetCount();
    if (type)
        value_.Adopt(type, type->CopyValue(other.value_.Get(), count), count);
}

std::unique_ptr<Object> EnumerationItem::Clone() const {
    return std::unique_ptr<Object>(new EnumerationItem(*this));
}

const void* EnumerationItem::GetValueOfStorage(const Type* storage) const {
    return value_.GetType() == storage ? value_.Get() : nullptr;
}

std::string EnumerationItem::GetValueText() const {
    std::string text;
    if (value_)
        text = value_.GetType()->GetReadableText(value_.Get(), 0);
    return text;
}

void EnumerationItem::SetValue(const void* value) {
    if (!valueType_)
        return;
    const int count = valueType_->GetDimension();
    void* copy = valueType_->NewValue(value, count);
    if (enumeration_)
        enumeration_->ForgetValue(*this);
    value_.Clear();
    value_.Adopt(valueType_.Get(), copy, count);
    if (enumeration_)
        enumeration_->KeepValue(*this);
}

void EnumerationItem::DropValue() {
    if (enumeration_)
        enumeration_->ForgetValue(*this);
    value_.Clear();
    valueType_.Reset(nullptr);
}

void EnumerationItem::CollectUsedTypes(std::vector<Type*>& types) const {
    BorrowingType::CollectUsedTypes(types);
    for (Type* used : {valueType_.Get(), value_.GetType()}) {
        if (used)
            types.push_back(used);
    }
}

void EnumerationItem::Leave() noexcept {
    if (enumeration_)
        enumeration_->RemoveItem(this);
    BorrowingType::Leave();
}

void EnumerationItem::LeaveSortedLists() {
    if (enumeration_)
        enumeration_->Unlist(*this);
    BorrowingType::LeaveSortedLists();
}

void EnumerationItem::EnterSortedLists() {
    BorrowingType::EnterSortedLists();
    if (enumeration_)
        enumeration_->List(*this);
}

} // namespace Kor
