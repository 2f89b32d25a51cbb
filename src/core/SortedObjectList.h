#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

#include "core/MakeRoom.h"
#include "core/PointerList.h"

namespace Kor {

/// References to objects, ascending by the byte order of their keys (`GetKey`), not owned.
/// Keys are read when they are compared, so an object whose key is about to change must be taken
/// out first and placed again afterwards.
///
/// A search that fails gives the bitwise complement of the insertion point, so every result below
/// zero means "not there". Inserting an existing key overwrites the entry and gives the complement
/// of its index, unless duplicates are allowed: then the new object goes in front of its equals.
/// Where several objects share a key, an object that is one of them overwrites itself.
template <class T, bool kAllowDuplicates = false> class SortedObjectList {
public:
    int GetCount() const { return static_cast<int>(objects_.size()); }
    bool IsEmpty() const { return objects_.empty(); }

    /// The object at an index; null out of range.
    T* GetAt(int index) const {
        return index >= 0 && index < GetCount() ? objects_[static_cast<size_t>(index)] : nullptr;
    }

    /// The index of the first object with the key, or the complement of the insertion point.
    int Find(std::string_view key) const {
        const int index = LowerBound(key);
        return HasKey(index, key) ? index : ~index;
    }

    /// The first object with the key, or null.
    T* Get(std::string_view key) const { return GetAt(Find(key)); }

    /// Inserts by key; `replaced`, when given, receives the object that was overwritten, or null.
    int Insert(T* object, T** replaced = nullptr) {
        const int found = FindPlace(object->GetKey());
        if (replaced)
            *replaced = nullptr;
        if (found < 0 || kAllowDuplicates) {
            const int index = found < 0 ? ~found : found;
            objects_.InsertAt(static_cast<size_t>(index), object);
            return index;
        }
        const int own = IndexInFewSteps(object);
        const int index = own >= 0 ? own : found;
        if (replaced)
            *replaced = GetAt(index);
        objects_.Replace(static_cast<size_t>(index), object);
        return ~index;
    }

    /// Inserts behind the objects with the same key and keeps them.
    void Place(T* object) { objects_.InsertAt(UpperBound(object->GetKey()), object); }

    /// Places objects that stand in the order of their keys; throws std::bad_alloc, and then has
    /// changed nothing.
    void PlaceAll(const std::vector<T*>& objects) {
        MakeRoomFor(objects.size());
        objects_.Merge(objects, ComesBefore);
    }

    /// Takes out the entry with the object's key (the object itself where several share it) and
    /// gives its index, or the failed search's result. The object is not deleted.
    int Remove(const T* object) {
        const int index = FindEntry(object);
        if (index >= 0)
            objects_.EraseAt(static_cast<size_t>(index));
        return index;
    }

    /// Takes out this very object, even where its key has changed meanwhile; false without it.
    bool RemoveExactly(const T* object) {
        const int index = IndexInFewSteps(object);
        if (index < 0)
            return objects_.TakeOut(object);
        objects_.EraseAt(static_cast<size_t>(index));
        return true;
    }

    /// The index of the object itself (several may share a key), else of the one with its key, or
    /// the failed search's result.
    int FindEntry(const T* object) {
        const int own = IndexInFewSteps(object);
        return own >= 0 ? own : Find(object->GetKey());
    }

    /// The index of this very object, or -1.
    int IndexOf(const T* object) const {
        const int index = IndexAmongFew(object);
        return index != kAmongMany ? index : ToIndex(objects_.Find(object));
    }

    bool Contains(const T* object) const { return IndexOf(object) >= 0; }

    /// Restores the order after keys changed in place.
    void Resort() {
        if (!std::is_sorted(objects_.begin(), objects_.end(), ComesBefore))
            objects_.SortStably(ComesBefore);
    }

    void Clear() { objects_.clear(); }
    void Reserve(int count) { objects_.reserve(static_cast<size_t>(count)); }

    /// Room for one object more: adding it then needs no memory.
    void MakeRoom() { Kor::MakeRoom(objects_); }

    /// Room for so many more. A long list grows by half at least, so that it seldom moves.
    void MakeRoomFor(size_t count) {
        const size_t least = objects_.size() + count;
        const size_t half = objects_.size() < kSmall ? 0 : objects_.size() / 2;
        if (least > objects_.capacity())
            objects_.reserve(std::max(least, objects_.size() + half));
    }

    /// Adds an object whose key is known to come last.
    void Append(T* object) { objects_.push_back(object); }

    /// A copy of all objects in order, for a walk during which the list may change.
    std::vector<T*> GetAll() const { return objects_.ToVector(); }

    /// Calls a function with each object, in order. The list must not change meanwhile.
    template <class Body> void ForEach(const Body& body) const { objects_.ForEach(body); }

    auto begin() const { return objects_.begin(); }
    auto end() const { return objects_.end(); }

private:
    static constexpr size_t kSmall = 256; ///< Below it a list takes what it needs alone.
    static constexpr int kFew = 64;       ///< So many of one key are looked at singly.
    static constexpr int kAmongMany = -2;

    static bool ComesBefore(const T* a, const T* b) { return a->GetKey() < b->GetKey(); }

    /// The same as Find, quickest where the key comes last, as it does in copies of other lists.
    int FindPlace(std::string_view key) const {
        if (objects_.empty() || objects_.back()->GetKey() < key)
            return ~GetCount();
        return Find(key);
    }

    bool HasKey(int index, std::string_view key) const {
        const T* object = GetAt(index);
        return object && object->GetKey() == key;
    }

    int LowerBound(std::string_view key) const {
        return static_cast<int>(
            objects_.CountWhile([key](const T* object) { return object->GetKey() < key; }));
    }

    size_t UpperBound(std::string_view key) const {
        return objects_.CountWhile([key](const T* object) { return !(key < object->GetKey()); });
    }

    /// The index of this very object, or -1; kAmongMany where many share its key.
    int IndexAmongFew(const T* object) const {
        const std::string_view key = object->GetKey();
        const int first = LowerBound(key);
        for (int index = first; HasKey(index, key); ++index) {
            if (GetAt(index) == object)
                return index;
            if (index - first == kFew)
                return kAmongMany;
        }
        return -1;
    }

    int IndexInFewSteps(const T* object) {
        const int index = IndexAmongFew(object);
        return index != kAmongMany ? index : ToIndex(objects_.FindInFewSteps(object));
    }

    static int ToIndex(size_t found) {
        return found == PointerList<T>::kNotFound ? -1 : static_cast<int>(found);
    }

    PointerList<T> objects_;
};

} // namespace Kor
