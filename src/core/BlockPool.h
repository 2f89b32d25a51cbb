#pragma once

#include <cstddef>

#include "core/ObjectAt.h"

namespace Kor {

/// Memory for small objects of which scenes have millions: blocks of one size are cut from pieces
/// of 64 KiB, which costs a fraction of an allocation each. A piece is given back once none of its
/// own blocks is in use. Single blocks of megabytes come in large pages where the system has them.
/// As everything here, for one thread only.
///
/// Model objects have shelves of their own, so that the pool can say of any address whether a
/// living object begins there. Nobody keeps a list for that: it costs nothing until it is asked.
class BlockPool {
public:
    /// Objects are no larger than that.
    static constexpr size_t kLargestObject = 1024;

    /// A block of at least that many bytes, aligned for any object; larger ones than the pool
    /// serves come from the heap. Throws std::bad_alloc.
    static void* Take(size_t size);

    /// Gives a block back; the size is that which was asked for.
    static void Give(void* block, size_t size) noexcept;

    /// A block for a model object. Throws std::bad_alloc.
    static void* TakeObject(size_t size);

    /// Gives the block of an object back, which was of that class.
    static void GiveObject(void* object, int classId) noexcept;

    /// What begins at any address. An object counts as alive until its memory is given back.
    static ObjectAt FindObject(const void* address) noexcept;

    /// Whether the memory of the objects that die is kept for a while, so that it can be told that
    /// they are dead although new ones are made.
    static void KeepDead(bool keep) noexcept;

    /// Gives the pieces back, too, that were kept for blocks to come. For the end of the library: a
    /// host that loads it again and again would otherwise lose them each time.
    static void GiveSpareBack() noexcept;
};

/// The base of classes whose objects live in the pool, those of derived classes included.
struct Pooled {
    // Its counterpart is the sized form below. NOLINTNEXTLINE(misc-new-delete-overloads)
    static void* operator new(size_t size) { return BlockPool::Take(size); }
    static void operator delete(void* object, size_t size) noexcept {
        BlockPool::Give(object, size);
    }
};

/// For vectors whose elements live in the pool.
template <class T> struct PoolAllocator {
    // The names and conversions that allocators have, and blocks of pointers among others.
    // NOLINTBEGIN(readability-identifier-naming,google-explicit-constructor)
    // NOLINTBEGIN(bugprone-sizeof-expression)
    using value_type = T;

    PoolAllocator() = default;
    template <class U> PoolAllocator(const PoolAllocator<U>&) {}

    T* allocate(size_t count) { return static_cast<T*>(BlockPool::Take(count * sizeof(T))); }
    void deallocate(T* block, size_t count) noexcept { BlockPool::Give(block, count * sizeof(T)); }
    // NOLINTEND(bugprone-sizeof-expression)
    // NOLINTEND(readability-identifier-naming,google-explicit-constructor)

    template <class U> bool operator==(const PoolAllocator<U>&) const { return true; }
    template <class U> bool operator!=(const PoolAllocator<U>&) const { return false; }
};

} // namespace Kor
