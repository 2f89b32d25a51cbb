#pragma once

#include <algorithm>
#include <memory>
#include <new>
#include <string_view>
#include <utility>
#include <vector>

#include "core/KeyIndex.h"
#include "core/LateEntries.h"
#include "core/MakeRoom.h"

namespace Kor {

/// A sorted list with the rules of SortedObjectList for many thousands of objects: the entries
/// stand in chunks, so that an insertion moves one chunk and not half of the list. Objects may also
/// be added late: they are there, but take their places when a call first depends on the order.
///
/// Calls that give an index or an object at an index may throw std::bad_alloc while late objects
/// wait for their places, and then have changed nothing; taking objects out never does.
template <class T> class ObjectRegistry {
public:
    int GetCount() const { return count_; }
    bool IsEmpty() const { return count_ == 0; }

    /// The object at an index; null out of range.
    T* GetAt(int index) const {
        if (index < 0 || index >= count_)
            return nullptr;
        Settle();
        const auto after = std::upper_bound(starts_.begin(), starts_.end(), index);
        const size_t chunk = static_cast<size_t>(after - starts_.begin()) - 1;
        return chunks_[chunk][static_cast<size_t>(index - starts_[chunk])];
    }

    /// The index of the first object with the key, or the complement of the insertion point.
    int Find(std::string_view key) const {
        Settle();
        const Position at = LowerBound(key);
        const T* found = At(at);
        const int index = IndexAt(at);
        return found && found->GetKey() == key ? index : ~index;
    }

    /// The first object with the key, or null.
    T* Get(std::string_view key) const {
        if (count_ >= kIndexedFrom && HasIndex())
            return index_->Find(key);
        Settle();
        T* found = At(LowerBound(key));
        return found && found->GetKey() == key ? found : nullptr;
    }

    /// Inserts by key; an existing key is overwritten and gives the complement of its index.
    /// `replaced`, when given, receives the object that was overwritten, or null.
    int Insert(T* object, T** replaced = nullptr) {
        Settle();
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

    /// Adds an object whose key is not there yet, as Insert does, for callers who need no index.
    void InsertLate(T* object) {
        const bool comesLast = late_.IsEmpty() && ComesLast(object->GetKey());
        if (comesLast || count_ < kIndexedFrom || !HasIndex()) {
            Insert(object);
            return;
        }
        late_.Add(object);
        ++count_;
        Index(object);
    }

    /// Room for one object more, wherever it comes: adding it next then needs no memory, also when
    /// another one is taken out before.
    void MakeRoom() {
        Settle();
        if (!spare_)
            spare_ = std::make_unique<std::vector<T*>>();
        spare_->reserve(std::min(kChunkSize, 2 * static_cast<size_t>(count_) + 1));
        Kor::MakeRoom(chunks_);
        Kor::MakeRoom(starts_);
    }

    /// The same for an object of that key, with none taken out before; mostly there is room.
    void MakeRoomFor(std::string_view key) {
        Settle();
        if (chunks_.empty())
            return MakeRoom();
        auto& chunk = chunks_[LowerBound(key).chunk];
        if (chunk.size() >= kChunkSize)
            MakeRoom();
        else
            Kor::MakeRoom(chunk);
    }

    /// Puts an object of the same key in another one's place; false without that. Needs no memory
    /// where none wait for their places.
    bool Replace(const T* object, T* other) {
        Settle();
        Position at = PositionOf(object);
        if (!At(at))
            return false;
        at = Normalized(at);
        Unindex(object);
        chunks_[at.chunk][at.offset] = other;
        Index(other);
        return true;
    }

    /// Inserts behind the objects with the same key and keeps them.
    void Place(T* object) {
        Settle();
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
        if (!TrySettle()) {
            const int index = RemoveLate(object);
            if (index >= 0)
                return index;
        }
        Position at = PositionOf(object);
        if (!At(at)) {
            at = LowerBound(object->GetKey());
            const T* found = At(at);
            if (!found || found->GetKey() != object->GetKey())
                return ~IndexAmongAll(at, object);
        }
        const int index = IndexAmongAll(at, object);
        Erase(at);
        return index;
    }

    /// Takes out this very object, even where its key has changed meanwhile; false without it.
    bool RemoveExactly(const T* object) {
        if (!TrySettle() && RemoveLate(object) >= 0)
            return true;
        Position at = PositionOf(object);
        if (!At(at))
            at = Search(object);
        if (!At(at))
            return false;
        Erase(at);
        return true;
    }

    bool Contains(const T* object) const {
        Settle();
        return At(PositionOf(object)) != nullptr;
    }

    /// Takes out the last object and gives it; null when empty.
    T* TakeLast() {
        if (count_ == 0)
            return nullptr;
        if (!TrySettle() && ComesLast(late_.GetLast()->GetKey()))
            return TakeLastLate();
        T* last = chunks_.back().back();
        Erase({chunks_.size() - 1, chunks_.back().size() - 1});
        return last;
    }

    /// The object that comes so many places before the last one, as long as that is cheap to say;
    /// null otherwise.
    const T* PeekFromEnd(size_t distance) const {
        if (!late_.IsEmpty() || chunks_.empty() || distance >= chunks_.back().size())
            return nullptr;
        return chunks_.back()[chunks_.back().size() - 1 - distance];
    }

    /// Calls a function with each object: in key order, but for those that wait for their places.
    /// The registry must not change meanwhile.
    template <class Body> void ForEach(const Body& body) const {
        for (const auto& chunk : chunks_) {
            for (T* object : chunk)
                body(object);
        }
        for (size_t i = 0; i < late_.GetCount(); ++i)
            body(late_.GetAt(i));
    }

    /// All objects in key order, for a walk during which the registry may change.
    std::vector<T*> Snapshot() const {
        Settle();
        return Join();
    }

    void Clear() {
        chunks_.clear();
        starts_.clear();
        late_.Clear();
        count_ = 0;
        index_.reset();
        spare_.reset();
    }

private:
    static constexpr size_t kChunkSize = 512;
    static constexpr int kIndexedFrom = 12;   ///< Smaller lists are searched as quickly.
    static constexpr size_t kMergedFrom = 64; ///< So many times fewer late ones are put in singly.

    /// An entry's place; an offset at a chunk's end stands for the next chunk's first entry.
    struct Position {
        size_t chunk;
        size_t offset;
    };

    std::vector<T*> Join() const {
        std::vector<T*> all;
        all.reserve(static_cast<size_t>(count_));
        for (const auto& chunk : chunks_)
            all.insert(all.end(), chunk.begin(), chunk.end());
        return all;
    }

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
        return at.chunk < chunks_.size() ? starts_[at.chunk] + static_cast<int>(at.offset)
                                         : CountPlaced();
    }

    /// Whether the key is above those of all objects that have their places.
    bool ComesLast(std::string_view key) const {
        return chunks_.empty() || chunks_.back().back()->GetKey() < key;
    }

    /// The first place whose key is not below the given one.
    Position LowerBound(std::string_view key) const {
        if (chunks_.empty())
            return {0, 0};
        // Files list objects in the order of their keys, so that most new ones come last.
        if (ComesLast(key))
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
        PutAt(at, object);
        ++count_;
        Index(object);
    }

    /// The same for an object that is counted and indexed already.
    void PutAt(Position at, T* object) const {
        if (chunks_.empty() || (at.chunk + 1 >= chunks_.size() && IsFullAt(at)))
            return StartChunk(object);
        if (at.chunk >= chunks_.size())
            at = {chunks_.size() - 1, chunks_.back().size()};
        if (chunks_[at.chunk].size() >= kChunkSize)
            at = Split(at);
        auto& chunk = chunks_[at.chunk];
        if (chunk.size() == chunk.capacity() && spare_)
            MoveToSpare(chunk);
        chunk.insert(chunk.begin() + static_cast<std::ptrdiff_t>(at.offset), object);
        Shift(at.chunk + 1, 1);
        spare_.reset();
    }

    void StartChunk(T* object) const {
        std::vector<T*> chunk = TakeSpare();
        if (chunk.capacity() == 0)
            chunk.reserve(chunks_.empty() ? 1 : kChunkSize);
        chunk.push_back(object);
        Kor::MakeRoom(starts_);
        const int start = CountPlaced();
        chunks_.push_back(std::move(chunk));
        starts_.push_back(start);
    }

    /// Whether an entry at the very end would overflow the last chunk: growing lists then start a
    /// new chunk instead of splitting a full one, which leaves the chunks full.
    bool IsFullAt(Position at) const {
        const bool atEnd = at.chunk >= chunks_.size() || at.offset == chunks_.back().size();
        return atEnd && chunks_.back().size() >= kChunkSize;
    }

    /// The memory set aside for a chunk; empty without any.
    std::vector<T*> TakeSpare() const {
        std::vector<T*> taken;
        if (spare_)
            taken.swap(*spare_);
        spare_.reset();
        return taken;
    }

    void MoveToSpare(std::vector<T*>& chunk) const {
        spare_->assign(chunk.begin(), chunk.end());
        chunk.swap(*spare_);
    }

    /// Makes two chunks of a full one and gives the place that the position has then.
    Position Split(Position at) const {
        const size_t half = chunks_[at.chunk].size() / 2;
        const auto middle = static_cast<std::ptrdiff_t>(half);
        const auto next = static_cast<std::ptrdiff_t>(at.chunk) + 1;
        std::vector<T*> upper = TakeSpare();
        upper.assign(chunks_[at.chunk].begin() + middle, chunks_[at.chunk].end());
        Kor::MakeRoom(starts_);
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

    void Shift(size_t firstChunk, int by) const {
        for (size_t i = firstChunk; i < starts_.size(); ++i)
            starts_[i] += by;
    }

    // -- late entries ---------------------------------------------------------------------------

    int CountPlaced() const {
        return chunks_.empty() ? 0 : starts_.back() + static_cast<int>(chunks_.back().size());
    }

    /// Gives the late objects their places.
    void Settle() const {
        if (late_.IsEmpty())
            return;
        late_.Sort();
        if (late_.GetCount() * kMergedFrom < static_cast<size_t>(count_))
            PutLateOneByOne();
        else
            MergeLate();
    }

    /// False without the memory for it; the late objects are in order then.
    bool TrySettle() const noexcept {
        try {
            Settle();
            return true;
        } catch (const std::bad_alloc&) {
            return false;
        }
    }

    void PutLateOneByOne() const {
        while (!late_.IsEmpty()) {
            T* object = late_.GetLast();
            PutAt(LowerBound(object->GetKey()), object);
            late_.DropLast();
        }
    }

    /// Writes all chunks anew, each of them full.
    void MergeLate() const {
        const std::vector<T*> placed = Join();
        std::vector<std::vector<T*>> chunks;
        std::vector<int> starts;
        auto next = placed.begin();
        size_t late = 0;
        for (int start = 0; start < count_; start += static_cast<int>(kChunkSize)) {
            std::vector<T*> chunk;
            chunk.reserve(kChunkSize);
            while (chunk.size() < kChunkSize && (next != placed.end() || late < late_.GetCount())) {
                const bool takesLate =
                    next == placed.end() ||
                    (late < late_.GetCount() && late_.GetAt(late)->GetKey() < (*next)->GetKey());
                chunk.push_back(takesLate ? late_.GetAt(late++) : *next++);
            }
            chunks.push_back(std::move(chunk));
            starts.push_back(start);
        }
        chunks_.swap(chunks);
        starts_.swap(starts);
        late_.Clear();
    }

    /// The index that a late object had, or -1 when it is none.
    int RemoveLate(const T* object) {
        const int place = late_.Remove(object);
        if (place < 0)
            return -1;
        --count_;
        Unindex(object);
        return place + IndexAt(LowerBound(object->GetKey()));
    }

    /// An index as if the late objects had their places.
    int IndexAmongAll(Position at, const T* object) const {
        return IndexAt(at) + late_.CountBelow(object->GetKey());
    }

    T* TakeLastLate() {
        T* last = late_.GetLast();
        late_.DropLast();
        --count_;
        Unindex(last);
        return last;
    }

    // -- the index ------------------------------------------------------------------------------

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
            Settle();
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

    mutable std::vector<std::vector<T*>> chunks_;
    mutable std::vector<int> starts_; // the index of each chunk's first entry
    mutable LateEntries<T> late_;
    mutable std::unique_ptr<std::vector<T*>> spare_; // set aside by MakeRoom
    int count_ = 0;                                  // the late ones included
    mutable std::unique_ptr<KeyIndex<T>> index_;     // of all objects, if there is one
};

} // namespace Kor
