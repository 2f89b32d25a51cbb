#pragma once

#include <memory>
#include <new>
#include <string_view>
#include <vector>

#include "core/ChunkedList.h"
#include "core/KeyIndex.h"
#include "core/LateEntries.h"

namespace Kor {

/// A sorted list with the rules of SortedObjectList for many thousands of objects. It has three
/// parts: a ChunkedList of all objects that have their places in the order; LateEntries, which are
/// there but take their places when a call first depends on the order; and a KeyIndex of both,
/// which finds objects without the order, as long as no two of them share a key.
///
/// Calls that depend on the order may throw std::bad_alloc while late objects wait for their
/// places, and then have changed nothing; taking objects out never does.
template <class T> class ObjectRegistry {
public:
    int GetCount() const { return count_; }
    bool IsEmpty() const { return count_ == 0; }

    /// The object at an index; null out of range.
    T* GetAt(int index) const {
        if (index < 0 || index >= count_)
            return nullptr;
        Settle();
        return placed_.GetAt(index);
    }

    /// The index of the first object with the key, or the complement of the insertion point.
    int Find(std::string_view key) const {
        Settle();
        const Position at = placed_.LowerBound(key);
        const int index = placed_.IndexAt(at);
        return HasKey(at, key) ? index : ~index;
    }

    /// The first object with the key, or null.
    T* Get(std::string_view key) const {
        if (count_ >= kIndexedFrom && HasIndex())
            return index_->Find(key);
        Settle();
        const Position at = placed_.LowerBound(key);
        return HasKey(at, key) ? placed_.GetAt(at) : nullptr;
    }

    /// Inserts by key; an existing key is overwritten and gives the complement of its index.
    /// `replaced`, when given, receives the object that was overwritten, or null.
    int Insert(T* object, T** replaced = nullptr) {
        Settle();
        const std::string_view key = object->GetKey();
        const Position at = placed_.LowerBound(key);
        if (HasKey(at, key))
            return Overwrite(at, object, replaced);
        if (replaced)
            *replaced = nullptr;
        const int index = placed_.IndexAt(at);
        InsertAt(at, object);
        return index;
    }

    /// Adds an object whose key is not there yet, as Insert does, for callers who need no index.
    void InsertLate(T* object) {
        const bool comesLast = late_.IsEmpty() && placed_.ComesLast(object->GetKey());
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
        placed_.MakeRoom();
    }

    /// The same for an object of that key, with none taken out before; mostly there is room.
    void MakeRoomFor(std::string_view key) {
        Settle();
        placed_.MakeRoomAt(placed_.LowerBound(key));
    }

    /// Puts an object of the same key in another one's place; false without that. Needs no memory
    /// where none wait for their places.
    bool Replace(const T* object, T* other) {
        Settle();
        const Position at = placed_.PositionOf(object);
        if (!placed_.GetAt(at))
            return false;
        ReplaceAt(at, other);
        return true;
    }

    /// Inserts behind the objects with the same key and keeps them.
    void Place(T* object) {
        Settle();
        InsertAt(placed_.UpperBound(object->GetKey()), object);
    }

    /// Takes out the entry with the object's key (the object itself where several share it) and
    /// gives its index, or the failed search's result. The object is not deleted.
    int Remove(const T* object) {
        if (!TrySettle()) {
            const int index = RemoveLate(object);
            if (index >= 0)
                return index;
        }
        Position at = placed_.PositionOf(object);
        if (!placed_.GetAt(at))
            at = placed_.LowerBound(object->GetKey());
        const int index = IndexAmongAll(at, object);
        if (!HasKey(at, object->GetKey()))
            return ~index;
        Erase(at);
        return index;
    }

    /// Takes out this very object, even where its key has changed meanwhile; false without it.
    bool RemoveExactly(const T* object) {
        if (!TrySettle() && RemoveLate(object) >= 0)
            return true;
        Position at = placed_.PositionOf(object);
        if (!placed_.GetAt(at))
            at = placed_.Search(object);
        if (!placed_.GetAt(at))
            return false;
        Erase(at);
        return true;
    }

    bool Contains(const T* object) const {
        Settle();
        return placed_.GetAt(placed_.PositionOf(object)) != nullptr;
    }

    /// Takes out the last object and gives it; null when empty.
    T* TakeLast() {
        if (count_ == 0)
            return nullptr;
        if (!TrySettle() && placed_.ComesLast(late_.GetLast()->GetKey()))
            return TakeLastLate();
        const Position at = placed_.GetLast();
        T* last = placed_.GetAt(at);
        Erase(at);
        return last;
    }

    /// The object that comes so many places before the last one, as long as that is cheap to say;
    /// null otherwise.
    const T* PeekFromEnd(size_t distance) const {
        return late_.IsEmpty() ? placed_.PeekFromEnd(distance) : nullptr;
    }

    /// Calls a function with each object: in key order, but for those that wait for their places.
    /// The registry must not change meanwhile.
    template <class Body> void ForEach(const Body& body) const {
        placed_.ForEach(body);
        for (T* object : late_)
            body(object);
    }

    /// All objects in key order, for a walk during which the registry may change.
    std::vector<T*> Snapshot() const {
        Settle();
        return placed_.GetAll();
    }

    void Clear() {
        placed_.Clear();
        late_.Clear();
        count_ = 0;
        index_.reset();
        keysAreShared_ = false;
    }

private:
    using Position = typename ChunkedList<T>::Position;

    static constexpr int kIndexedFrom = 12;   ///< Smaller lists are searched as quickly.
    static constexpr size_t kMergedFrom = 64; ///< So many times fewer late ones are put in singly.

    bool HasKey(Position at, std::string_view key) const {
        const T* object = placed_.GetAt(at);
        return object && object->GetKey() == key;
    }

    /// When memory runs out, nothing has changed.
    void InsertAt(Position at, T* object) {
        placed_.PutAt(at, object);
        ++count_;
        Index(object);
    }

    /// Puts the object over its own entry or, where it has none, over the first one of its key.
    int Overwrite(Position first, T* object, T** replaced) {
        const Position own = placed_.PositionOf(object);
        const Position at = placed_.GetAt(own) ? own : first;
        if (replaced)
            *replaced = placed_.GetAt(at);
        ReplaceAt(at, object);
        return ~placed_.IndexAt(at);
    }

    void ReplaceAt(Position at, T* object) {
        Unindex(placed_.GetAt(at));
        placed_.Replace(at, object);
        Index(object);
    }

    void Erase(Position at) {
        Discount(placed_.GetAt(at));
        placed_.Erase(at);
    }

    /// Has an object that goes neither counted nor found any more.
    void Discount(const T* object) {
        Unindex(object);
        if (--count_ == 0)
            keysAreShared_ = false;
    }

    // -- late entries ---------------------------------------------------------------------------

    /// Gives the late objects their places.
    void Settle() const {
        if (late_.IsEmpty())
            return;
        late_.Sort();
        if (late_.GetCount() * kMergedFrom < static_cast<size_t>(count_)) {
            PutLateOneByOne();
        } else {
            placed_.Merge(late_.begin(), late_.end());
            late_.Clear();
        }
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
            placed_.PutAt(placed_.LowerBound(object->GetKey()), object);
            late_.DropLast();
        }
    }

    /// The index that a late object had, or -1 when it is none.
    int RemoveLate(const T* object) {
        const int place = late_.Remove(object);
        if (place < 0)
            return -1;
        Discount(object);
        return place + placed_.IndexAt(placed_.LowerBound(object->GetKey()));
    }

    /// An index as if the late objects had their places.
    int IndexAmongAll(Position at, const T* object) const {
        return placed_.IndexAt(at) + late_.CountBelow(object->GetKey());
    }

    T* TakeLastLate() {
        T* last = late_.GetLast();
        late_.DropLast();
        Discount(last);
        return last;
    }

    // -- the index ------------------------------------------------------------------------------

    void Index(T* object) {
        if (index_)
            index_->Add(object);
        if (index_ && index_->IsAmbiguous())
            GiveUpIndex();
    }

    void Unindex(const T* object) {
        if (index_)
            index_->Remove(object);
    }

    /// An index does not know which of several objects with one key comes first: there is none
    /// from then on until the registry is empty.
    void GiveUpIndex() const {
        index_.reset();
        keysAreShared_ = true;
    }

    /// Whether there is an index of all objects; made when it is first asked for, given memory.
    bool HasIndex() const {
        if (keysAreShared_)
            return false;
        if (!index_)
            index_.reset(new (std::nothrow) KeyIndex<T>());
        if (index_ && index_->IsEmpty())
            FillIndex();
        if (index_ && index_->GetCount() != count_) // memory ran out
            index_.reset();
        return index_ != nullptr;
    }

    void FillIndex() const {
        ForEach([this](T* object) {
            if (!index_->IsAmbiguous())
                index_->Add(object);
        });
        if (index_->IsAmbiguous())
            GiveUpIndex();
    }

    mutable ChunkedList<T> placed_;
    mutable LateEntries<T> late_;
    int count_ = 0;                              // of both
    mutable std::unique_ptr<KeyIndex<T>> index_; // of both, if there is one
    mutable bool keysAreShared_ = false;         // found out when the index was last filled
};

} // namespace Kor
