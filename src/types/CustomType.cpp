#include "types/CustomType.h"

namespace Kor {

std::unique_ptr<Object> CustomType::Clone() const {
    return std::unique_ptr<Object>(new CustomType(*this));
}

const Type* CustomType::FindJudge() const {
    if (!FindCarrier())
        return nullptr;
    const Type* type = this;
    while (const Type* next = type->GetValueCarrier()) {
        if (type->GetClass() == kEnumerationClass)
            break;
        type = next;
    }
    return type;
}

int CustomType::GetValueSize(const void* value, int count) const {
    const Type* carrier = FindCarrier();
    return carrier ? carrier->GetValueSize(value, count) : 0;
}

void* CustomType::NewValue(const void* initial, int count) const {
    const Type* carrier = FindCarrier();
    return carrier ? carrier->NewValue(initial, count) : nullptr;
}

void CustomType::DeleteValue(void* value, int count) const {
    if (const Type* carrier = FindCarrier())
        carrier->DeleteValue(value, count);
}

int CustomType::CompareValues(const void* a, const void* b, int count) const {
    const Type* judge = FindJudge();
    return judge ? judge->CompareValues(a, b, count) : 0;
}

bool CustomType::IsValueValid(const void* value, const void* minimum, const void* maximum,
                              int count) const {
    const Type* judge = FindJudge();
    return !judge || judge->IsValueValid(value, minimum, maximum, count);
}

int CustomType::GetValueAsString(const void* value, std::string& text, int index) const {
    const Type* carrier = FindCarrier();
    return carrier ? carrier->GetValueAsString(value, text, index) : 0;
}

int CustomType::GetValueFromString(const char* text, void* value, int index) const {
    const Type* carrier = FindCarrier();
    return carrier ? carrier->GetValueFromString(text, value, index) : 0;
}

int CustomType::WriteValueToBinary(const void* value, int count, void* buffer,
                                   int bufferSize) const {
    const Type* carrier = FindCarrier();
    return carrier ? carrier->WriteValueToBinary(value, count, buffer, bufferSize) : 0;
}

void CustomType::WriteValueToXML(const void* value, int count, XMLWriter& writer) const {
    if (const Type* carrier = FindCarrier())
        carrier->WriteValueToXML(value, count, writer);
}

} // namespace Kor
