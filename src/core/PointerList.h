#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <utility>
#include <vector>

#include "core/BlockPool.h"
#include "core/PointerListIterator.h"
#include "core/PointerTree.h"

namespace Kor {

/// A vector of pointers in 16 bytes: a single one stands in place, more of them in a block of the
/// pool. Models hold millions of such lists, most of them with one entry or a handful.
///
/// A list of thousands that changes far from its end becomes a tree, so that no change moves more
/// than a kilobyte or so: whatever enters or leaves then costs a few steps, in any order. What
/// becomes a tree stays one.
template <class T> class PointerList {
public:
    using Iterator = PointerListIterator<T>;

    static constexpr size_t kNotFound = PointerTree::kNotFound;

    PointerList() = default;
    ~PointerList() { Free(); }
    PointerList(PointerList&& other) noexcept { swap(other); }
    PointerList(const PointerList& other) { *this = other; }

    PointerList& operator=(const PointerList& other) {
        if (this == &other)
            return *this;
        PointerList copy;
        copy.reserve(other.size());
        other.CopyTo(copy.GetArray());
        copy.size_ = other.size_;
        swap(copy);
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
    size_t capacity() const { return IsTree() ? held_.tree->GetCapacity() : capacity_; }

    Iterator begin() const {
        return IsTree() ? Iterator(held_.tree->GetFirst(), held_.tree)
                        : Iterator(GetArray(), nullptr);
    }
    Iterator end() const {
        return IsTree() ? Iterator(held_.tree->GetEnd(), held_.tree)
                        : Iterator(GetArray() + size_, nullptr);
    }

    T* operator[](size_t at) const {
        return IsTree() ? static_cast<T*>(held_.tree->GetAt(at)) : GetArray()[at];
    }
    T* front() const { return (*this)[0]; }
    T* back() const { return (*this)[size_ - 1]; }

    /// The following throw std::bad_alloc, and then have changed nothing.
    void push_back(T* entry) {
        if (size_ == capacity())
            Grow(size_ + size_t{1});
        if (IsTree())
            held_.tree->InsertAt(size_, Untyped(entry));
        else
            GetArray()[size_] = entry;
        ++size_;
    }

    void reserve(size_t count) {
        if (count > capacity())
            MoveTo(count);
    }

    void pop_back() {
        if (IsTree())
            held_.tree->EraseAt(size_ - size_t{1});
        --size_;
    }

    /// Keeps the room.
    void clear() {
        if (IsTree())
            held_.tree->Clear();
        size_ = 0;
    }

    void swap(PointerList& other) noexcept {
        std::swap(held_, other.held_);
        std::swap(size_, other.size_);
        std::swap(capacity_, other.capacity_);
    }
    // NOLINTEND(readability-identifier-naming)

    /// Inserts before an entry; throws std::bad_alloc, and then has changed nothing.
    void InsertAt(size_t index, T* entry) {
        if (size_ == capacity())
            Grow(size_ + size_t{1});
        if (size_ - index > kFar)
            BecomeTree();
        if (IsTree()) {
            held_.tree->InsertAt(index, Untyped(entry));
        } else {
            T** place = GetArray() + index;
            std::move_backward(place, GetArray() + size_, GetArray() + size_ + 1);
            *place = entry;
        }
        ++size_;
    }

    // -- what follows needs no memory; where there is some, a long list may become a tree --------

    void Replace(size_t index, T* entry) {
        if (IsTree())
            held_.tree->Replace(index, Untyped(entry));
        else
            GetArray()[index] = entry;
    }

    void EraseAt(size_t index) {
        if (size_ - index > kFar)
            BecomeTree();
        if (IsTree())
            held_.tree->EraseAt(index);
        else
            std::move(GetArray() + index + 1, GetArray() + size_, GetArray() + index);
        --size_;
    }

    /// The first index of an entry, or kNotFound.
    size_t Find(const T* entry) const {
        if (IsTree())
            return held_.tree->Find(entry);
        T* const* end = GetArray() + size_;
        T* const* found = std::find(GetArray(), end, entry);
        return found == end ? kNotFound : static_cast<size_t>(found - GetArray());
    }

    /// The same for callers who will ask for many: a long list becomes a tree.
    size_t FindInFewSteps(const T* entry) {
        if (size_ > kFar)
            BecomeTree();
        return Find(entry);
    }

    /// Takes out an entry; false without it. Of several places that it has, which one is open.
    bool TakeOut(const T* entry) {
        if (size_ > kFar)
            BecomeTree();
        if (!IsTree()) {
            const size_t index = FindLast(entry);
            if (index != kNotFound)
                EraseAt(index);
            return index != kNotFound;
        }
        const bool taken = held_.tree->TakeOut(entry);
        size_ -= taken ? 1 : 0;
        return taken;
    }

    /// How many entries comply; all of those must come before the others.
    template <class Complies> size_t CountWhile(const Complies& complies) const {
        if (IsTree())
            return held_.tree->CountWhile(
                [&complies](void* entry) { return complies(static_cast<T*>(entry)); });
        T* const* end = std::partition_point(GetArray(), GetArray() + size_, complies);
        return static_cast<size_t>(end - GetArray());
    }

    /// Puts the entries in order, those that are equal in any.
    template <class Before> void Sort(const Before& before) {
        if (IsTree())
            held_.tree->Sort(Typed(before));
        else
            std::sort(GetArray(), GetArray() + size_, before);
    }

    /// The same with those that are equal in the order that they had.
    template <class Before> void SortStably(const Before& before) {
        if (IsTree())
            held_.tree->SortStably(Typed(before));
        else
            std::stable_sort(GetArray(), GetArray() + size_, before);
    }

    /// Enters others into a list in order, they being in order, too, each behind its equals. There
    /// must be room.
    template <class Before> void Merge(const std::vector<T*>& entries, const Before& before) {
        if (IsTree() || entries.size() * kTogetherFrom < size_) {
            for (T* entry : entries)
                InsertAt(CountWhile([&](const T* other) { return !before(entry, other); }), entry);
            return;
        }
        T** keptEnd = GetArray() + size_; // behind those not moved yet
        T** end = keptEnd + entries.size();
        size_ += static_cast<unsigned>(entries.size());
        for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
            T** place = std::upper_bound(GetArray(), keptEnd, *entry, before);
            end = std::move_backward(place, keptEnd, end);
            *--end = *entry;
            keptEnd = place;
        }
    }

    /// Calls a function with each entry, in order, a little quicker than a loop. The list must not
    /// change meanwhile.
    template <class Body> void ForEach(const Body& body) const {
        if (IsTree()) {
            for (T* entry : *this)
                body(entry);
            return;
        }
        T* const* end = GetArray() + size_;
        for (T* const* at = GetArray(); at != end; ++at)
            body(*at);
    }

    /// A copy to walk over while this list may change.
    std::vector<T*> ToVector() const {
        std::vector<T*> copy(size_);
        CopyTo(copy.data());
        return copy;
    }

private:
    static constexpr unsigned kInPlace = 1;
    static constexpr unsigned kTree = 0xFFFFFFFF; ///< as the capacity
    static constexpr size_t kMaximum = 0x7FFFFFFF;

    /// Moving so many entries costs about as much as the steps in a tree.
    static constexpr size_t kFar = 1024;

    bool IsInPlace() const { return capacity_ == kInPlace; }
    bool IsTree() const { return capacity_ == kTree; }
    T** GetArray() { return IsInPlace() ? &held_.one : held_.many; }
    T* const* GetArray() const { return IsInPlace() ? &held_.one : held_.many; }

    /// So many times fewer are entered singly.
    static constexpr size_t kTogetherFrom = 16;

    template <class Before> static auto Typed(const Before& before) {
        return [&before](const void* a, const void* b) {
            return before(static_cast<const T*>(a), static_cast<const T*>(b));
        };
    }

    /// The tree only hands entries back as what they were.
    static void* Untyped(const T* entry) {
        return const_cast<void*>(static_cast<const void*>(entry));
    }

    size_t FindLast(const T* entry) const {
        size_t index = size_;
        while (index > 0 && GetArray()[index - 1] != entry)
            --index;
        return index == 0 ? kNotFound : index - 1;
    }

    void CopyTo(T** array) const {
        if (!IsTree()) {
            std::copy(GetArray(), GetArray() + size_, array);
            return;
        }
        for (T* entry : *this)
            *array++ = entry;
    }

    void Grow(size_t count) { MoveTo(std::max<size_t>(count, size_t{2} * size_)); }

    void MoveTo(size_t capacity) {
        if (capacity > kMaximum)
            throw std::bad_alloc();
        if (IsTree())
            return held_.tree->Reserve(capacity);
        auto** block = static_cast<T**>(BlockPool::Take(capacity * sizeof(T*)));
        std::copy(GetArray(), GetArray() + size_, block);
        Free();
        held_.many = block;
        capacity_ = static_cast<unsigned>(capacity);
    }

    /// With the same room. Without the memory for it the list stays as it is, which is slower.
    void BecomeTree() noexcept {
        if (IsTree())
            return;
        try {
            std::vector<void*> entries(size_);
            for (size_t i = 0; i < size_; ++i)
                entries[i] = Untyped(GetArray()[i]);
            auto tree = std::make_unique<PointerTree>(entries.data(), size_, capacity_);
            Free();
            held_.tree = tree.release();
            capacity_ = kTree;
        } catch (const std::bad_alloc&) {
        }
    }

    void Free() {
        if (IsInPlace())
            return;
        if (IsTree())
            delete held_.tree;
        else
            BlockPool::Give(held_.many, capacity_ * sizeof(T*));
    }

    union Held {
        T* one = nullptr;
        T** many;
        PointerTree* tree;
    };

    Held held_;
    unsigned size_ = 0;
    unsigned capacity_ = kInPlace;
};

} // namespace Kor
