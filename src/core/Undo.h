#pragma once

#include <utility>

namespace Kor {

/// Takes a step back at its end, unless what followed went well too. The body must not throw.
template <class Body> class Undo {
public:
    explicit Undo(Body body) : body_(std::move(body)) {}
    Undo(const Undo&) = delete;
    Undo& operator=(const Undo&) = delete;
    ~Undo() {
        if (!committed_)
            body_();
    }

    /// The step stays.
    void Commit() { committed_ = true; }

private:
    Body body_;
    bool committed_ = false;
};

} // namespace Kor
