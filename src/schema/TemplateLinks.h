#pragma once

#include "schema/Template.h"

namespace Kor {

/// Calls a function with each parent, those that another one of their key replaced included. The
/// parents must not change meanwhile.
template <class Body> void Template::ForEachParent(const Body& body) const {
    for (Template* parent : parents_)
        body(parent);
    for (Template* parent : formerParents_)
        body(parent);
}

/// The same for the children, those that are not shown included and first.
template <class Body> void Template::ForEachChild(const Body& body) const {
    for (Template* child : unlistedChildren_)
        body(child);
    children_.ForEach(body);
}

} // namespace Kor
