#pragma once

#include "types/TypeRef.h"

namespace Kor {

/// An owned value block together with the type that made it, which also frees it.
class TypedValue {
public:
    TypedValue() = default;
    ~TypedValue() { Clear(); }
    TypedValue(const TypedValue&) = delete;
    TypedValue& operator=(const TypedValue&) = delete;

    void* Get() const { return block_; }
    Type* GetType() const { return type_.Get(); }
    int GetCount() const { return count_; }
    explicit operator bool() const { return block_ != nullptr; }

    /// Takes over a block of `count` elements made by `type`; the block held so far is freed,
    /// unless it is the very same one.
    void Adopt(Type* type, void* block, int count);

    /// Hands the block over to the caller.
    void* Release();

    /// Frees the block.
    void Clear();

private:
    TypeRef type_;
    void* block_ = nullptr;
    int count_ = 0;
};

} // namespace Kor
