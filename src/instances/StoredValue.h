#pragma once

#include <cstddef>

#include "types/TypeRef.h"

namespace Kor {

/// A value block and the type whose rules it follows, which also ends it. Most values of a scene
/// are a few bytes: those stand inside of this object.
class StoredValue {
public:
    StoredValue() = default;
    ~StoredValue() { Clear(); }
    StoredValue(const StoredValue&) = delete;
    StoredValue& operator=(const StoredValue&) = delete;

    /// The block, or null. It moves with its owner.
    void* Get() const { return isInside_ ? const_cast<char*>(room_) : block_; }
    int GetCount() const { return count_; }
    explicit operator bool() const { return Get() != nullptr; }

    /// The storage type that made the block; null without one.
    Type* GetType() const { return type_.Get(); }

    /// Whether the elements are references to instances.
    bool HoldsInstances() const;

    /// Makes a block of `count` elements by the type's rules, from `initial` (never this value's
    /// own block) or of zeroes without it. A value without elements has a block, too, unless it is
    /// a template's.
    void Make(Type& type, const void* initial, int count);

    /// The same from a single element (null: from zeroes): where the type's rules do not repeat it,
    /// it is the first and the others are zero.
    void MakeFromOne(Type& type, const void* element, int count);

    /// Makes a block with all elements of another one, also where Make would repeat the first.
    void Copy(const StoredValue& other);

    /// Gives a template's value at least that many references; the new ones are null.
    void GrowReferences(Type& type, int count);

    /// Takes over another value's block and leaves that value empty.
    void Take(StoredValue& other);

    /// Ends the block.
    void Clear();

    /// Marks an array of references as known to the host, which may keep it: it is never freed.
    void HandOut() { handedOut_ = true; }

private:
    static constexpr size_t kRoom = 16;

    static Type* FindStorage(const Type& type);
    void Adopt(Type* storage, void* block, int count);

    TypeRef type_;
    union {
        alignas(8) char room_[kRoom]; ///< the block itself, when it is inside
        void* block_ = nullptr;
    };
    int count_ = 0;
    bool isInside_ = false;
    bool handedOut_ = false;
};

} // namespace Kor
