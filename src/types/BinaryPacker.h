#pragma once

#include <cstddef>
#include <cstdint>

namespace Kor {

/// Writes one value into a buffer, with padding measured on absolute addresses so that elements
/// end up aligned in memory. All padding bytes are 0.
class BinaryPacker {
public:
    BinaryPacker(void* buffer, int bufferSize);

    /// The bytes used so far, and those left (below 0 once padding ran past the end).
    int GetPosition() const { return position_; }
    int GetRemaining() const { return size_ - position_; }

    /// Pads to an alignment, clipped to the buffer. Alignments below 1 count as 1.
    void PadWithin(int alignment);

    /// Pads to an alignment even where that runs past the end of the buffer: packed records rely
    /// on the padding behind their last element.
    void PadBeyond(int alignment);

    /// The prefix of a value of variable length: pads to the alignment and then to 4, and stores
    /// the count. It goes to the first bytes of the buffer, where a reader finds it without knowing
    /// the address that the padding was made for. The slot behind the padding is filled with zeroes
    /// and skipped.
    void WriteCount(int alignment, int count);

    /// The padding that the position needs for an alignment.
    int PaddingFor(int alignment) const;

    /// Counts bytes that somebody else wrote at the position.
    void Skip(int size) { position_ += size; }

    /// Write at the position, which then lies behind. The caller has looked at what remains.
    void WriteBytes(const void* bytes, int size);
    void WriteInt(std::int32_t number) { WriteBytes(&number, sizeof number); }

private:
    void Zero(int size);

    char* buffer_;
    int size_;
    int position_ = 0;
};

/// The padding that an address needs for an alignment.
int PaddingOfAddress(const void* address, int alignment);

} // namespace Kor
