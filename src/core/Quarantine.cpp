#include "core/Quarantine.h"

namespace Kor {

DeadObject* Quarantine::Put(DeadObject* dead) noexcept {
    dead->link = kNone;
    (count_ > 0 ? newest_->link : oldest_) = reinterpret_cast<std::uintptr_t>(dead) + 1;
    newest_ = dead;
    ++count_;
    return count_ > kCapacity ? TakeOldest() : nullptr;
}

DeadObject* Quarantine::TakeOldest() noexcept {
    if (count_ == 0)
        return nullptr;
    auto* dead = reinterpret_cast<DeadObject*>(oldest_ - 1);
    oldest_ = dead->link;
    --count_;
    return dead;
}

} // namespace Kor
