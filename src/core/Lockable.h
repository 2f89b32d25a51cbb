#pragma once

namespace Kor {

/// A lock state that the library keeps for hosts; it attaches no meaning to particular values.
class Lockable {
public:
    Lockable() = default;
    virtual ~Lockable() = default;
    Lockable& operator=(const Lockable&) = delete;

    int GetLockState() const { return lockState_; }
    virtual void SetLockState(int state) { lockState_ = state; }

protected:
    Lockable(const Lockable&) = default;

private:
    int lockState_ = 0;
};

} // namespace Kor
