#pragma once

namespace Kor {

/// Who frees an object, apart from the enumeration that has it as an item and the template that has
/// it as a property: those are known by their pointers. There is never more than one.
enum class Owner : unsigned char {
    kHost,        ///< Whoever made it or took it out of a registry.
    kRegistry,    ///< The manager that has it in a registry.
    kManager,     ///< The manager, although another object took its place in the registry.
    kEndedSchema, ///< What is left of a manager that is gone, until nothing uses it any more.
    kUsers,       ///< Those who use it: the last of them ends it.
};

} // namespace Kor
