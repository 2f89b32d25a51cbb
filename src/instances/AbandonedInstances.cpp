#include "instances/AbandonedInstances.h"

#include <algorithm>
#include <new>

#include "core/Kept.h"
#include "instances/Instance.h"

namespace Kor {

std::vector<Instance*>& AbandonedInstances::All() {
    static NeverDestroyed<std::vector<Instance*>> instances;
    static const EmptiedAtEnd<std::vector<Instance*>> emptied(instances.Get());
    return instances.Get();
}

void AbandonedInstances::MakeRoomFor(size_t instances) {
    auto& all = All();
    if (all.capacity() <= instances)
        all.reserve(2 * instances + 1);
}

void AbandonedInstances::GiveBackRoom(size_t instances) noexcept {
    constexpr size_t kLittle = 1024;
    auto& all = All();
    if (all.capacity() < kLittle || instances >= all.capacity() / 8)
        return;
    try {
        std::vector<Instance*> fewer;
        fewer.reserve(2 * instances + 1);
        fewer.insert(fewer.end(), all.begin(), all.end());
        all.swap(fewer);
    } catch (const std::bad_alloc&) {
        return;
    }
}

unsigned AbandonedInstances::Add(Instance& instance) {
    All().push_back(&instance);
    return static_cast<unsigned>(All().size());
}

/// The last one takes the place, so that no other has to move.
void AbandonedInstances::Remove(unsigned place) noexcept {
    auto& all = All();
    Instance* last = all.back();
    all[place - 1] = last;
    last->SetAbandonedPlace(place);
    all.pop_back();
}

/// Stripping an instance abandons those nested in its values, which then follow in the same loop.
std::vector<Template*> AbandonedInstances::Strip(size_t& looked) {
    std::vector<Template*> released;
    const auto& all = All();
    looked = std::min(looked, all.size());
    while (looked < all.size()) {
        Instance* instance = all[looked];
        if (instance->UsesLeavingTemplates())
            instance->LetGoOfSchema(released); // and the last one takes its place
        else
            ++looked;
    }
    std::sort(released.begin(), released.end());
    released.erase(std::unique(released.begin(), released.end()), released.end());
    return released;
}

} // namespace Kor
