#include "types/StringType.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "core/Names.h"
#include "types/BinaryPacker.h"
#include "types/ScalarType.h"

namespace Kor {

namespace {

constexpr int kLengthSize = static_cast<int>(sizeof(std::int32_t));

const char* At(const void* value, int index) {
    return value ? static_cast<const char* const*>(value)[index] : nullptr;
}

char* CopyText(const char* text) {
    if (!text)
        return nullptr;
    const size_t size = std::strlen(text) + 1;
    auto* copy = static_cast<char*>(std::malloc(size));
    if (!copy)
        throw std::bad_alloc();
    std::memcpy(copy, text, size);
    return copy;
}

int CompareTexts(const char* a, const char* b) {
    if (!a || !b)
        return (a ? 1 : 0) - (b ? 1 : 0);
    const int order = std::strcmp(a, b);
    return order == 0 ? 0 : (order < 0 ? -1 : 1);
}

} // namespace

std::unique_ptr<Object> StringType::Clone() const {
    return std::unique_ptr<Object>(new StringType(*this));
}

int StringType::GetValueSize(const void* value, int count) const {
    auto size = static_cast<long long>(count) * kLengthSize;
    for (int i = 0; value && i < count; ++i)
        size += static_cast<long long>(TextOf(At(value, i)).size());
    return ClampSize(size);
}

void* StringType::NewValue(const void* initial, int count) const {
    if (count < 1)
        return nullptr;
    void* block = AllocateElements(count, sizeof(char*));
    try {
        if (initial)
            MakeElements(block, initial, count);
    } catch (...) {
        std::free(block);
        throw;
    }
    return block;
}

void StringType::DeleteValue(void* value, int count) const {
    if (value)
        EndElements(value, count);
    std::free(value);
}

size_t StringType::GetInlineSize(int count) const {
    return count < 1 ? 0 : static_cast<size_t>(count) * sizeof(char*);
}

void StringType::MakeElements(void* elements, const void* initial, int count) const {
    auto* texts = static_cast<char**>(elements);
    std::fill_n(texts, count, nullptr);
    try {
        for (int i = 0; initial && i < count; ++i)
            texts[i] = CopyText(At(initial, i));
    } catch (...) {
        EndElements(elements, count);
        throw;
    }
}

void StringType::EndElements(void* elements, int count) const {
    for (int i = 0; i < count; ++i)
        std::free(static_cast<char**>(elements)[i]);
}

int StringType::CompareValues(const void* a, const void* b, int count) const {
    for (int i = 0; i < count; ++i) {
        if (const int order = CompareTexts(At(a, i), At(b, i)))
            return order;
    }
    return 0;
}

bool StringType::IsValueValid(const void* value, const void* minimum, const void* maximum,
                              int count) const {
    if (!value)
        return false;
    for (int i = 0; i < count; ++i) {
        const char* text = At(value, i);
        const char* low = At(minimum, i);
        const char* high = At(maximum, i);
        if (!text || !*text)
            return false;
        if ((low && CompareTexts(low, text) > 0) || (high && CompareTexts(high, text) <= 0))
            return false;
    }
    return true;
}

int StringType::GetValueAsString(const void* value, std::string& text, int index) const {
    if (index >= 0)
        text.append(TextOf(At(value, index)));
    return static_cast<int>(text.size());
}

int StringType::GetValueFromString(const char* text, void* value, int index) const {
    const std::string_view content = TextOf(text);
    if (value && index >= 0) {
        char* copy = content.empty() ? nullptr : CopyText(text);
        char*& element = static_cast<char**>(value)[index];
        std::free(element);
        element = copy;
    }
    return static_cast<int>(content.size());
}

int StringType::WriteValueToBinary(const void* value, int count, void* buffer,
                                   int bufferSize) const {
    if (!buffer || bufferSize < 0)
        return 0;
    BinaryPacker packer(buffer, bufferSize);
    if (GetDimension() == 0)
        packer.WriteCount(GetAlignment(), count);
    for (int i = 0; i < count; ++i) {
        const std::string_view text = TextOf(At(value, i));
        const int needed = packer.PaddingFor(kLengthSize) + kLengthSize;
        const int space = packer.GetRemaining() - needed;
        if (space < 0 || text.size() > static_cast<size_t>(space))
            break;
        // Only the length is read as a number: it is aligned to 4, whatever the type's alignment.
        packer.PadWithin(kLengthSize);
        packer.WriteInt(static_cast<std::int32_t>(text.size()));
        packer.WriteBytes(text.data(), static_cast<int>(text.size()));
    }
    return packer.GetPosition();
}

} // namespace Kor
