#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <new>
#include <utility>
#include <vector>

#include "core/BlockPool.h"

namespace Kor {

/// A vector of pointers in 16 bytes: a single one stands in place, more of them in a block of the
/// pool. Models hold millions of such lists, most of them with one entry or a handful.
template <class T> class PointerList {
public:
    PointerList() = default;
    ~PointerList() { Free(); }
    PointerList(PointerList&& other) noexcept { swap(other); }
    PointerList(const PointerList& other) { *this = other; }

    PointerList& operator=(const PointerList& other) {
        if (this == &other)
            return *this;
        reserve(other.size());
        std::copy(other.begin(), other.end(), begin());
        size_ = other.size_;
        return *this;
    }

    /// What this list held goes: the other one is empty then.
    PointerList& operator=(PointerList&& other) noexcept {
        PointerList moved(std::move(other));
        swap(moved);
        return *this;
    }

    // NOLINTBEGIN(readability-identifier-naming): the names that containers of the standard have
    size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }
    size_t capacity() const { return capacity_; }

    T** begin() { return IsInPlace() ? &held_.one : held_.many; }
    T** end() { return begin() + size_; }
    T* const* begin() const { return IsInPlace() ? &held_.one : held_.many; }
    T* const* end() const { return begin() + size_; }
    auto rbegin() const { return std::make_reverse_iterator(end()); }
    auto rend() const { return std::make_reverse_iterator(begin()); }

    T*& operator[](size_t at) { return begin()[at]; }
    T* operator[](size_t at) const { return begin()[at]; }
    T* front() const { return *begin(); }
    T*& back() { return end()[-1]; }
    T* back() const { return end()[-1]; }

    /// The following throw std::bad_alloc, and then have changed nothing.
    void push_back(T* entry) {
        if (size_ == capacity_)
            Grow(size_ + 1);
        begin()[size_++] = entry;
    }

    void insert(T* const* before, T* entry) {
        const auto at = before - begin();
        push_back(entry);
        T** place = begin() + at;
        std::move_backward(place, end() - 1, end());
        *place = entry;
    }

    void reserve(size_t count) {
        if (count > capacity_)
            MoveTo(count);
    }

    /// New entries are null.
    void resize(size_t count) {
        if (count > capacity_)
            Grow(count);
        if (count > size_)
            std::fill(end(), begin() + count, nullptr);
        size_ = static_cast<unsigned>(count);
    }

    void erase(T* const* entry) {
        std::move(begin() + (entry - begin()) + 1, end(), begin() + (entry - begin()));
        --size_;
    }

    void pop_back() { --size_; }

    /// Keeps the block.
    void clear() { size_ = 0; }

    void swap(PointerList& other) noexcept {
        std::swap(held_, other.held_);
        std::swap(size_, other.size_);
        std::swap(capacity_, other.capacity_);
    }
    // NOLINTEND(readability-identifier-naming)

    /// A copy to walk over while this list may change.
    std::vector<T*> ToVector() const { return {begin(), end()}; }

private:
    static constexpr unsigned kInPlace = 1;

    bool IsInPlace() const { return capacity_ == kInPlace; }

    void Grow(size_t count) { MoveTo(std::max<size_t>(count, size_t{2} * capacity_)); }

    void MoveTo(size_t capacity) {
        if (capacity > kMaximum)
            throw std::bad_alloc();
        auto** block = static_cast<T**>(BlockPool::Take(capacity * sizeof(T*)));
        std::copy(begin(), end(), block);
        Free();
        held_.many = block;
        capacity_ = static_cast<unsigned>(capacity);
    }

    void Free() {
        if (!IsInPlace())
            BlockPool::Give(held_.many, capacity_ * sizeof(T*));
    }

    static constexpr size_t kMaximum = 0x7FFFFFFF;

    union Held {
        T* one = nullptr;
        T** many;
    };

    Held held_;
    unsigned size_ = 0;
    unsigned capacity_ = kInPlace;
};

} // namespace Kor
