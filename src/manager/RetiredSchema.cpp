#include "manager/RetiredSchema.h"

#include <algorithm>
#include <new>
#include <utility>

#include "core/Ending.h"
#include "manager/TypeGroup.h"

// Who still needs a schema is known where instances live.
#include "instances/AbandonedInstances.h"
#include "instances/Instance.h"

namespace Kor {

namespace {

/// The first of those that wait.
RetiredSchema* waiting = nullptr;

template <class T> std::vector<Type*> FromLastToFirst(const ObjectRegistry<T>& registry) {
    const std::vector<T*> all = registry.Snapshot();
    return {all.rbegin(), all.rend()};
}

void Append(std::vector<Type*>& all, const std::vector<Type*>& more) {
    all.insert(all.end(), more.begin(), more.end());
}

/// Instances inside of values that are still there are those of properties that the host holds.
bool IsUsedByInstances(const std::vector<Template*>& templates) {
    return std::any_of(templates.begin(), templates.end(),
                       [](const Template* definition) { return definition->IsUsedByInstances(); });
}

} // namespace

void RetiredSchema::TakeOver(ObjectRegistry<Template> templates,
                             ObjectRegistry<Enumeration> enumerations, ObjectRegistry<Type> types,
                             std::unordered_set<Type*> displaced) noexcept {
    const auto leave = [](Type* type) { type->SetOwner(Owner::kEndedSchema); };
    templates.ForEach(leave);
    enumerations.ForEach(leave);
    types.ForEach(leave);
    std::for_each(displaced.begin(), displaced.end(), leave);
    templates_ = std::move(templates);
    enumerations_ = std::move(enumerations);
    types_ = std::move(types);
    displaced_ = std::move(displaced);
}

void RetiredSchema::Retire(std::unique_ptr<RetiredSchema> schema) noexcept {
    Wait(std::move(schema));
    Release();
}

void RetiredSchema::Forget(Type& type) noexcept {
    for (RetiredSchema* schema = waiting; schema; schema = schema->next_)
        schema->Drop(type);
    type.SetOwner(Owner::kHost);
}

void RetiredSchema::Drop(Type& type) noexcept {
    displaced_.erase(&type);
    if (auto* definition = ObjectCast<Template>(&type))
        templates_.RemoveExactly(definition);
    else if (auto* enumeration = ObjectCast<Enumeration>(&type))
        enumerations_.RemoveExactly(enumeration);
    else
        types_.RemoveExactly(&type);
}

void RetiredSchema::Wait(std::unique_ptr<RetiredSchema> schema) noexcept {
    schema->next_ = waiting;
    waiting = schema.release();
}

void RetiredSchema::Release() noexcept {
    if (Instance::CountFreeStanding() > 0)
        return;
    RetiredSchema* next = std::exchange(waiting, nullptr);
    while (next) {
        std::unique_ptr<RetiredSchema> schema(next);
        next = schema->next_;
        if (!schema->TryToDelete())
            Wait(std::move(schema));
    }
}

/// False where it is still needed, or without memory: all is still there then, perhaps with fewer
/// links.
bool RetiredSchema::TryToDelete() noexcept {
    try {
        return Delete();
    } catch (const std::bad_alloc&) {
        return false;
    }
}

/// All objects: templates, enumerations, plain types, each from the last to the first.
std::vector<Type*> RetiredSchema::Collect() const {
    std::vector<Type*> templates;
    std::vector<Type*> enumerations;
    std::vector<Type*> types;
    for (Type* type : displaced_) {
        const bool isEnumeration = ObjectCast<Enumeration>(type) != nullptr;
        (ObjectCast<Template>(type) ? templates
         : isEnumeration            ? enumerations
                                    : types)
            .push_back(type);
    }
    Append(templates, FromLastToFirst(templates_));
    Append(templates, enumerations);
    Append(templates, FromLastToFirst(enumerations_));
    Append(templates, types);
    Append(templates, FromLastToFirst(types_));
    return templates;
}

/// First all links are taken away, then everything is deleted. Types whose values or properties the
/// host still holds go with the last of those.
bool RetiredSchema::Delete() {
    const std::vector<Type*> all = Collect();
    std::vector<Template*> templates;
    for (Type* type : all) {
        if (auto* definition = ObjectCast<Template>(type))
            templates.push_back(definition);
    }
    size_t looked = 0;
    AbandonedInstances::Strip(looked);
    // Default values may hold instances, which refer to properties of any of the templates: they
    // let go of these before the first property is deleted.
    for (Template* definition : templates)
        definition->DropValues();
    AbandonedInstances::Strip(looked);
    if (IsUsedByInstances(templates))
        return false;
    Template::SortForClearing(templates);
    for (Template* type : templates)
        type->Clear(nullptr);
    AbandonedInstances::Strip(looked);
    TypeGroup group(all);
    group.KeepUsed();
    const std::vector<Type*> kept = group.Select(true);
    const std::vector<Type*> leaving = group.Select(false);
    for (Type* type : kept)
        type->SetOwner(Owner::kHost);
    TypeGroup::LeaveToUsers(kept); // nothing from here on needs memory
    TypeGroup::Delete(leaving);
    return true;
}

} // namespace Kor
