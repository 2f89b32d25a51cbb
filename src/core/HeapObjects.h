#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "core/ObjectAt.h"
#include "core/Quarantine.h"

namespace Kor {

/// Objects that come from the heap one by one, where tools that watch the heap see the end of each.
/// It knows all that are alive, by a head in front of each. The links between the heads are
/// inverted: they keep no object in reach that nobody else points to, so that it counts as lost.
class HeapObjects {
public:
    void* Take(size_t size);
    void Give(void* object, int classId) noexcept;
    ObjectAt Find(const void* address) const noexcept;
    void KeepDead(bool keep) noexcept;

private:
    struct Head {
        DeadObject dead; ///< Linked into the quarantine.
        std::uintptr_t next;
        size_t size;
        bool isAlive;
    };
    static constexpr size_t kHeadSize = 48;
    static_assert(sizeof(Head) <= kHeadSize && kHeadSize % 16 == 0, "objects stay aligned");

    static Head* HeadOf(const void* object);
    static void* ObjectOf(Head* head);
    std::uintptr_t& ChainOf(const void* object);
    void Free(Head* head) noexcept;

    std::array<std::uintptr_t, size_t{1} << 16> chains_{}; ///< By a hash of the address.
    Quarantine quarantine_;
};

} // namespace Kor
