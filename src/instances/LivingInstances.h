#pragma once

#include <cstddef>
#include <vector>

namespace Kor {

class Instance;

/// All instances alive: those of the scene, of values, and of the host. Few ask for them, so that
/// coming and going costs next to nothing, and going no memory.
class LivingInstances {
public:
    /// Gives the place, which the instance keeps.
    static unsigned Add(Instance& instance);
    static void Remove(unsigned place) noexcept;

    /// Calls a function with each. No instance may come or go meanwhile.
    template <class Body> static void ForEach(const Body& body) {
        for (Instance* instance : All()) {
            if (instance)
                body(*instance);
        }
    }

private:
    static std::vector<Instance*>& All();
    static void CloseGaps() noexcept;
    static void GiveRoomBack() noexcept;

    static inline size_t gaps_ = 0; // places of those that are gone
};

} // namespace Kor
