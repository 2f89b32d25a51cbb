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
        const auto found = LowerBound(key);
        const int index = static_cast<int>(found - objects_.begin());
        return found != objects_.end() && (*found)->GetKey() == key ? index : ~index;
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
            objects_.insert(objects_.begin() + index, object);
            return index;
        }
        const int own = IndexOf(object);
        const int index = own >= 0 ? own : found;
        T*& entry = objects_[static_cast<size_t>(index)];
        if (replaced)
            *replaced = entry;
        entry = object;
        return ~index;
    }

    /// Inserts behind the objects with the same key and keeps them.
    void Place(T* object) {
        objects_.insert(UpperBound(objects_.begin(), objects_.end(), object->GetKey()), object);
    }

    /// Places objects that stand in the order of their keys; no entry moves more than once.
    void PlaceAll(const std::vector<T*>& objects) {
        auto kept = static_cast<std::ptrdiff_t>(objects_.size()); // those not moved yet
        objects_.resize(objects_.size() + objects.size());
        auto end = objects_.end();
        for (auto object = objects.rbegin(); object != objects.rend(); ++object) {
            const auto keptEnd = objects_.begin() + kept;
            const auto place = UpperBound(objects_.begin(), keptEnd, (*object)->GetKey());
            end = std::move_backward(place, keptEnd, end);
            *--end = *object;
            kept = place - objects_.begin();
        }
    }

    /// Takes out the entry with the object's key (the object itself where several share it) and
    /// gives its index, or the failed search's result. The object is not deleted.
    int Remove(const T* object) {
        const int index = FindEntry(object);
        if (index >= 0)
            objects_.erase(objects_.begin() + index);
        return index;
    }

    /// Takes out this very object, even where its key has changed meanwhile; false without it.
    bool RemoveExactly(const T* object) {
        const int index = IndexOf(object);
        const auto at = index >= 0 ? objects_.begin() + index
                                   : std::find(objects_.begin(), objects_.end(), object);
        if (at == objects_.end())
            return false;
        objects_.erase(at);
        return true;
    }

    /// The index of the object itself (several may share a key), else of the one with its key, or
    /// the failed search's result.
    int FindEntry(const T* object) const {
        const int own = IndexOf(object);
        return own >= 0 ? own : Find(object->GetKey());
    }

    /// The index of this very object, or -1.
    int IndexOf(const T* object) const {
        const std::string_view key = object->GetKey();
        for (auto at = LowerBound(key); at != objects_.end() && (*at)->GetKey() == key; ++at) {
            if (*at == object)
                return static_cast<int>(at - objects_.begin());
        }
        return -1;
    }

    bool Contains(const T* object) const { return IndexOf(object) >= 0; }

    /// Restores the order after keys changed in place.
    void Resort() {
        const auto before = [](const T* a, const T* b) { return a->GetKey() < b->GetKey(); };
        if (!std::is_sorted(objects_.begin(), objects_.end(), before))
            std::stable_sort(objects_.begin(), objects_.end(), before);
    }

    void Clear() { objects_.clear(); }
    void Reserve(int count) { objects_.reserve(static_cast<size_t>(count)); }

    /// Room for one object more: adding it then needs no memory.
    void MakeRoom() { Kor::MakeRoom(objects_); }

    /// Adds an object whose key is known to come last.
    void Append(T* object) { objects_.push_back(object); }

    /// A copy of all objects in order, for a walk during which the list may change.
    std::vector<T*> GetAll() const { return objects_.ToVector(); }

    auto begin() const { return objects_.begin(); }
    auto end() const { return objects_.end(); }

private:
    /// The same as Find, quickest where the key comes last, as it does in copies of other lists.
    int FindPlace(std::string_view key) const {
        if (objects_.empty() || objects_.back()->GetKey() < key)
            return ~GetCount();
        return Find(key);
    }

    auto LowerBound(std::string_view key) const {
        return std::lower_bound(
            objects_.begin(), objects_.end(), key,
            [](const T* object, std::string_view wanted) { return object->GetKey() < wanted; });
    }

    template <class Iterator>
    static Iterator UpperBound(Iterator first, Iterator last, std::string_view key) {
        return std::upper_bound(first, last, key, [](std::string_view wanted, const T* object) {
            return wanted < object->GetKey();
        });
    }

    PointerList<T> objects_;
};

} // namespace Kor
