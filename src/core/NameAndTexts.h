#pragma once

#include <cstdint>
#include <cstring>
#include <new>

#include "core/CompactString.h"
#include "core/LocalizedTextTable.h"

namespace Kor {

/// The name of an object and its texts, which most objects never have, in the space of one pointer:
/// scenes hold millions of objects that have neither.
class NameAndTexts {
public:
    struct Texts {
        LocalizedTextTable labels;
        LocalizedTextTable descriptions;
        CompactString comment;
    };

    NameAndTexts() : name_() {}
    NameAndTexts(const NameAndTexts& other);
    ~NameAndTexts();
    NameAndTexts& operator=(const NameAndTexts&) = delete;

    const CompactString& GetName() const { return HasTexts() ? GetBoth()->name : name_; }

    /// The name to change; valid until the texts are edited.
    CompactString& EditName() { return HasTexts() ? GetBoth()->name : name_; }

    /// Null when none were ever written.
    const Texts* GetTexts() const { return HasTexts() ? &GetBoth()->texts : nullptr; }

    /// The texts to change. The characters of the name stay where they are.
    Texts& EditTexts();

    /// Takes copies of another one's texts in place of these.
    void CopyTexts(const NameAndTexts& other);

    /// Drops name and texts for good and keeps a pointer in their place, which needs no memory.
    /// From then on both read as empty, and what is written to them is lost.
    void ReplaceBy(void* pointer) noexcept;
    /// Takes an empty name in place of the pointer.
    void Restore() noexcept { new (&name_) CompactString(); }
    bool IsReplaced() const { return (GetBits() & kReplaced) == kReplaced; }
    void* GetReplacement() const { return reinterpret_cast<void*>(GetBits() & ~kReplaced); }

    /// Marks the object whose name this is, so that its end is told to those who asked. Throws
    /// std::bad_alloc.
    void Watch() { EditBoth().watched = true; }
    bool IsWatched() const { return HasTexts() && GetBoth()->watched; }

private:
    struct Both {
        CompactString name;
        Texts texts;
        bool watched = false;
    };

    /// Set in the pointer when it points to both: blocks of the pool and of the heap begin at even
    /// addresses, and the name is nothing but a pointer to such a block.
    static constexpr std::uintptr_t kHasTexts = 1;

    /// Set when the pointer is one that took the place of everything. With the bit for texts, so
    /// that reading a name costs one test only.
    static constexpr std::uintptr_t kReplaced = 2 | kHasTexts;

    std::uintptr_t GetBits() const {
        std::uintptr_t bits = 0;
        std::memcpy(&bits, static_cast<const void*>(this), sizeof bits);
        return bits;
    }
    bool HasTexts() const { return (GetBits() & kHasTexts) != 0; }
    Both* GetBoth() const {
        return IsReplaced() ? GetNothing() : reinterpret_cast<Both*>(GetBits() & ~kHasTexts);
    }
    static Both* GetNothing();
    Both& EditBoth();
    void Free() noexcept;
    void HoldBoth(Both* both) { both_ = reinterpret_cast<std::uintptr_t>(both) | kHasTexts; }

    union {
        CompactString name_;
        std::uintptr_t both_;
    };
};

static_assert(sizeof(NameAndTexts) == sizeof(void*), "objects are to stay small");

} // namespace Kor
