#include "types/BinaryPacker.h"

#include <algorithm>
#include <cstring>

namespace Kor {

int PaddingOfAddress(const void* address, int alignment) {
    if (alignment <= 1)
        return 0;
    const auto wanted = static_cast<std::uintptr_t>(alignment);
    const std::uintptr_t over = reinterpret_cast<std::uintptr_t>(address) % wanted;
    return over == 0 ? 0 : static_cast<int>(wanted - over);
}

BinaryPacker::BinaryPacker(void* buffer, int bufferSize)
    : buffer_(static_cast<char*>(buffer)), size_(buffer ? bufferSize : 0) {}

int BinaryPacker::PaddingFor(int alignment) const {
    return PaddingOfAddress(buffer_ + position_, alignment);
}

void BinaryPacker::PadWithin(int alignment) {
    Zero(std::min(PaddingFor(alignment), std::max(GetRemaining(), 0)));
}

void BinaryPacker::PadBeyond(int alignment) {
    Zero(PaddingFor(alignment));
}

void BinaryPacker::WriteCount(int alignment, int count) {
    PadWithin(alignment);
    if (GetRemaining() < static_cast<int>(sizeof(std::int32_t)))
        return;
    PadWithin(sizeof(std::int32_t));
    Zero(std::min(GetRemaining(), static_cast<int>(sizeof(std::int32_t))));
    const std::int32_t stored = count;
    std::memcpy(buffer_, &stored, sizeof stored);
}

void BinaryPacker::WriteBytes(const void* bytes, int size) {
    if (!bytes)
        return Zero(size);
    if (size <= 0)
        return;
    std::memcpy(buffer_ + position_, bytes, static_cast<size_t>(size));
    position_ += size;
}

void BinaryPacker::Zero(int size) {
    if (size <= 0)
        return;
    std::memset(buffer_ + position_, 0, static_cast<size_t>(size));
    position_ += size;
}

} // namespace Kor
