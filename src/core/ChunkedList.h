#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <string_view>
#include <utility>
#include <vector>

#include "core/EntryRanks.h"
#include "core/MakeRoom.h"

namespace Kor {

/// Pointers to objects in the order of their keys, for many thousands of them: they stand in
/// chunks, so that an insertion moves one chunk and not half of the list. There is no empty chunk.
///
/// What throws std::bad_alloc has then changed nothing.
template <class T> class ChunkedList {
public:
    /// An entry's place; an offset at a chunk's end stands for the next chunk's first entry.
    struct Position {
        size_t chunk;
        size_t offset;
    };

    bool IsEmpty() const { return chunks_.empty(); }

    int GetCount() const {
        return IsEmpty() ? 0 : starts_.back() + static_cast<int>(chunks_.back().size());
    }

    /// The object at an index in range.
    T* GetAt(int index) const {
        const auto after = std::upper_bound(starts_.begin(), starts_.end(), index);
        const size_t chunk = static_cast<size_t>(after - starts_.begin()) - 1;
        return chunks_[chunk][static_cast<size_t>(index - starts_[chunk])];
    }

    /// The object at a place; null at the list's end.
    T* GetAt(Position at) const {
        at = Normalized(at);
        return at.chunk < chunks_.size() ? chunks_[at.chunk][at.offset] : nullptr;
    }

    int IndexAt(Position at) const {
        return at.chunk < chunks_.size() ? starts_[at.chunk] + static_cast<int>(at.offset)
                                         : GetCount();
    }

    /// The object so many places before the last one, if it stands in the last chunk; else null.
    const T* PeekFromEnd(size_t distance) const {
        if (IsEmpty() || distance >= chunks_.back().size())
            return nullptr;
        return chunks_.back()[chunks_.back().size() - 1 - distance];
    }

    std::vector<T*> GetAll() const {
        std::vector<T*> all;
        all.reserve(static_cast<size_t>(GetCount()));
        for (const auto& chunk : chunks_)
            all.insert(all.end(), chunk.begin(), chunk.end());
        return all;
    }

    /// Calls a function with each object, in order. The list must not change meanwhile.
    template <class Body> void ForEach(const Body& body) const {
        for (const Chunk& chunk : chunks_) {
            for (T* object : chunk)
                body(object);
        }
    }

    // -- places ---------------------------------------------------------------------------------

    Position GetFirst() const { return {0, 0}; }
    Position GetEnd() const { return {chunks_.size(), 0}; }

    /// The last entry's place; there must be one.
    Position GetLast() const { return {chunks_.size() - 1, chunks_.back().size() - 1}; }

    /// Whether the key is above those of all objects.
    bool ComesLast(std::string_view key) const {
        return IsEmpty() || chunks_.back().back()->GetKey() < key;
    }

    /// The first place whose key is not below the given one.
    Position LowerBound(std::string_view key) const {
        // Files list objects in the order of their keys, so that most new ones come last.
        if (ComesLast(key))
            return GetBehindLast();
        const auto isBelow = [key](const T* object) { return object->GetKey() < key; };
        return FirstWhereNot(isBelow);
    }

    /// The first place whose key is above the given one.
    Position UpperBound(std::string_view key) const {
        if (ComesLast(key))
            return GetBehindLast();
        const auto isNotAbove = [key](const T* object) { return !(key < object->GetKey()); };
        return FirstWhereNot(isNotAbove);
    }

    /// The place behind one with an object.
    Position Next(Position at) const {
        at = Normalized(at);
        return {at.chunk, at.offset + 1};
    }

    /// The place of this very object, or one without an object.
    Position PositionOf(const T* object) const {
        const std::string_view key = object->GetKey();
        Position at = LowerBound(key);
        for (int looked = 0;; ++looked, at = Next(at)) {
            if (looked == kFew && HasRanks())
                return PositionByRank(object);
            const T* other = GetAt(at);
            if (!other || other->GetKey() != key)
                return GetEnd();
            if (other == object)
                return at;
        }
    }

    /// The place of this very object without trusting its key, or one without an object.
    Position Search(const T* object) const {
        for (size_t chunk = 0; chunk < chunks_.size(); ++chunk) {
            const auto& entries = chunks_[chunk];
            const auto found = std::find(entries.begin(), entries.end(), object);
            if (found != entries.end())
                return {chunk, static_cast<size_t>(found - entries.begin())};
        }
        return GetEnd();
    }

    // -- changes --------------------------------------------------------------------------------

    /// Room for one object more, wherever it comes: putting it there then needs no memory, also
    /// when another one is taken out before.
    void MakeRoom() {
        if (!spare_)
            spare_ = std::make_unique<Chunk>();
        spare_->reserve(std::min(kChunkSize, 2 * static_cast<size_t>(GetCount()) + 1));
        Kor::MakeRoom(chunks_);
        Kor::MakeRoom(starts_);
    }

    /// The same for that place alone, with none taken out before; mostly there is room.
    void MakeRoomAt(Position at) {
        if (at.chunk >= chunks_.size() || chunks_[at.chunk].size() >= kChunkSize)
            MakeRoom();
        else
            Kor::MakeRoom(chunks_[at.chunk]);
    }

    void PutAt(Position at, T* object) {
        if (IsEmpty() || (at.chunk + 1 >= chunks_.size() && IsFullAt(at)))
            return StartChunk(object);
        if (at.chunk >= chunks_.size())
            at = GetBehindLast();
        if (chunks_[at.chunk].size() >= kChunkSize)
            at = Split(at);
        auto& chunk = chunks_[at.chunk];
        if (chunk.size() == chunk.capacity() && spare_)
            MoveToSpare(chunk);
        chunk.insert(chunk.begin() + static_cast<std::ptrdiff_t>(at.offset), object);
        Shift(at.chunk + 1, 1);
        spare_.reset();
        Rank(object);
    }

    /// Puts the object over the entry at a place.
    void Replace(Position at, T* object) {
        at = Normalized(at);
        T*& entry = chunks_[at.chunk][at.offset];
        if (ranks_)
            ranks_->Replace(entry, object);
        entry = object;
    }

    void Erase(Position at) {
        at = Normalized(at);
        auto& chunk = chunks_[at.chunk];
        if (ranks_)
            ranks_->Remove(chunk[at.offset]);
        chunk.erase(chunk.begin() + static_cast<std::ptrdiff_t>(at.offset));
        Shift(at.chunk + 1, -1);
        if (!chunk.empty())
            return;
        chunks_.erase(chunks_.begin() + static_cast<std::ptrdiff_t>(at.chunk));
        starts_.erase(starts_.begin() + static_cast<std::ptrdiff_t>(at.chunk));
    }

    /// Puts objects that stand in the order of their keys between those that are there: all chunks
    /// are written anew, each of them full.
    template <class Iterator> void Merge(Iterator next, Iterator end) {
        const std::vector<T*> present = GetAll();
        const int count = GetCount() + static_cast<int>(end - next);
        auto old = present.begin();
        std::vector<Chunk> chunks;
        std::vector<int> starts;
        for (int start = 0; start < count; start += static_cast<int>(kChunkSize)) {
            Chunk chunk;
            chunk.reserve(kChunkSize);
            while (chunk.size() < kChunkSize && (old != present.end() || next != end)) {
                const bool takesNew =
                    old == present.end() || (next != end && (*next)->GetKey() < (*old)->GetKey());
                chunk.push_back(takesNew ? *next++ : *old++);
            }
            chunks.push_back(std::move(chunk));
            starts.push_back(start);
        }
        chunks_.swap(chunks);
        starts_.swap(starts);
        ranks_.reset();
    }

    void Clear() { *this = ChunkedList(); }

private:
    using Chunk = std::vector<T*>;

    static constexpr size_t kChunkSize = 512;
    static constexpr int kFew = 64; ///< So many objects of one key are looked at singly.

    Position Normalized(Position at) const {
        if (at.chunk < chunks_.size() && at.offset == chunks_[at.chunk].size())
            return {at.chunk + 1, 0};
        return at;
    }

    /// The end as a place in the last chunk, where there is one.
    Position GetBehindLast() const {
        return IsEmpty() ? GetEnd() : Position{chunks_.size() - 1, chunks_.back().size()};
    }

    /// The first place whose object does not comply; all before it do, and none behind it.
    template <class Complies> Position FirstWhereNot(Complies complies) const {
        const auto frontComplies = [&](const Chunk& chunk) { return complies(chunk.front()); };
        const auto above = std::partition_point(chunks_.begin() + 1, chunks_.end(), frontComplies);
        const auto chunk = above - 1;
        const auto entry = std::partition_point(chunk->begin(), chunk->end(), complies);
        return {static_cast<size_t>(chunk - chunks_.begin()),
                static_cast<size_t>(entry - chunk->begin())};
    }

    /// Whether an entry at the very end would overflow the last chunk: growing lists then start a
    /// new chunk instead of splitting a full one, which leaves the chunks full.
    bool IsFullAt(Position at) const {
        const bool atEnd = at.chunk >= chunks_.size() || at.offset == chunks_.back().size();
        return atEnd && chunks_.back().size() >= kChunkSize;
    }

    void StartChunk(T* object) {
        Chunk chunk = TakeSpare();
        if (chunk.capacity() == 0)
            chunk.reserve(IsEmpty() ? 1 : kChunkSize);
        chunk.push_back(object);
        Kor::MakeRoom(starts_);
        const int start = GetCount();
        chunks_.push_back(std::move(chunk));
        starts_.push_back(start);
        Rank(object);
    }

    // -- ranks: where an object stands among many of its key ------------------------------------

    /// Makes them when they are first needed and there is memory.
    bool HasRanks() const {
        if (!ranks_)
            ranks_.reset(new (std::nothrow) EntryRanks());
        if (ranks_ && ranks_->IsEmpty())
            ForEach([this](const T* object) { ranks_->Append(object); });
        if (ranks_ && ranks_->IsIncomplete())
            ranks_.reset();
        return ranks_ != nullptr;
    }

    /// A new object comes behind those of its key.
    void Rank(const T* object) {
        if (ranks_)
            ranks_->Append(object);
        if (ranks_ && ranks_->IsIncomplete())
            ranks_.reset();
    }

    Position PositionByRank(const T* object) const {
        const std::string_view key = object->GetKey();
        const std::uint64_t rank = ranks_->Get(object);
        const Position at = FirstWhereNot([&](const T* other) {
            const int order = other->GetKey().compare(key);
            return order < 0 || (order == 0 && ranks_->Get(other) < rank);
        });
        return GetAt(at) == object ? at : GetEnd();
    }

    /// The memory set aside for a chunk; empty without any.
    Chunk TakeSpare() {
        Chunk taken;
        if (spare_)
            taken.swap(*spare_);
        spare_.reset();
        return taken;
    }

    void MoveToSpare(Chunk& chunk) {
        spare_->assign(chunk.begin(), chunk.end());
        chunk.swap(*spare_);
    }

    /// Makes two chunks of a full one and gives the place that the position has then.
    Position Split(Position at) {
        const size_t half = chunks_[at.chunk].size() / 2;
        const auto middle = static_cast<std::ptrdiff_t>(half);
        const auto next = static_cast<std::ptrdiff_t>(at.chunk) + 1;
        Chunk upper = TakeSpare();
        upper.assign(chunks_[at.chunk].begin() + middle, chunks_[at.chunk].end());
        Kor::MakeRoom(starts_);
        chunks_.insert(chunks_.begin() + next, std::move(upper));
        auto& lower = chunks_[at.chunk];
        lower.erase(lower.begin() + middle, lower.end());
        starts_.insert(starts_.begin() + next, starts_[at.chunk] + static_cast<int>(half));
        return at.offset > half ? Position{at.chunk + 1, at.offset - half} : at;
    }

    void Shift(size_t firstChunk, int by) {
        for (size_t i = firstChunk; i < starts_.size(); ++i)
            starts_[i] += by;
    }

    std::vector<Chunk> chunks_;
    std::vector<int> starts_;      // the index of each chunk's first entry
    std::unique_ptr<Chunk> spare_; // set aside by MakeRoom
    mutable std::unique_ptr<EntryRanks> ranks_;
};

} // namespace Kor
