#include "instances/LivingInstances.h"

#include <new>

#include "core/Kept.h"
#include "instances/Instance.h"

namespace Kor {

namespace {

constexpr size_t kLittle = 1024; // entries that are not worth giving back

} // namespace

std::vector<Instance*>& LivingInstances::All() {
    static NeverDestroyed<std::vector<Instance*>> kept; // outlives all users at process exit
    static const EmptiedAtEnd<std::vector<Instance*>> emptied(kept.Get());
    return kept.Get();
}

unsigned LivingInstances::Add(Instance& instance) {
    auto& all = All();
    all.push_back(&instance);
    return static_cast<unsigned>(all.size() - 1);
}

/// No other instance is touched, which would have to be fetched for it.
void LivingInstances::Remove(unsigned place) noexcept {
    auto& all = All();
    all[place] = nullptr;
    ++gaps_;
    while (!all.empty() && !all.back()) {
        all.pop_back();
        --gaps_;
    }
    if (gaps_ > all.size() / 2)
        CloseGaps();
    if (all.capacity() > kLittle && all.size() < all.capacity() / 8)
        GiveRoomBack();
}

/// One instance must not keep the room for all that there were. Where there is no memory for less,
/// the room stays.
void LivingInstances::GiveRoomBack() noexcept {
    try {
        std::vector<Instance*> fewer(All());
        All().swap(fewer);
    } catch (const std::bad_alloc&) {
        return;
    }
}

void LivingInstances::CloseGaps() noexcept {
    auto& all = All();
    size_t kept = 0;
    for (Instance* instance : all) {
        if (!instance)
            continue;
        instance->SetLivingPlace(static_cast<unsigned>(kept));
        all[kept++] = instance;
    }
    all.resize(kept);
    gaps_ = 0;
}

} // namespace Kor
