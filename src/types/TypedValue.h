#pragma once

#include "types/TypeRef.h"

namespace Kor {

/// An owned value block together with the type whose form its elements have, which also frees it.
/// Of a type that borrows its values this is the type that it borrowed from when the block was
/// taken over: it may get another base later.
class TypedValue {
public:
    TypedValue() = default;
    ~TypedValue() { Clear(); }
    TypedValue(const TypedValue&) = delete;
    TypedValue& operator=(const TypedValue&) = delete;

    void* Get() const { return block_; }

    /// The type whose form the elements have.
    Type* GetType() const { return type_.Get(); }
    int GetCount() const { return count_; }
    explicit operator bool() const { return block_ != nullptr; }

    /// Takes over a block of `count` elements made by `type`; the block held so far is freed,
    /// unless it is the very same one. Types that borrow from each other in a circle make no
    /// blocks, so that one of theirs is never freed.
    void Adopt(Type* type, void* block, int count);

    /// Holds a block whose type is not known yet: it stays the giver's until it gets one.
    void Hold(void* block);
    void GiveType(Type* type, int count);

    /// Frees the block.
    void Clear();

    /// Marks an array of references as known to the host, which may keep it: it is never freed.
    void HandOut() { handedOut_ = true; }

    /// Empties the places that an instance has in any of the blocks of references: it ends before
    /// them.
    static void ForgetElement(const void* instance) noexcept;

private:
    void Link() noexcept;
    void Unlink() noexcept;

    TypeRef type_;
    void* block_ = nullptr;
    int count_ = 0;
    bool handedOut_ = false;
    bool linked_ = false;
    TypedValue* next_ = nullptr; // of those with a block of references
    TypedValue* previous_ = nullptr;

    static inline TypedValue* first_ = nullptr;
};

} // namespace Kor
