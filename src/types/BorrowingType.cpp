#include "types/BorrowingType.h"

namespace Kor {

int BorrowingType::GetValueSize(const void* value, int count) const {
    const Type* carrier = FollowCarriers();
    return carrier ? carrier->GetValueSize(value, count) : 0;
}

void* BorrowingType::NewValue(const void* initial, int count) const {
    const Type* carrier = FollowCarriers();
    return carrier ? carrier->NewValue(initial, count) : nullptr;
}

void BorrowingType::DeleteValue(void* value, int count) const {
    if (const Type* carrier = FollowCarriers())
        carrier->DeleteValue(value, count);
}

size_t BorrowingType::GetInlineSize(int count) const {
    const Type* carrier = FollowCarriers();
    return carrier ? carrier->GetInlineSize(count) : 0;
}

void BorrowingType::MakeElements(void* elements, const void* initial, int count) const {
    if (const Type* carrier = FollowCarriers())
        carrier->MakeElements(elements, initial, count);
}

void BorrowingType::EndElements(void* elements, int count) const {
    if (const Type* carrier = FollowCarriers())
        carrier->EndElements(elements, count);
}

/// The type that compares and checks: an enumeration does so in its own way.
const Type* BorrowingType::FindComparingType() const {
    if (!FollowCarriers())
        return nullptr;
    const Type* type = this;
    while (const Type* next = type->GetValueCarrier()) {
        if (type->GetClass() == kEnumerationClass)
            break;
        type = next;
    }
    return type;
}

int BorrowingType::CompareValues(const void* a, const void* b, int count) const {
    const Type* comparing = FindComparingType();
    return comparing ? comparing->CompareValues(a, b, count) : 0;
}

bool BorrowingType::IsValueValid(const void* value, const void* minimum, const void* maximum,
                                 int count) const {
    const Type* comparing = FindComparingType();
    return !comparing || comparing->IsValueValid(value, minimum, maximum, count);
}

int BorrowingType::GetValueAsString(const void* value, std::string& text, int index) const {
    const Type* carrier = FollowCarriers();
    return carrier ? carrier->GetValueAsString(value, text, index) : 0;
}

int BorrowingType::GetValueFromString(const char* text, void* value, int index) const {
    const Type* carrier = FollowCarriers();
    return carrier ? carrier->GetValueFromString(text, value, index) : 0;
}

int BorrowingType::WriteValueToBinary(const void* value, int count, void* buffer,
                                      int bufferSize) const {
    const Type* carrier = FollowCarriers();
    return carrier ? carrier->WriteValueToBinary(value, count, buffer, bufferSize) : 0;
}

} // namespace Kor
