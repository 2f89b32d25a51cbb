#include "manager/OuterReferences.h"

#include <algorithm>

#include "manager/TemplateManager.h"
#include "schema/TemplateWalk.h"

namespace Kor {

OuterReferences::OuterReferences(const TemplateManager& manager,
                                 const std::vector<Type*>& definitions)
    : definitions_(definitions.begin(), definitions.end()), walk_(NextTemplateWalk()) {
    const bool anyUsed = std::any_of(definitions.begin(), definitions.end(),
                                     [](const Type* type) { return type->IsInUse(); });
    if (!anyUsed) // which spares the walk through the whole schema
        return;
    const auto meet = [this](const Type* type) {
        if (definitions_.count(type) == 0)
            Meet(type);
    };
    manager.ForEachType(meet);
    while (!pending_.empty()) {
        const Type* type = pending_.back();
        pending_.pop_back();
        if (definitions_.count(type->GetBaseType()) > 0) // it refers no further
            found_.insert(type->GetBaseType());
        if (const auto* definition = ObjectCast<Template>(type))
            MeetContents(*definition);
    }
}

/// The file's own definitions are found, but what they refer to does not count.
void OuterReferences::Meet(const Type* type) {
    if (definitions_.count(type) > 0)
        found_.insert(type);
    else if (met_.insert(type).second)
        pending_.push_back(type);
}

void OuterReferences::MeetContents(const Template& definition) {
    for (const Template* parent : definition.GetParents())
        Meet(parent);
    definition.VisitProperties(walk_, [this](const Property& property) {
        if (const Type* type = property.GetContainedType())
            Meet(type);
    });
}

} // namespace Kor
