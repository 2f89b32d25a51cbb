#pragma once

#include <cstdint>

#include "core/SmallStack.h"
#include "schema/Template.h"

namespace Kor {

/// Numbers the walks over the template graph, so that templates can remember the last that met
/// them: each is visited once, however many paths of inheritance lead to it.
std::uint64_t NextTemplateWalk();

/// Visits the template and then its ancestors, parents in key order, depth first, each once. The
/// visitor returns true to end the walk; the result tells whether it did. Visitors must not start
/// walks of their own.
template <class Visitor> bool WalkAncestors(const Template* start, Visitor&& visitor) {
    const std::uint64_t walk = NextTemplateWalk();
    SmallStack<const Template*> pending;
    pending.Push(start);
    while (!pending.IsEmpty()) {
        const Template* current = pending.Pop();
        if (!current->Visit(walk))
            continue;
        if (visitor(*current))
            return true;
        for (int i = current->GetParentCount() - 1; i >= 0; --i)
            pending.Push(current->GetParentAt(i));
    }
    return false;
}

/// Visits the ancestors before the template: for each template first its parents in key order,
/// recursively, then itself; each once.
template <class Visitor> void WalkFromRoots(const Template* start, Visitor&& visitor) {
    struct Step {
        const Template* current;
        int nextParent;
    };
    const std::uint64_t walk = NextTemplateWalk();
    SmallStack<Step> path;
    start->Visit(walk);
    path.Push({start, 0});
    while (!path.IsEmpty()) {
        const Step step = path.Pop();
        if (step.nextParent == step.current->GetParentCount()) {
            visitor(*step.current);
            continue;
        }
        path.Push({step.current, step.nextParent + 1});
        const Template* parent = step.current->GetParentAt(step.nextParent);
        if (parent->Visit(walk))
            path.Push({parent, 0});
    }
}

} // namespace Kor
