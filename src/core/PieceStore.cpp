#include "core/PieceStore.h"

#include <algorithm>
#include <new>

// Where memory comes from is the business of the system.
#include "platform/LargePages.h"

namespace Kor {

namespace {

constexpr size_t kPiecesOfRegion = kLargePageSize / kPieceSize;
constexpr std::uint32_t kAllPieces = 0xFFFFFFFFu;
static_assert(kPiecesOfRegion == 32, "each piece has a bit");

/// The first regions are in pages of the usual size, of which a small scene touches but some.
constexpr size_t kPlainRegions = 4;

std::uintptr_t AddressOf(const void* pointer) {
    return reinterpret_cast<std::uintptr_t>(pointer);
}

char* StartOf(Region* region) {
    return reinterpret_cast<char*>(Piece::Of(region));
}

Region* RegionAt(void* start) {
    return reinterpret_cast<Region*>(static_cast<char*>(start) + sizeof(Piece));
}

size_t LowestBit(std::uint32_t bits) {
    size_t place = 0;
    for (; (bits & 1u) == 0; bits >>= 1)
        ++place;
    return place;
}

std::uint32_t BitOf(size_t piece) {
    return std::uint32_t{1} << piece;
}

/// The region that an address lies in or behind, or null.
Region* FindRegion(Region** begin, Region** end, const void* address) {
    Region** above =
        std::upper_bound(begin, end, AddressOf(address), [](std::uintptr_t wanted, Region* region) {
            return wanted < AddressOf(StartOf(region));
        });
    return above == begin ? nullptr : above[-1];
}

} // namespace

void* PieceStore::Take() {
    if (!withPieces_)
        AddRegion();
    Region& region = *withPieces_;
    const size_t piece = LowestBit(region.freePieces);
    region.freePieces &= ~BitOf(piece);
    ++pieces_;
    if (region.freePieces == 0)
        Unlist(region);
    return StartOf(&region) + piece * kPieceSize;
}

void PieceStore::Give(Piece* piece) noexcept {
    Region& region = *FindRegion(table_, table_ + count_, piece);
    --pieces_;
    if (region.freePieces == 0)
        List(region);
    region.freePieces |= BitOf((AddressOf(piece) - AddressOf(StartOf(&region))) / kPieceSize);
    if (region.freePieces == kAllPieces)
        RemoveRegion(region);
}

Piece* PieceStore::Find(const void* address) noexcept {
    Region* region = FindRegion(table_, table_ + count_, address);
    if (!region)
        return nullptr;
    const size_t piece = (AddressOf(address) - AddressOf(StartOf(region))) / kPieceSize;
    const bool inUse = piece < kPiecesOfRegion && (region->freePieces & BitOf(piece)) == 0;
    return inUse ? Piece::Of(address) : nullptr;
}

void PieceStore::AddRegion() {
    MakeRoomInTable();
    void* start = nullptr;
    try {
        start = MapPages(kLargePageSize, count_ >= kPlainRegions);
    } catch (const std::bad_alloc&) {
        DropEmptyTable();
        throw;
    }
    auto* region = new (RegionAt(start)) Region{nullptr, nullptr, kAllPieces};
    Region** place = std::upper_bound(table_, table_ + count_, region);
    std::copy_backward(place, table_ + count_, table_ + count_ + 1);
    *place = region;
    ++count_;
    List(*region);
}

void PieceStore::RemoveRegion(Region& region) noexcept {
    Unlist(region);
    Region** place = std::lower_bound(table_, table_ + count_, &region);
    std::copy(place + 1, table_ + count_, place);
    --count_;
    UnmapPages(StartOf(&region), kLargePageSize);
    DropEmptyTable();
}

void PieceStore::MakeRoomInTable() {
    if (count_ < capacity_)
        return;
    const size_t wanted = std::max<size_t>(2 * capacity_, 64);
    // Pointers are meant. NOLINTNEXTLINE(bugprone-sizeof-expression)
    auto* larger = static_cast<Region**>(::operator new(wanted * sizeof(Region*)));
    std::copy(table_, table_ + count_, larger);
    ::operator delete(table_);
    table_ = larger;
    capacity_ = wanted;
}

/// So that nothing stays behind when the library goes.
void PieceStore::DropEmptyTable() noexcept {
    if (count_ > 0)
        return;
    ::operator delete(table_);
    table_ = nullptr;
    capacity_ = 0;
}

void PieceStore::List(Region& region) noexcept {
    region.next = withPieces_;
    region.previous = nullptr;
    if (withPieces_)
        withPieces_->previous = &region;
    withPieces_ = &region;
}

void PieceStore::Unlist(Region& region) noexcept {
    if (region.next)
        region.next->previous = region.previous;
    (region.previous ? region.previous->next : withPieces_) = region.next;
}

} // namespace Kor
