#include "types/TypedValue.h"

#include <algorithm>
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
    Link();
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
    Link();
}

/// Few values are references: whoever ends one of those instances looks through all of them.
void TypedValue::Link() noexcept {
    if (linked_ || !type_ || type_->GetClass() != kTemplateClass)
        return;
    linked_ = true;
    previous_ = nullptr;
    next_ = std::exchange(first_, this);
    if (next_)
        next_->previous_ = this;
}

void TypedValue::Unlink() noexcept {
    if (!std::exchange(linked_, false))
        return;
    (previous_ ? previous_->next_ : first_) = next_;
    if (next_)
        next_->previous_ = previous_;
}

void TypedValue::ForgetElement(const void* instance) noexcept {
    for (const TypedValue* value = first_; value; value = value->next_) {
        auto** elements = static_cast<void**>(value->block_);
        std::replace(elements, elements + value->count_, const_cast<void*>(instance),
                     static_cast<void*>(nullptr));
    }
}

void TypedValue::Clear() {
    Unlink();
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
