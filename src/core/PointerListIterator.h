#pragma once

#include <cstddef>
#include <iterator>

#include "core/PointerTree.h"

namespace Kor {

/// Walks through a PointerList, forward only. Valid until the list changes.
template <class T> class PointerListIterator {
public:
    // NOLINTBEGIN(readability-identifier-naming): the names that iterators have
    using iterator_category = std::forward_iterator_tag;
    using value_type = T*;
    using difference_type = std::ptrdiff_t;
    using pointer = T* const*;
    using reference = T*;
    // NOLINTEND(readability-identifier-naming)

    PointerListIterator() = default;
    PointerListIterator(const void* at, const PointerTree* tree) : at_(at), tree_(tree) {}

    T* operator*() const {
        return tree_ ? static_cast<T*>(*static_cast<void* const*>(at_))
                     : *static_cast<T* const*>(at_);
    }
    PointerListIterator& operator++() {
        at_ = tree_ ? NextInTree() : static_cast<T* const*>(at_) + 1;
        return *this;
    }
    PointerListIterator operator++(int) {
        const PointerListIterator before = *this;
        ++*this;
        return before;
    }
    bool operator==(const PointerListIterator& other) const { return at_ == other.at_; }
    bool operator!=(const PointerListIterator& other) const { return at_ != other.at_; }

private:
    const void* NextInTree() const { return tree_->GetNext(static_cast<void* const*>(at_)); }

    const void* at_ = nullptr;
    const PointerTree* tree_ = nullptr;
};

} // namespace Kor
