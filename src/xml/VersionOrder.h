#pragma once

#include <vector>

namespace Kor {

class Property;
class Template;

/// One step of writing a template: the parents that a version introduces, or one property of it.
struct VersionStep {
    const Template* version;
    const Template* lower;    ///< The version below it, or null.
    const Property* property; ///< Null: the parents.
    bool writesKnownParent;   ///< Without this the version would come into being nowhere.
};

/// The steps by which a reader builds the same versions. Usually version after version; but a
/// property that was added to a lower version after a later one existed is the same object in
/// both, while one added before was copied, so the steps must follow the order of that history.
std::vector<VersionStep> OrderVersionSteps(const std::vector<const Template*>& versions);

/// The parents that a version has and the version below it lacks; never the root.
std::vector<Template*> GetIntroducedParents(const Template& version, const Template* lower);

} // namespace Kor
