#pragma once

#include <array>
#include <cstddef>
#include <vector>

namespace Kor {

/// A stack for graph walks: allocates only beyond its fixed room, so that lookups stay free of
/// allocations while no input can exhaust the thread's stack.
template <class T, size_t kRoom = 48> class SmallStack {
public:
    bool IsEmpty() const { return size_ == 0; }

    void Push(T item) {
        if (size_ < kRoom)
            room_[size_] = item;
        else
            spill_.push_back(item);
        ++size_;
    }

    T Pop() {
        --size_;
        if (size_ < kRoom)
            return room_[size_];
        T item = spill_.back();
        spill_.pop_back();
        return item;
    }

private:
    std::array<T, kRoom> room_;
    std::vector<T> spill_;
    size_t size_ = 0;
};

} // namespace Kor
