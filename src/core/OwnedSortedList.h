#pragma once

#include <memory>
#include <string_view>
#include <utility>

#include "core/SortedObjectList.h"
#include "core/Undo.h"

namespace Kor {

/// A SortedObjectList that owns its objects, which are copied with it; no two of them share a key.
template <class T> class OwnedSortedList {
public:
    OwnedSortedList() = default;
    ~OwnedSortedList() { DeleteAll(); }
    OwnedSortedList(OwnedSortedList&& other) noexcept : objects_(std::move(other.objects_)) {}

    OwnedSortedList(const OwnedSortedList& other) {
        Undo copied([this] { DeleteAll(); });
        objects_.Reserve(other.GetCount());
        for (const T* object : other.objects_)
            objects_.Append(new T(*object));
        copied.Commit();
    }

    OwnedSortedList& operator=(OwnedSortedList other) noexcept {
        std::swap(objects_, other.objects_);
        return *this;
    }

    int GetCount() const { return objects_.GetCount(); }
    T* GetAt(int index) const { return objects_.GetAt(index); }

    /// The index of the object with the key, or the complement of its insertion point.
    int Find(std::string_view key) const { return objects_.Find(key); }
    T* Get(std::string_view key) const { return objects_.Get(key); }

    /// Takes over an object whose key is not there yet, and gives its index. Throws std::bad_alloc,
    /// and then has changed nothing.
    int Insert(std::unique_ptr<T> object) {
        const int index = objects_.Insert(object.get());
        static_cast<void>(object.release()); // the list has it now
        return index;
    }

    void EraseAt(int index) {
        const std::unique_ptr<T> erased(objects_.GetAt(index));
        objects_.RemoveExactly(erased.get());
    }

    auto begin() const { return objects_.begin(); }
    auto end() const { return objects_.end(); }

private:
    void DeleteAll() {
        for (const T* object : objects_)
            delete object;
    }

    SortedObjectList<T> objects_;
};

} // namespace Kor
