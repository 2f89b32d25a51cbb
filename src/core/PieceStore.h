#pragma once

#include "core/Piece.h"

namespace Kor {

/// The pieces of memory from which all shelves take. They are cut from regions, which come from the
/// system and go back to it when all of their pieces are free.
class PieceStore {
public:
    /// Memory for a piece; its head is the caller's to fill. Throws std::bad_alloc.
    static void* Take();
    static void Give(Piece* piece) noexcept;

    /// The piece that an address lies in; null where none is in use. Any address may be asked for.
    static Piece* Find(const void* address) noexcept;

    /// How many pieces are in use, and how many regions they are cut from.
    static size_t CountPieces() { return pieces_; }
    static size_t CountRegions() { return count_; }

private:
    static void AddRegion();
    static void RemoveRegion(Region& region) noexcept;
    static void MakeRoomInTable();
    static void DropEmptyTable() noexcept;
    static void List(Region& region) noexcept;
    static void Unlist(Region& region) noexcept;

    // All regions, ascending by address; memory of its own, which is there while a region is.
    static inline Region** table_ = nullptr;
    static inline size_t count_ = 0;
    static inline size_t capacity_ = 0;
    static inline size_t pieces_ = 0;
    static inline Region* withPieces_ = nullptr; ///< The regions that have a piece to give.
};

} // namespace Kor
