#pragma once

#include <cstddef>
#include <new>
#include <string_view>
#include <vector>

#include "core/BlockPool.h"
#include "core/KeyHash.h"

namespace Kor {

/// Finds the objects of a large list by their keys (`GetKey`) in a few steps. The keys stay with
/// the objects: one that is about to change must be taken out first and added again afterwards.
///
/// The index is a help that may be missing: it comes into being with the first object added, and is
/// given up when memory runs out.
template <class T> class KeyIndex {
public:
    bool IsEmpty() const { return count_ == 0; }

    /// Whether objects share keys; Find then gives any of them.
    bool IsAmbiguous() const { return ambiguous_; }

    int GetCount() const { return static_cast<int>(count_); }

    /// For how many objects there is room, and more.
    size_t GetSlotCount() const { return slots_.size(); }

    /// The object with the key, or null.
    T* Find(std::string_view key) const {
        if (slots_.empty())
            return nullptr;
        const auto hash = static_cast<std::uint32_t>(HashKey(key));
        for (size_t at = hash & Mask(); slots_[at].object; at = Next(at)) {
            if (slots_[at].hash == hash && slots_[at].object->GetKey() == key)
                return slots_[at].object;
        }
        return nullptr;
    }

    /// Adds an object that is not there yet; forgets everything when memory runs out.
    void Add(T* object) noexcept {
        try {
            if (2 * (count_ + 1) > slots_.size())
                Resize(slots_.empty() ? kFirstSize : 2 * slots_.size());
        } catch (const std::bad_alloc&) {
            Clear();
            return;
        }
        const std::string_view key = object->GetKey();
        const auto hash = static_cast<std::uint32_t>(HashKey(key));
        size_t at = hash & Mask();
        for (; slots_[at].object; at = Next(at)) {
            if (slots_[at].hash == hash && slots_[at].object->GetKey() == key)
                ambiguous_ = true;
        }
        slots_[at] = {object, hash};
        ++count_;
    }

    /// Takes an object out, also one whose key has changed meanwhile.
    void Remove(const T* object) noexcept {
        if (slots_.empty())
            return;
        size_t at = static_cast<std::uint32_t>(HashKey(object->GetKey())) & Mask();
        while (slots_[at].object && slots_[at].object != object)
            at = Next(at);
        if (!slots_[at].object)
            at = Search(object);
        if (at < slots_.size())
            Erase(at);
    }

    void Clear() noexcept {
        Slots().swap(slots_);
        count_ = 0;
        ambiguous_ = false;
    }

private:
    struct Slot {
        T* object = nullptr; ///< Null when the slot is free.
        std::uint32_t hash = 0;
    };

    using Slots = std::vector<Slot, PoolAllocator<Slot>>;

    static constexpr size_t kFirstSize = 64;
    static constexpr size_t kManySlots = 4096; ///< No fewer are worth giving back.

    size_t Mask() const { return slots_.size() - 1; } // the size is a power of two
    size_t Next(size_t at) const { return (at + 1) & Mask(); }

    void Resize(size_t size) {
        Slots former(size);
        former.swap(slots_);
        for (const Slot& slot : former) {
            if (!slot.object)
                continue;
            size_t at = slot.hash & Mask();
            while (slots_[at].object)
                at = Next(at);
            slots_[at] = slot;
        }
    }

    /// A few objects must not keep the slots of the many that there were. Where there is no memory
    /// for fewer slots, these stay.
    void Shrink() noexcept {
        try {
            Resize(slots_.size() / 8);
        } catch (const std::bad_alloc&) {
            return;
        }
    }

    size_t Search(const T* object) const {
        size_t at = 0;
        while (at < slots_.size() && slots_[at].object != object)
            ++at;
        return at;
    }

    /// Moves those behind up, so that no search ends too early at the slot that becomes free.
    void Erase(size_t free) {
        for (size_t at = Next(free); slots_[at].object; at = Next(at)) {
            const size_t wanted = slots_[at].hash & Mask();
            const bool mayMove = ((at - wanted) & Mask()) >= ((at - free) & Mask());
            if (!mayMove)
                continue;
            slots_[free] = slots_[at];
            free = at;
        }
        slots_[free] = {};
        if (--count_ == 0)
            ambiguous_ = false;
        if (slots_.size() > kManySlots && 32 * count_ < slots_.size())
            Shrink();
    }

    Slots slots_;
    size_t count_ = 0;
    bool ambiguous_ = false;
};

} // namespace Kor
