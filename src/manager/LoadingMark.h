#pragma once

#include <functional>
#include <utility>

namespace Kor {

/// What is being loaded is entered as loaded first, so that files may refer to each other in a
/// circle. This takes the entry back unless the loading succeeds, also when memory runs out.
class LoadingMark {
public:
    explicit LoadingMark(std::function<void()> takeBack) : takeBack_(std::move(takeBack)) {}
    LoadingMark(const LoadingMark&) = delete;
    LoadingMark& operator=(const LoadingMark&) = delete;
    ~LoadingMark() {
        if (takeBack_)
            takeBack_();
    }

    /// The loading succeeded: the entry stays.
    void Keep() { takeBack_ = nullptr; }

private:
    std::function<void()> takeBack_;
};

} // namespace Kor
