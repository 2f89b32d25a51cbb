#include "calls/ValueBlock.h"

#include <cstdlib>

#include "schema/Template.h"

using namespace Kor;

namespace {

OviType* ToHandle(Type& type) {
    return reinterpret_cast<OviType*>(static_cast<Object*>(&type));
}

int CountFor(World& world, const Type& type) {
    return type.GetDimension() != 0 ? type.GetDimension() : world.GetInput().TakeByte() % 4 + 1;
}

} // namespace

ValueBlock::ValueBlock(World& world, const Type& type)
    : ValueBlock(world, type, CountFor(world, type)) {}

ValueBlock::ValueBlock(World& world, const Type& type, int count)
    : type_(const_cast<Type*>(&type)), count_(count),
      block_(OviType_NewValue(ToHandle(*type_.Get()), nullptr, count)) {
    Fill(world);
}

/// Only some elements, since every one of a large value would cost too much time.
void ValueBlock::Fill(World& world) {
    constexpr int kMaxFilled = 3;
    for (int i = 0; block_ && i < count_ && i < kMaxFilled; ++i)
        OviType_GetValueFromString(ToHandle(*type_.Get()), world.PickText(), block_, i);
}

int ValueBlock::PickIndex(World& world) const {
    const size_t count = count_ > 0 ? static_cast<size_t>(count_) : 0;
    return static_cast<int>(world.GetInput().TakeIndex(count + 1)) - 1;
}

void* ValueBlock::HandOver() {
    void* block = block_;
    block_ = nullptr;
    return block;
}

/// A callback may have done so already.
void ValueBlock::Delete(OviObject* instance) {
    if (World::IsAlive(instance))
        OviObject_Delete(instance);
}

/// Deleting a block of instances frees nothing, since a host may still use them.
ValueBlock::~ValueBlock() {
    OviType_DeleteValue(ToHandle(*type_.Get()), block_, count_);
    if (!block_ || !ObjectCast<Template>(type_->GetStorageType()))
        return;
    for (int i = 0; i < count_; ++i)
        Delete(static_cast<OviObject**>(block_)[i]);
    std::free(block_);
}
