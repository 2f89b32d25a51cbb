#include "core/PoolChoice.h"

// A source file of its own: tools that count coverage know a function by its place in a file.
#ifdef OVI_NO_POOL

#include <new>

#include "core/BlockPool.h"
#include "core/HeapObjects.h"

namespace Kor {

namespace {

HeapObjects objects;

} // namespace

void* BlockPool::Take(size_t size) {
    return ::operator new(size);
}

void BlockPool::Give(void* block, size_t /*size*/) noexcept {
    ::operator delete(block);
}

void* BlockPool::TakeObject(size_t size) {
    return objects.Take(size);
}

void BlockPool::GiveObject(void* object, int classId) noexcept {
    objects.Give(object, classId);
}

ObjectAt BlockPool::FindObject(const void* address) noexcept {
    return objects.Find(address);
}

void BlockPool::KeepDead(bool keep) noexcept {
    objects.KeepDead(keep);
}

void BlockPool::GiveSpareBack() noexcept {}

namespace {

/// The last thing that the library does, as with the pool.
struct EndOfLibrary {
    EndOfLibrary() = default;
    EndOfLibrary(const EndOfLibrary&) = delete;
    EndOfLibrary& operator=(const EndOfLibrary&) = delete;
    ~EndOfLibrary() { BlockPool::KeepDead(false); }
} const kEndOfLibrary;

} // namespace

} // namespace Kor

#endif
