#pragma once

#include <cstddef>
#include <cstdint>

namespace Kor {

/// What is left of an object that died: the beginning of its block. The first word is odd, unlike
/// that of a living object.
struct DeadObject {
    std::uintptr_t link;
    int classId;
};

/// Keeps the blocks of the objects that died last, in their order, so that their handles stay
/// different from those of new objects. The blocks are linked through their first words.
class Quarantine {
public:
    /// So many blocks are kept at most.
    static constexpr size_t kCapacity = 65536;

    bool IsOn() const { return isOn_; }
    void SetOn(bool on) { isOn_ = on; }

    /// Keeps a block; gives the oldest one where there are too many now, else null.
    DeadObject* Put(DeadObject* dead) noexcept;

    /// Takes the oldest block out; null when there is none.
    DeadObject* TakeOldest() noexcept;

private:
    static constexpr std::uintptr_t kNone = 1;

    bool isOn_ = false;
    size_t count_ = 0;
    DeadObject* newest_ = nullptr;
    std::uintptr_t oldest_ = kNone; ///< An address plus one, as all links.
};

} // namespace Kor
