#pragma once

#include <cstddef>

#include "core/MakeRoom.h"
#include "core/PointerList.h"

namespace Kor {

/// The base of what stands in a TiedList: it knows its place there.
class Tied {
    template <class T> friend class TiedList;
    size_t place_ = 0;
};

/// Those who refer to an object, in no order. Leaving costs the same however many there are.
template <class T> class TiedList {
public:
    bool IsEmpty() const { return entries_.empty(); }
    T* GetLast() const { return entries_.back(); }

    /// Room for one entry more: adding it then needs no memory.
    void MakeRoom() { Kor::MakeRoom(entries_); }

    void Add(T* entry) {
        entries_.push_back(entry);
        static_cast<Tied*>(entry)->place_ = entries_.size() - 1;
    }

    /// The entry must be in the list.
    void Remove(const T* entry) {
        const size_t place = static_cast<const Tied*>(entry)->place_;
        T* last = entries_.back();
        entries_.Replace(place, last);
        static_cast<Tied*>(last)->place_ = place;
        entries_.pop_back();
    }

private:
    PointerList<T> entries_;
};

} // namespace Kor
