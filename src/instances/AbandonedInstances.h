#pragma once

#include <cstddef>
#include <vector>

namespace Kor {

class Instance;
class Template;

/// Instances whose values are gone while the host may still have their handles. They are kept in
/// reach, in no order, so that a schema that goes can take its links away from them.
class AbandonedInstances {
public:
    /// Makes room for as many as there are instances at all: values go where nobody could be told
    /// that there is no memory to remember theirs.
    static void MakeRoomFor(size_t instances);

    /// Gives back room that this many instances do not need. Where there is no memory for less, the
    /// room stays.
    static void GiveBackRoom(size_t instances) noexcept;

    /// Gives the place, one past the index, which the instance keeps.
    static unsigned Add(Instance& instance);

    /// Another instance may move to the place.
    static void Remove(unsigned place) noexcept;

    /// Takes templates and property instances away from those that have any of a template that is
    /// leaving. `looked` says how many were looked at before and need not be again, since they have
    /// none. Gives the templates that they used.
    static std::vector<Template*> Strip(size_t& looked);

private:
    static std::vector<Instance*>& All();
};

} // namespace Kor
