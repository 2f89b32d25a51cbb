#include "core/BlockPool.h"

#include <cstdint>
#include <new>

// How memory comes in large pages is the business of the system.
#include "platform/LargePages.h"

// OVI_NO_POOL leaves every block to the heap, where its end and its failure can be seen.
#if defined(OVI_NO_POOL)
#elif defined(__SANITIZE_ADDRESS__)
#define OVI_NO_POOL 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define OVI_NO_POOL 1
#endif
#endif

namespace Kor {

namespace {

#ifdef OVI_NO_POOL
constexpr size_t kLargest = 0;
#else
constexpr size_t kLargest = 256;
#endif
constexpr size_t kStep = 16;
constexpr size_t kPieceSize = 64 * 1024;
constexpr int kSmallPieces = 16; ///< From then on a shelf grows by large pages.

/// The blocks of one size. Pieces and free blocks are linked through their first bytes.
struct Shelf {
    struct Link {
        Link* next;
    };

    void* Take(size_t size) {
        if (free) {
            Link* block = free;
            free = block->next;
            ++used;
            return block;
        }
        if (static_cast<size_t>(end - fresh) < size)
            AddPiece();
        void* block = fresh;
        fresh += size;
        ++used;
        return block;
    }

    void Give(void* block) {
        free = new (block) Link{free};
        if (--used == 0)
            Empty();
    }

    void AddPiece() {
        if (pieceCount < kSmallPieces) {
            StartPiece(::operator new(kPieceSize), kPieceSize, pieces);
            ++pieceCount;
            return;
        }
        StartPiece(TakeLargePages(kLargePageSize), kLargePageSize, pages);
    }

    void StartPiece(void* piece, size_t size, Link*& list) {
        list = new (piece) Link{list};
        fresh = static_cast<char*>(piece) + kStep;
        end = static_cast<char*>(piece) + size;
    }

    /// One piece stays, so that making and deleting a single object over and over costs no heap.
    void Empty() {
        while (Link* page = pages) {
            pages = page->next;
            GiveLargePages(page);
        }
        while (Link* next = pieces->next) {
            pieces->next = next->next;
            ::operator delete(next);
        }
        pieceCount = 1;
        free = nullptr;
        fresh = reinterpret_cast<char*>(pieces) + kStep;
        end = fresh - kStep + kPieceSize;
    }

    void GiveSpareBack() {
        if (used > 0 || !pieces)
            return;
        ::operator delete(pieces);
        *this = Shelf();
    }

    Link* free = nullptr;
    Link* pieces = nullptr;
    Link* pages = nullptr; ///< Pieces in the size of a large page.
    int pieceCount = 0;    ///< Of those that are not.
    char* fresh = nullptr; ///< Where no block was cut yet.
    char* end = nullptr;
    size_t used = 0;
};

Shelf shelves[kLargest / kStep + 1];

size_t ShelfOf(size_t size) {
    return (size + kStep - 1) / kStep;
}

} // namespace

void* BlockPool::Take(size_t size) {
    if (size >= kLargePageSize)
        return TakeLargePages(size);
    if (size == 0 || size > kLargest)
        return ::operator new(size);
    return shelves[ShelfOf(size)].Take(ShelfOf(size) * kStep);
}

void BlockPool::Give(void* block, size_t size) noexcept {
    if (!block)
        return;
    if (size >= kLargePageSize)
        GiveLargePages(block);
    else if (size == 0 || size > kLargest)
        ::operator delete(block);
    else
        shelves[ShelfOf(size)].Give(block);
}

void BlockPool::GiveSpareBack() noexcept {
    for (Shelf& shelf : shelves)
        shelf.GiveSpareBack();
}

} // namespace Kor
