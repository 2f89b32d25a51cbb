#pragma once

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>

#include "types/BinaryPacker.h"
#include "types/Type.h"

namespace Kor {

/// Zeroed memory for the elements of a value, with a NUL byte behind the last: an enumeration
/// compares value blocks with names. Memory that is never written costs nothing, however large a
/// dimension a file asks for. Throws std::bad_alloc; freed by std::free.
inline void* AllocateElements(int count, size_t width) {
    void* block = std::calloc(static_cast<size_t>(count) * width + 1, 1);
    if (!block)
        throw std::bad_alloc();
    return block;
}

/// A size as an int: 0 at least, and the largest int where dimensions from files ask for more.
inline int ClampSize(long long size) {
    constexpr long long kLargest = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(size, 0LL, kLargest));
}

/// What all types with plain contiguous elements share.
template <class Element> class ScalarType : public Type {
public:
    using Type::Type;

    void* CopyValue(const void* value, int count) const override {
        if (!value || count < 1)
            return nullptr;
        void* block = AllocateElements(count, sizeof(Element));
        std::memcpy(block, value, static_cast<size_t>(count) * sizeof(Element));
        return block;
    }

    void* NewValue(const void* initial, int count) const override {
        if (count < 1)
            return nullptr;
        void* block = AllocateElements(count, sizeof(Element));
        if (initial)
            this->MakeElements(block, initial, count);
        return block;
    }

    void DeleteValue(void* value, int) const override { std::free(value); }

    size_t GetInlineSize(int count) const override {
        return count < 1 ? 0 : static_cast<size_t>(count) * sizeof(Element);
    }

    int CompareValues(const void* a, const void* b, int count) const override {
        if (count < 1)
            return 0;
        if (!a || !b)
            return (a ? 1 : 0) - (b ? 1 : 0);
        for (int i = 0; i < count; ++i) {
            if (At(a, i) < At(b, i))
                return -1;
            if (At(b, i) < At(a, i))
                return 1;
        }
        return 0;
    }

    /// A bound of zero is no bound, since a bound that nobody set is the type's zero: a range of 0
    /// to 10 checks only the upper end.
    bool IsValueValid(const void* value, const void* minimum, const void* maximum,
                      int count) const override {
        if (!value)
            return false;
        for (int i = 0; i < count; ++i) {
            const Element element = At(value, i);
            const Element low = minimum ? At(minimum, i) : Element();
            const Element high = maximum ? At(maximum, i) : Element();
            if ((IsBound(low) && low > element) || (IsBound(high) && high < element))
                return false;
        }
        return true;
    }

    int WriteValueToBinary(const void* value, int count, void* buffer,
                           int bufferSize) const override {
        constexpr int kWidth = static_cast<int>(sizeof(Element));
        if (!buffer || bufferSize < 0)
            return 0;
        BinaryPacker packer(buffer, bufferSize);
        if (GetDimension() == 0)
            packer.WriteCount(GetAlignment(), count);
        const int alignment = std::max(GetAlignment(), 1);
        if (value && kWidth % alignment == 0 && packer.PaddingFor(alignment) == 0) {
            // Each element ends where the next may begin: they go in one piece.
            packer.WriteBytes(value, std::min(count, packer.GetRemaining() / kWidth) * kWidth);
            return packer.GetPosition();
        }
        for (int i = 0; i < count && packer.GetRemaining() >= kWidth; ++i) {
            const Element element = value ? At(value, i) : Element();
            packer.WriteBytes(&element, kWidth);
            packer.PadBeyond(GetAlignment());
        }
        return packer.GetPosition();
    }

protected:
    ScalarType(const ScalarType&) = default;

    static const Element& At(const void* value, int index) {
        return static_cast<const Element*>(value)[index];
    }
    static Element& At(void* value, int index) { return static_cast<Element*>(value)[index]; }

    /// Writing a number's zero test as two comparisons keeps a NaN from becoming a bound.
    static bool IsBound(Element bound) { return bound < Element() || bound > Element(); }
};

} // namespace Kor
