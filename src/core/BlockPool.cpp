#include "core/PoolChoice.h"

// The other way is in BlockPoolOnHeap.cpp.
#ifndef OVI_NO_POOL

#include <cstring>
#include <new>

#include "core/BlockPool.h"
#include "core/PieceStore.h"
#include "core/Quarantine.h"
#include "core/Shelf.h"

// How memory comes in large pages is the business of the system.
#include "platform/LargePages.h"

namespace Kor {

namespace {

constexpr size_t kStep = 16;
constexpr size_t kLargestBlock = 256;

Shelf blockShelves[kLargestBlock / kStep + 1];
Shelf objectShelves[BlockPool::kLargestObject / kStep + 1];
Quarantine quarantine;

size_t ShelfOf(size_t size) {
    return (size + kStep - 1) / kStep;
}

/// Whether a block begins at an address of a piece, be it in use or free.
bool IsBlock(Piece& piece, const void* address) {
    const auto* wanted = static_cast<const char*>(address);
    return wanted >= piece.GetFirstBlock() && wanted < piece.fresh &&
           static_cast<size_t>(wanted - piece.GetFirstBlock()) % piece.blockSize == 0;
}

} // namespace

void* BlockPool::Take(size_t size) {
    if (size - 1 < kLargestBlock)
        return blockShelves[ShelfOf(size)].Take(ShelfOf(size) * kStep, false);
    return size >= kLargePageSize ? MapPages(size, true) : ::operator new(size);
}

void BlockPool::Give(void* block, size_t size) noexcept {
    if (!block)
        return;
    if (size - 1 < kLargestBlock)
        Shelf::Give(block);
    else if (size >= kLargePageSize)
        UnmapPages(block, size);
    else
        ::operator delete(block);
}

void* BlockPool::TakeObject(size_t size) {
    if (size > kLargestObject)
        throw std::bad_alloc();
    return objectShelves[ShelfOf(size)].Take(ShelfOf(size) * kStep, true);
}

void BlockPool::GiveObject(void* object, int classId) noexcept {
    auto* dead = static_cast<DeadObject*>(object);
    dead->classId = classId;
    if (quarantine.IsOn())
        dead = quarantine.Put(dead);
    if (dead)
        Shelf::Give(dead);
}

ObjectAt BlockPool::FindObject(const void* address) noexcept {
    Piece* piece = PieceStore::Find(address);
    if (!piece || !piece->holdsObjects || !IsBlock(*piece, address))
        return {};
    DeadObject dead{};
    std::memcpy(&dead, address, sizeof dead);
    if (dead.link % 2 == 0)
        return {ObjectAt::kAlive, 0};
    return {ObjectAt::kDead, dead.classId};
}

void BlockPool::KeepDead(bool keep) noexcept {
    quarantine.SetOn(keep);
    if (keep)
        return;
    while (DeadObject* dead = quarantine.TakeOldest())
        Shelf::Give(dead);
}

void BlockPool::GiveSpareBack() noexcept {
    for (Shelf& shelf : blockShelves)
        shelf.GiveSpareBack();
    for (Shelf& shelf : objectShelves)
        shelf.GiveSpareBack();
}

namespace {

/// The last thing that the library does when it is unloaded, or the process ends. Objects that a
/// host still has stay usable, and the memory of the last of them goes with it.
struct EndOfLibrary {
    EndOfLibrary() = default;
    EndOfLibrary(const EndOfLibrary&) = delete;
    EndOfLibrary& operator=(const EndOfLibrary&) = delete;
    ~EndOfLibrary() {
        Shelf::KeepNoSpares();
        BlockPool::KeepDead(false);
        BlockPool::GiveSpareBack();
    }
} const kEndOfLibrary;

} // namespace

} // namespace Kor

#endif
