#pragma once

#include "core/Piece.h"

namespace Kor {

/// The blocks of one size, which are cut from pieces of memory. A piece goes back once none of its
/// own blocks is in use; one such piece a shelf is kept, so that making and deleting a single
/// object over and over costs no piece each time.
///
/// Pieces that have room are listed, the fuller ones first: so blocks gather in few pieces, and the
/// others become empty.
class Shelf {
public:
    /// The size is that of all blocks of the shelf, a multiple of 16. Throws std::bad_alloc.
    void* Take(size_t size, bool holdsObjects) {
        Piece* piece = first_;
        if (piece->free != Piece::kNoBlock) {
            auto* block = reinterpret_cast<std::uintptr_t*>(piece->free - 1);
            piece->free = *block;
            ++piece->used;
            return block;
        }
        char* block = piece->fresh;
        if (block == piece->end)
            return TakeElsewhere(size, holdsObjects);
        piece->fresh = block + size;
        ++piece->used;
        return block;
    }

    /// Gives a block back to whichever shelf it is of.
    static void Give(void* block) noexcept {
        Piece* piece = Piece::Of(block);
        *static_cast<std::uintptr_t*>(block) = piece->free;
        piece->free = reinterpret_cast<std::uintptr_t>(block) + 1;
        if (--piece->used == piece->mark)
            piece->shelf->NoteMark(*piece);
    }

    /// Gives the piece back that is kept for blocks to come.
    void GiveSpareBack() noexcept;

    /// From now on no shelf keeps a piece for blocks to come.
    static void KeepNoSpares() { keepsSpares_ = false; }

private:
    void* TakeElsewhere(size_t size, bool holdsObjects);
    void AddPiece(size_t size, bool holdsObjects);
    void NoteMark(Piece& piece) noexcept;
    void NoteEmpty(Piece& piece) noexcept;
    void ListFirst(Piece& piece) noexcept;
    void ListLast(Piece& piece) noexcept;
    void Unlist(Piece& piece) noexcept;
    void Drop(Piece& piece) noexcept;

    static inline Piece none_; ///< Stands for a piece where there is none; has no room.
    static inline bool keepsSpares_ = true;

    Piece* first_ = &none_; ///< Of the listed ones.
    Piece* last_ = nullptr;
    Piece* spare_ = nullptr; ///< Was empty when it was last looked at.
};

} // namespace Kor
