#pragma once

#include <vector>

namespace Kor {

class Property;
class Template;

/// One step of writing a template: a property that a version introduces, or a parent of it.
struct VersionStep {
    const Template* version;
    const Property* property; ///< Null: the parent.
    const Template* parent;
    bool isKnown; ///< A parent that is there already, without which the version would not be made.
};

/// The steps by which a reader builds the same versions: for each version its parents, then its
/// properties in declaration order. What was added to a lower version while a later one existed is
/// the same object in both, while what was there before was copied: there the steps follow the
/// order in which all of it happened. `origin` is the template that a reader makes the first
/// version from, or null: what that has is there already.
std::vector<VersionStep> OrderVersionSteps(const std::vector<const Template*>& versions,
                                           const Template* origin);

} // namespace Kor
