#include "instances/LivingInstances.h"

#include "instances/Instance.h"

namespace Kor {

std::vector<Instance*>& LivingInstances::All() {
    static auto& instances = *new std::vector<Instance*>(); // outlives all users at process exit
    return instances;
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
