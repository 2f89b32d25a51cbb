#include "instances/StoredValue.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>
#include <vector>

#include "types/Type.h"

namespace Kor {

namespace {

/// The non-null block that stands for a value without elements; zeroes, for those who look anyway.
alignas(8) char emptyBlock[16] = {};

} // namespace

/// The end of the chain of base types, which may change while the value lives.
Type* StoredValue::FindStorage(const Type& type) {
    return const_cast<Type*>(type.GetStorageType());
}

bool StoredValue::HoldsInstances() const {
    return type_ && type_->GetClass() == kTemplateClass;
}

void StoredValue::Make(Type& type, const void* initial, int count) {
    Clear();
    Type* storage = FindStorage(type);
    if (!storage)
        return;
    const size_t size = storage->GetInlineSize(count);
    if (size > 0 && size < kRoom) {
        // Elsewhere first, since making them may fail. The zero behind them is for enumerations,
        // which compare value blocks with names.
        alignas(8) char made[kRoom] = {};
        storage->MakeElements(made, initial, count);
        std::memcpy(room_, made, kRoom);
        Adopt(storage, room_, count);
    } else {
        Adopt(storage, storage->NewValue(initial, count), count);
    }
}

void StoredValue::MakeFromOne(Type& type, const void* element, int count) {
    const Type* storage = type.GetStorageType();
    if (!element || !storage)
        return Make(type, nullptr, count);
    const size_t known = storage->GetInlineSize(1);
    const size_t size = known > 0 ? known : sizeof(void*); // a reference to an instance
    std::vector<char> elements(size * static_cast<size_t>(count));
    std::memcpy(elements.data(), element, size);
    Make(type, elements.data(), count);
}

void StoredValue::Copy(const StoredValue& other) {
    Type* storage = other.type_.Get();
    Clear();
    if (other.isInside_ && storage->GetClass() != kStringTypeClass) {
        std::memcpy(room_, other.room_, kRoom);
        Adopt(storage, room_, other.count_);
    } else if (storage) {
        Adopt(storage, storage->CopyValue(other.Get(), other.count_), other.count_);
    }
}

void StoredValue::Adopt(Type* storage, void* block, int count) {
    if (!block && count < 1 && storage->GetClass() != kTemplateClass)
        block = emptyBlock;
    isInside_ = block == room_;
    if (!isInside_)
        block_ = block;
    count_ = count;
    if (block)
        type_.Reset(storage);
}

void StoredValue::GrowReferences(Type& type, int count) {
    if (*this && type_->GetClass() != kTemplateClass)
        Clear();
    const int old = block_ ? count_ : 0; // references always stand outside
    if (block_ && count <= old)
        return;
    const size_t size = static_cast<size_t>(std::max(count, 1)) * sizeof(void*);
    auto* block = static_cast<void**>(std::realloc(block_, size));
    if (!block)
        throw std::bad_alloc();
    std::fill(block + old, block + count, nullptr);
    block_ = block;
    count_ = count;
    type_.Reset(FindStorage(type));
}

void StoredValue::Take(StoredValue& other) {
    Clear();
    std::memcpy(room_, other.room_, kRoom); // a pointer to a block outside included
    isInside_ = std::exchange(other.isInside_, false);
    handedOut_ = std::exchange(other.handedOut_, false);
    count_ = other.count_;
    type_ = std::move(other.type_);
    other.block_ = nullptr;
}

void StoredValue::Clear() {
    if (!*this)
        return;
    if (isInside_)
        type_->EndElements(room_, count_);
    else if (block_ != emptyBlock)
        type_->DeleteValue(block_, count_);
    if (HoldsInstances() && !handedOut_)
        std::free(block_); // the type leaves the array to those who know it
    isInside_ = handedOut_ = false;
    block_ = nullptr;
    type_.Reset(nullptr);
}

} // namespace Kor
