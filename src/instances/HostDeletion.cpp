#include "instances/HostDeletion.h"

#include <unordered_set>
#include <vector>

#include "core/Ending.h"
#include "core/ErrorItem.h"
#include "instances/Instance.h"
#include "instances/LivingInstances.h"
#include "manager/RetiredSchema.h"
#include "manager/TemplateManager.h"
#include "schema/AttributeProperty.h"
#include "types/TypedValue.h"

namespace Kor {

namespace {

using Properties = std::unordered_set<const Property*>;

bool IsTheLibrarys(const Object* object) {
    const bool isRoot = TemplateManager::Exists() && object == TemplateManager::Get()->GetRoot();
    return isRoot || ObjectCast<ErrorItem>(object); // what everything falls back to; shared items
}

/// The properties that end with the object.
Properties CollectProperties(const NamedObject& object) {
    Properties ending;
    if (const auto* property = ObjectCast<Property>(&object))
        ending.insert(property);
    const auto* definition = ObjectCast<Template>(&object);
    if (!definition)
        return ending;
    definition->ForEachMade([&](const Property& property) {
        if (property.GetOwner() == definition || property.GetKeeper() == definition)
            ending.insert(&property);
    });
    return ending;
}

/// Their values may hold instances of what ends, which would keep it in use.
void DropValues(const Properties& ending) {
    for (const Property* property : ending) {
        if (const auto* attribute = ObjectCast<AttributeProperty>(property))
            const_cast<AttributeProperty*>(attribute)->DropValues();
    }
}

std::vector<Instance*> CollectUsers(const Template* definition, const Properties& ending) {
    std::vector<Instance*> users;
    LivingInstances::ForEach([&](Instance& instance) {
        if (instance.HasAnyOf(definition, ending))
            users.push_back(&instance);
    });
    return users;
}

bool IsUsedByInstances(const NamedObject& object) {
    const auto* definition = ObjectCast<Template>(&object);
    const auto* property = ObjectCast<Property>(&object);
    return (definition && definition->IsUsedByInstances()) || (property && property->IsInUse());
}

/// Nothing is freed meanwhile: callbacks hear of what ends, and may end more.
void DeleteUsed(NamedObject& object) {
    const Properties ending = CollectProperties(object);
    DropValues(ending);
    const auto* definition = ObjectCast<Template>(&object);
    const std::vector<Instance*> users = CollectUsers(definition, ending);
    const Ending::Deferral deferral;
    Ending::End(&object);
    for (Instance* user : users) {
        if (!user->HasEnded())
            user->DropEnded(definition, ending);
    }
}

} // namespace

void HostDeletion::Delete(Object* object) {
    if (IsTheLibrarys(object))
        return;
    auto* named = ObjectCast<NamedObject>(object);
    auto* definition = ObjectCast<Template>(object);
    if (definition && TemplateManager::Exists()) // first of all, since it may need memory
        definition->ShareChildren(TemplateManager::Get()->GetRoot());
    const auto* instance = ObjectCast<Instance>(object);
    if (instance && instance->IsValueElement() && !instance->GetHolder())
        TypedValue::ForgetElement(instance); // which may be the default value of a property
    if (!named)
        delete object;
    else if (IsUsedByInstances(*named))
        DeleteUsed(*named);
    else
        Ending::End(named);
    RetiredSchema::Release();
}

} // namespace Kor
