#pragma once

#include <algorithm>
#include <memory>
#include <new>
#include <string_view>
#include <utility>
#include <vector>

#include "core/KeyIndex.h"

namespace Kor {

/// A sorted list with the rules of SortedObjectList for many thousands of objects: the entries
/// stand in chunks, so that an insertion moves one chunk and not half of the list.
template <class T> class ObjectRegistry {
public:
    int GetCount() const { return count_; }
    bool IsEmpty() const { return count_ == 0; }

    /// The object at an index; null out of range.
    T* GetAt(int index) const {
        if (index < 0 || index >= count_)
            return nullptr;
        const auto after = std::upper_bound(starts_.begin(), starts_.end(), index);
        const size_t chunk = static_cast<size_t>(after - starts_.begin()) - 1;
        return chunks_[chunk][static_cast<size_t>(index - starts_[chunk])];
    }

    /// The index of the first object with the key, or the complement of the insertion point.
    int Find(std::string_view key) const {
        const Position at = LowerBound(key);
        const T* found = At(at);
        const int index = IndexAt(at);
        return found && found->GetKey() == key ? index : ~index;
    }

    /// The first object with the key, or null.
    T* Get(std::string_view key) const {
        if (count_ >= kIndexedFrom && HasIndex())
            return index_->Find(key);
        T* found = At(LowerBound(key));
        return found && found->GetKey() == key ? found : nullptr;
    }

    /// Inserts by key; an existing key is overwritten and gives the complement of its index.
    /// `replaced`, when given, receives the object that was overwritten, or null.
    int Insert(T* object, T** replaced = nullptr) {
        const std::string_view key = object->GetKey();
        const Position at = LowerBound(key);
        const T* found = At(at);
        if (found && found->GetKey() == key)
            return Overwrite(at, object, replaced);
        if (replaced)
            *replaced = nullptr;
        const int index = IndexAt(at);
        InsertAt(at, object);
        return index;
    }

    /// Inserts behind the objects with the same key and keeps them.
    void Place(T* object) {
        const std::string_view key = object->GetKey();
        Position at = LowerBound(key);
        while (T* other = At(at)) {
            if (other->GetKey() != key)
                break;
            at = Normalized(at);
            ++at.offset;
        }
        InsertAt(at, object);
    }

    /// Takes out the entry with the object's key (the object itself where several share it) and
    /// gives its index, or the failed search's result. The object is not deleted.
    int Remove(const T* object) {
        Position at = PositionOf(object);
        if (!At(at)) {
            at = LowerBound(object->GetKey());
            const T* found = At(at);
            if (!found || found->GetKey() != object->GetKey())
                return ~IndexAt(at);
        }
        const int index = IndexAt(at);
        Erase(at);
        return index;
    }

    /// Takes out this very object, even where its key has changed meanwhile; false without it.
    bool RemoveExactly(const T* object) {
        Position at = PositionOf(object);
        if (!At(at))
            at = Search(object);
        if (!At(at))
            return false;
        Erase(at);
        return true;
    }

    bool Contains(const T* object) const { return At(PositionOf(object)) != nullptr; }

    /// Takes out the last object and gives it; null when empty.
    T* TakeLast() {
        if (count_ == 0)
            return nullptr;
        T* last = chunks_.back().back();
        Erase({chunks_.size() - 1, chunks_.back().size() - 1});
        return last;
    }

    /// The object that comes so many places before the last one, as long as that is cheap to say;
    /// null otherwise.
    const T* PeekFromEnd(size_t distance) const {
        if (chunks_.empty() || distance >= chunks_.back().size())
            return nullptr;
        return chunks_.back()[chunks_.back().size() - 1 - distance];
    }

    /// All objects in key order, for a walk during which the registry may change.
    std::vector<T*> Snapshot() const {
        std::vector<T*> all;
        all.reserve(static_cast<size_t>(count_));
        for (const auto& chunk : chunks_)
            all.insert(all.end(), chunk.begin(), chunk.end());
        return all;
    }

    void Clear() {
        chunks_.clear();
        starts_.clear();
        count_ = 0;
        index_.reset();
    }

private:
    static constexpr size_t kChunkSize = 512;
    static constexpr int kIndexedFrom = 64; ///< Smaller lists are searched as quickly.

    /// An entry's place; an offset at a chunk's end stands for the next chunk's first entry.
    struct Position {
        size_t chunk;
        size_t offset;
    };

    Position Normalized(Position at) const {
        if (at.chunk < chunks_.size() && at.offset == chunks_[at.chunk].size())
            return {at.chunk + 1, 0};
        return at;
    }

    T* At(Position at) const {
        at = Normalized(at);
        return at.chunk < chunks_.size() ? chunks_[at.chunk][at.offset] : nullptr;
    }

    int IndexAt(Position at) const {
        return at.chunk < chunks_.size() ? starts_[at.chunk] + static_cast<int>(at.offset) : count_;
    }

    /// The first place whose key is not below the given one.
    Position LowerBound(std::string_view key) const {
        if (chunks_.empty())
            return {0, 0};
        // Files list objects in the order of their keys, so that most new ones come last.
        if (chunks_.back().back()->GetKey() < key)
            return {chunks_.size() - 1, chunks_.back().size()};
        const auto above = std::lower_bound(chunks_.begin() + 1, chunks_.end(), key,
                                            [](const std::vector<T*>& chunk, std::string_view k) {
                                                return chunk.front()->GetKey() < k;
                                            });
        const auto chunk = above - 1;
        const auto entry = std::lower_bound(
            chunk->begin(), chunk->end(), key,
            [](const T* object, std::string_view k) { return object->GetKey() < k; });
        return {static_cast<size_t>(chunk - chunks_.begin()),
                static_cast<size_t>(entry - chunk->begin())};
    }

    /// The place of this very object, or one without an object.
    Position PositionOf(const T* object) const {
        const std::string_view key = object->GetKey();
        Position at = Normalized(LowerBound(key));
        for (const T* other = At(at); other && other->GetKey() == key; other = At(at)) {
            if (other == object)
                return at;
            ++at.offset;
            at = Normalized(at);
        }
        return {chunks_.size(), 0};
    }

    /// Puts the object over its own entry or, where it has none, over the first one of its key.
    int Overwrite(Position first, T* object, T** replaced) {
        const Position own = PositionOf(object);
        const Position at = At(own) ? own : Normalized(first);
        T*& entry = chunks_[at.chunk][at.offset];
        if (replaced)
            *replaced = entry;
        Unindex(entry);
        entry = object;
        Index(object);
        return ~IndexAt(at);
    }

    /// The place of this very object without trusting its key.
    Position Search(const T* object) const {
        for (size_t chunk = 0; chunk < chunks_.size(); ++chunk) {
            const auto& entries = chunks_[chunk];
            const auto found = std::find(entries.begin(), entries.end(), object);
            if (found != entries.end())
                return {chunk, static_cast<size_t>(found - entries.begin())};
        }
        return {chunks_.size(), 0};
    }

    /// When memory runs out, nothing has changed.
    void InsertAt(Position at, T* object) {
        if (chunks_.empty() || (at.chunk + 1 >= chunks_.size() && IsFullAt(at)))
            return StartChunk(object);
        if (at.chunk >= chunks_.size())
            at = {chunks_.size() - 1, chunks_.back().size()};
        if (chunks_[at.chunk].size() >= kChunkSize)
            at = Split(at);
        auto& chunk = chunks_[at.chunk];
        chunk.insert(chunk.begin() + static_cast<std::ptrdiff_t>(at.offset), object);
        Shift(at.chunk + 1, 1);
        ++count_;
        Index(object);
    }

    void StartChunk(T* object) {
        std::vector<T*> chunk;
        chunk.reserve(chunks_.empty() ? 1 : kChunkSize);
        chunk.push_back(object);
        ReserveStart();
        chunks_.push_back(std::move(chunk));
        starts_.push_back(count_++);
        Index(object);
    }

    /// Whether an entry at the very end would overflow the last chunk: growing lists then start a
    /// new chunk instead of splitting a full one, which leaves the chunks full.
    bool IsFullAt(Position at) const {
        const bool atEnd = at.chunk >= chunks_.size() || at.offset == chunks_.back().size();
        return atEnd && chunks_.back().size() >= kChunkSize;
    }

    /// Room for one start more; grows by doubling, as adding one would.
    void ReserveStart() {
        if (starts_.size() == starts_.capacity())
            starts_.reserve(2 * starts_.size() + 1);
    }

    /// Makes two chunks of a full one and gives the place that the position has then.
    Position Split(Position at) {
        const size_t half = chunks_[at.chunk].size() / 2;
        const auto middle = static_cast<std::ptrdiff_t>(half);
        const auto next = static_cast<std::ptrdiff_t>(at.chunk) + 1;
        std::vector<T*> upper(chunks_[at.chunk].begin() + middle, chunks_[at.chunk].end());
        ReserveStart();
        chunks_.insert(chunks_.begin() + next, std::move(upper));
        auto& lower = chunks_[at.chunk];
        lower.erase(lower.begin() + middle, lower.end());
        starts_.insert(starts_.begin() + next, starts_[at.chunk] + static_cast<int>(half));
        return at.offset > half ? Position{at.chunk + 1, at.offset - half} : at;
    }

    void Erase(Position at) {
        at = Normalized(at);
        auto& chunk = chunks_[at.chunk];
        Unindex(chunk[at.offset]);
        chunk.erase(chunk.begin() + static_cast<std::ptrdiff_t>(at.offset));
        --count_;
        Shift(at.chunk + 1, -1);
        if (!chunk.empty())
            return;
        chunks_.erase(chunks_.begin() + static_cast<std::ptrdiff_t>(at.chunk));
        starts_.erase(starts_.begin() + static_cast<std::ptrdiff_t>(at.chunk));
    }

    void Shift(size_t firstChunk, int by) {
        for (size_t i = firstChunk; i < starts_.size(); ++i)
            starts_[i] += by;
    }

    void Index(T* object) {
        if (index_)
            index_->Add(object);
    }

    void Unindex(const T* object) {
        if (index_)
            index_->Remove(object);
    }

    /// Whether there is an index that says which object comes first of its key; made when it is
    /// first asked for, given memory.
    bool HasIndex() const {
        if (!index_)
            index_.reset(new (std::nothrow) KeyIndex<T>());
        if (index_ && index_->IsEmpty()) {
            for (const auto& chunk : chunks_) {
                for (T* object : chunk)
                    index_->Add(object);
            }
        }
        const bool complete = index_ && index_->GetCount() == count_;
        if (!complete)
            index_.reset();
        return complete && !index_->IsAmbiguous();
    }

    std::vector<std::vector<T*>> chunks_;
    std::vector<int> starts_; // the index of each chunk's first entry
    int count_ = 0;
    mutable std::unique_ptr<KeyIndex<T>> index_; // of all objects, if there is one
};

} // namespace Kor
