#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
#include <string_view>
#include <vector>

#include "core/BlockPool.h"

namespace Kor {

/// Objects that a list sorted by key holds already, but that get their places in it only when its
/// order is next asked for. Putting a hundred thousand objects in order at once costs a fraction of
/// finding the place of each: that is a walk through far apart memory for every one of them.
template <class T> class LateEntries {
public:
    bool IsEmpty() const { return objects_.empty(); }
    size_t GetCount() const { return objects_.size(); }
    T* GetLast() const { return objects_.back(); }
    auto begin() const { return objects_.begin(); }
    auto end() const { return objects_.end(); }

    /// Throws std::bad_alloc, and then has changed nothing.
    void Add(T* object) {
        objects_.push_back(object);
        sorted_ = false;
    }

    /// Puts the objects into the order of their keys; quicker with memory to be had, but always.
    void Sort() noexcept {
        if (!sorted_ && !SortByPieces())
            std::sort(objects_.begin(), objects_.end(), ComesBefore);
        sorted_ = true;
    }

    /// How many objects have lower keys; after Sort.
    int CountBelow(std::string_view key) const {
        const auto end = std::lower_bound(
            objects_.begin(), objects_.end(), key,
            [](const T* object, std::string_view k) { return object->GetKey() < k; });
        return static_cast<int>(end - objects_.begin());
    }

    void DropLast() { objects_.pop_back(); }

    /// The place that the object had in the order, or -1 without it.
    int Remove(const T* object) noexcept {
        Sort();
        const auto found = std::find(objects_.begin(), objects_.end(), object);
        if (found == objects_.end())
            return -1;
        const auto place = static_cast<int>(found - objects_.begin());
        objects_.erase(found);
        return place;
    }

    void Clear() noexcept { Objects().swap(objects_); }

private:
    using Objects = std::vector<T*, PoolAllocator<T*>>;

    /// An object with a piece of its key in a form that compares at once.
    struct Piece {
        std::uint64_t bytes;
        T* object;
    };

    static bool ComesBefore(const T* a, const T* b) { return a->GetKey() < b->GetKey(); }

    /// How many characters all keys begin with together.
    size_t CountCommon() const {
        std::string_view common = objects_.front()->GetKey();
        for (const T* object : objects_) {
            const std::string_view key = object->GetKey();
            const auto end = std::mismatch(common.begin(), common.end(), key.begin(), key.end());
            common = common.substr(0, static_cast<size_t>(end.first - common.begin()));
        }
        return common.size();
    }

    /// The first eight bytes behind the common ones, the first one on top: they compare as the
    /// keys.
    static std::uint64_t GetPiece(std::string_view key, size_t common) {
        std::uint64_t bytes = 0;
        for (size_t i = 0; i < sizeof bytes; ++i) {
            const unsigned byte =
                common + i < key.size() ? static_cast<unsigned char>(key[common + i]) : 0;
            bytes = bytes << 8 | byte;
        }
        return bytes;
    }

    /// Compares the pieces, and keys only where these are equal. False, having changed nothing,
    /// without memory.
    bool SortByPieces() noexcept {
        std::vector<Piece, PoolAllocator<Piece>> pieces;
        try {
            pieces.reserve(objects_.size());
        } catch (const std::bad_alloc&) {
            return false;
        }
        const size_t common = CountCommon();
        for (T* object : objects_)
            pieces.push_back({GetPiece(object->GetKey(), common), object});
        std::sort(pieces.begin(), pieces.end(), [](const Piece& a, const Piece& b) {
            return a.bytes != b.bytes ? a.bytes < b.bytes : ComesBefore(a.object, b.object);
        });
        for (size_t i = 0; i < pieces.size(); ++i)
            objects_[i] = pieces[i].object;
        return true;
    }

    Objects objects_;
    bool sorted_ = false;
};

} // namespace Kor
