#pragma once

namespace Kor {

/// What outlives all users, whatever the order in which a process ends: it is never destroyed.
template <class T> class NeverDestroyed {
public:
    NeverDestroyed() : value_() {}
    // The end of the value is left out. NOLINTNEXTLINE(modernize-use-equals-default)
    ~NeverDestroyed() {}
    NeverDestroyed(const NeverDestroyed&) = delete;
    NeverDestroyed& operator=(const NeverDestroyed&) = delete;

    T& Get() { return value_; }

private:
    union {
        T value_;
    };
};

/// Gives the memory of something that is kept back when the library goes, unless it still holds
/// anything. It stays usable: the objects of a host may end after the library's.
template <class T> class EmptiedAtEnd {
public:
    explicit EmptiedAtEnd(T& kept) : kept_(kept) {}
    EmptiedAtEnd(const EmptiedAtEnd&) = delete;
    EmptiedAtEnd& operator=(const EmptiedAtEnd&) = delete;
    ~EmptiedAtEnd() {
        if (kept_.empty())
            T().swap(kept_);
    }

private:
    T& kept_;
};

} // namespace Kor
