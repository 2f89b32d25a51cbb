#pragma once

namespace Kor {

class Object;

/// What it means that the host deletes an object. The object leaves its owner, all lists and all
/// registries at once; what instances have of it goes, with the events of a removal; and what
/// others still use of it goes with the last of them.
class HostDeletion {
public:
    /// Leaves alone what belongs to the library for good: the root template and the diagnostics.
    /// Throws std::bad_alloc before anything has changed.
    static void Delete(Object* object);
};

} // namespace Kor
