#pragma once

#include <cstddef>
#include <cstdint>

namespace Kor {

class Shelf;
struct Piece;

/// Pieces of memory of that size stand at multiples of it, so that the address of a block leads to
/// the head of its piece.
constexpr size_t kPieceSize = size_t{64} * 1024;

/// Memory from the system that is cut into pieces. Its head stands behind that of its first piece.
struct Region {
    Region* next; ///< Of those that have a piece to give.
    Region* previous;
    std::uint32_t freePieces; ///< A bit for each.
};

/// The head of a piece of memory, from which blocks of one size are cut.
///
/// Free blocks form a list. Their links are odd, so that the first word of a free block tells it
/// from a living object, which begins with the address of its table of virtual functions.
struct Piece {
    static constexpr std::uintptr_t kNoBlock = 1;
    static constexpr size_t kHeadSize = 128; ///< With that of a region.

    static Piece* Of(const void* block) {
        return reinterpret_cast<Piece*>(reinterpret_cast<std::uintptr_t>(block) &
                                        ~static_cast<std::uintptr_t>(kPieceSize - 1));
    }

    char* GetFirstBlock() { return reinterpret_cast<char*>(this) + kHeadSize; }

    std::uintptr_t free = kNoBlock; ///< The first free block, plus one.
    char* fresh = nullptr;          ///< Where no block was cut yet.
    char* end = nullptr;            ///< Of the last block.
    std::uint32_t used = 0;
    std::uint32_t mark = 0; ///< Where `used` falls to this, the shelf is told.
    Piece* next = nullptr;  ///< Of those of its shelf that are listed.
    Piece* previous = nullptr;
    Shelf* shelf = nullptr;
    std::uint32_t blockSize = 0;
    bool isListed = false;
    bool holdsObjects = false;
};

static_assert(sizeof(Piece) + sizeof(Region) <= Piece::kHeadSize, "blocks begin behind both heads");

} // namespace Kor
