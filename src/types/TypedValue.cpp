#include "types/TypedValue.h"

#include <cstdlib>
#include <utility>

#include "types/Type.h"

namespace Kor {

void TypedValue::Adopt(Type* type, void* block, int count) {
    if (block && block == block_)
        return;
    Clear();
    if (!block || !type)
        return;
    type_.Reset(const_cast<Type*>(type->GetStorageType()));
    block_ = block;
    count_ = count;
}

void TypedValue::Hold(void* block) {
    Clear();
    block_ = block;
}

void TypedValue::GiveType(Type* type, int count) {
    if (!block_ || type_ || !type)
        return;
    type_.Reset(const_cast<Type*>(type->GetStorageType()));
    count_ = count;
}

void TypedValue::Clear() {
    void* block = std::exchange(block_, nullptr);
    const bool handedOut = std::exchange(handedOut_, false);
    if (block && type_) {
        type_->DeleteValue(block, count_);
        if (type_->GetClass() == kTemplateClass && !handedOut)
            std::free(block); // the type leaves the array to those who know it
    }
    type_.Reset(nullptr);
}

} // namespace Kor
