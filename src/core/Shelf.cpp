#include "core/Shelf.h"

#include <new>

#include "core/PieceStore.h"

namespace Kor {

namespace {

/// Below that many blocks in use a piece counts as one that may become empty.
std::uint32_t FewOf(Piece& piece) {
    const auto room = static_cast<size_t>(piece.end - piece.GetFirstBlock());
    return static_cast<std::uint32_t>(room / piece.blockSize / 4);
}

} // namespace

void* Shelf::TakeElsewhere(size_t size, bool holdsObjects) {
    while (first_ != &none_ && first_->free == Piece::kNoBlock && first_->fresh == first_->end) {
        Piece& full = *first_;
        Unlist(full);
        full.mark = full.used - 1;
    }
    if (first_ == &none_)
        AddPiece(size, holdsObjects);
    return Take(size, holdsObjects);
}

void Shelf::AddPiece(size_t size, bool holdsObjects) {
    auto* piece = new (PieceStore::Take()) Piece;
    const size_t room = kPieceSize - Piece::kHeadSize;
    piece->fresh = piece->GetFirstBlock();
    piece->end = piece->fresh + room / size * size;
    piece->shelf = this;
    piece->blockSize = static_cast<std::uint32_t>(size);
    piece->holdsObjects = holdsObjects;
    ListFirst(*piece);
}

/// A full piece has room again, a listed one is nearly empty, or empty.
void Shelf::NoteMark(Piece& piece) noexcept {
    if (piece.used == 0) {
        NoteEmpty(piece);
    } else if (!piece.isListed) {
        piece.mark = FewOf(piece);
        ListFirst(piece);
    } else {
        piece.mark = 0;
        Unlist(piece);
        ListLast(piece);
    }
}

void Shelf::NoteEmpty(Piece& piece) noexcept {
    if (!piece.isListed)
        ListLast(piece);
    piece.mark = 0;
    const bool hasOther = spare_ && spare_ != &piece && spare_->used == 0;
    if (hasOther || !keepsSpares_)
        Drop(piece);
    else
        spare_ = &piece;
}

void Shelf::Drop(Piece& piece) noexcept {
    if (spare_ == &piece)
        spare_ = nullptr;
    Unlist(piece);
    PieceStore::Give(&piece);
}

void Shelf::GiveSpareBack() noexcept {
    if (spare_ && spare_->used == 0)
        Drop(*spare_);
}

void Shelf::ListFirst(Piece& piece) noexcept {
    piece.isListed = true;
    piece.previous = nullptr;
    piece.next = first_ == &none_ ? nullptr : first_;
    (piece.next ? piece.next->previous : last_) = &piece;
    first_ = &piece;
}

void Shelf::ListLast(Piece& piece) noexcept {
    piece.isListed = true;
    piece.next = nullptr;
    piece.previous = last_;
    (last_ ? last_->next : first_) = &piece;
    last_ = &piece;
}

void Shelf::Unlist(Piece& piece) noexcept {
    piece.isListed = false;
    (piece.next ? piece.next->previous : last_) = piece.previous;
    if (piece.previous)
        piece.previous->next = piece.next;
    else
        first_ = piece.next ? piece.next : &none_;
}

} // namespace Kor
