#pragma once

#include <cstdint>
#include <cstring>

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

private:
    struct Both {
        CompactString name;
        Texts texts;
    };

    /// Set in the pointer when it points to both: blocks of the pool and of the heap begin at even
    /// addresses, and the name is nothing but a pointer to such a block.
    static constexpr std::uintptr_t kHasTexts = 1;

    std::uintptr_t GetBits() const {
        std::uintptr_t bits = 0;
        std::memcpy(&bits, static_cast<const void*>(this), sizeof bits);
        return bits;
    }
    bool HasTexts() const { return (GetBits() & kHasTexts) != 0; }
    Both* GetBoth() const { return reinterpret_cast<Both*>(GetBits() & ~kHasTexts); }
    void HoldBoth(Both* both) { both_ = reinterpret_cast<std::uintptr_t>(both) | kHasTexts; }

    union {
        CompactString name_;
        std::uintptr_t both_;
    };
};

static_assert(sizeof(NameAndTexts) == sizeof(void*), "objects are to stay small");

} // namespace Kor
