#include "calls/Objects.h"

#include "core/ErrorItem.h"
#include "core/ErrorManager.h"
#include "instances/AssetManager.h"
#include "instances/AttributeInstance.h"
#include "instances/GeometryInstance.h"
#include "manager/TemplateManager.h"
#include "schema/AttributeProperty.h"
#include "schema/Command.h"
#include "schema/GeometryProperty.h"
#include "schema/ViewProperty.h"

using namespace Kor;

namespace {

/// Calls may make ever more objects; some thousands are enough to choose from.
constexpr size_t kMaxObjects = 3000;
constexpr int kMaxErrorItems = 4;

} // namespace

void Objects::Collect(const std::vector<Object*>& roots) {
    all_.clear();
    known_.clear();
    byClass_.clear();
    AddManagers();
    for (const Object* root : roots)
        Add(root);
    for (size_t i = 0; i < all_.size() && i < kMaxObjects; ++i)
        Follow(*all_[i]);
}

const std::vector<Object*>& Objects::Get(int classId) {
    const auto [found, isNew] = byClass_.try_emplace(classId);
    for (size_t i = 0; isNew && i < all_.size(); ++i) {
        if (all_[i]->ImplementsClass(classId))
            found->second.push_back(all_[i]);
    }
    return found->second;
}

void Objects::Add(const Object* object) {
    if (object && known_.insert(object).second)
        all_.push_back(const_cast<Object*>(object));
}

/// Adds a part of the schema as if the host had asked for it.
template <class Part> void Objects::AddKnown(Part* part) {
    if (part)
        part->BecomeKnown();
    Add(part);
}

void Objects::AddManagers() {
    const TemplateManager& manager = *TemplateManager::Get();
    for (int i = manager.GetTemplateCount(); i-- > 0;)
        Add(manager.GetTemplateAt(i));
    for (int i = 0; i < manager.GetEnumerationCount(); ++i)
        Add(manager.GetEnumerationAt(i));
    for (int i = 0; i < manager.GetTypeCount(); ++i)
        Add(manager.GetTypeAt(i));
    for (int i = 0; i < manager.GetLODCount(); ++i)
        AddKnown(manager.GetLODAt(i));
    for (int i = 0; i < manager.GetAnchorTypeCount(); ++i)
        Add(manager.GetAnchorTypeAt(i));
    const AssetManager& assets = *AssetManager::Get();
    for (int i = 0; i < assets.GetAssetCount(); ++i)
        Add(assets.GetAssetAt(i));
    for (int i = 0; i < kMaxErrorItems; ++i)
        Add(ErrorManager::Get()->GetErrorItemAt(i));
}

void Objects::Follow(Object& object) {
    if (auto* type = ObjectCast<Type>(&object))
        FollowType(*type);
    if (auto* property = ObjectCast<Property>(&object))
        FollowProperty(*property);
    if (const auto* group = ObjectCast<Group>(&object))
        FollowGroup(*group);
    if (const auto* view = ObjectCast<ViewProperty>(&object))
        Add(view->GetProperty());
    if (const auto* instance = ObjectCast<Instance>(&object))
        FollowInstance(*instance);
    if (const auto* member = ObjectCast<PropertyInstance>(&object))
        FollowMember(*member);
}

void Objects::FollowType(Type& type) {
    Add(type.GetBaseType());
    if (const auto* definition = ObjectCast<Template>(&type))
        FollowTemplate(*definition);
    const auto* enumeration = ObjectCast<Enumeration>(&type);
    for (int i = 0; enumeration && i < enumeration->GetItemCount(); ++i)
        Add(enumeration->GetItemAt(i));
}

void Objects::FollowTemplate(const Template& definition) {
    for (const Template* parent : definition.GetParents())
        Add(parent);
    for (int i = 0; i < definition.GetChildCount(); ++i)
        Add(definition.GetChildAt(i));
    for (const Property* property : definition.GetDeclaredProperties())
        Add(property);
    for (int i = 0; i < definition.GetViews().GetCount(); ++i)
        Add(definition.GetViews().GetAt(i));
}

void Objects::FollowProperty(Property& property) {
    for (int i = 0; i < property.GetCommandCount(); ++i)
        AddKnown(property.GetCommandAt(i));
    if (const auto* attribute = ObjectCast<AttributeProperty>(&property))
        Add(attribute->GetType());
    const auto* geometry = ObjectCast<GeometryProperty>(&property);
    for (int i = 0; geometry && i < geometry->GetAlternateCount(); ++i)
        AddKnown(geometry->GetAlternateAt(i));
    if (const auto* alternate = ObjectCast<GeometryAlternate>(&property))
        AddKnown(alternate->GetLOD());
}

void Objects::FollowGroup(const Group& group) {
    for (int i = 0; i < group.GetViewItemCount(); ++i)
        Add(group.GetViewItemAt(i));
}

void Objects::FollowInstance(const Instance& instance) {
    for (int i = 0; i < instance.GetTemplateCount(); ++i)
        Add(instance.GetTemplateAt(i));
    for (const PropertyInstance* member : instance.GetPropertyInstances())
        Add(member);
}

void Objects::FollowMember(const PropertyInstance& member) {
    Add(member.GetProperty());
    AddKnown(ObjectCast<GeometryAlternate>(member.GetProperty()));
    if (const auto* attribute = ObjectCast<AttributeInstance>(&member))
        FollowAttribute(*attribute);
    const auto* geometry = ObjectCast<GeometryInstance>(&member);
    for (int i = 0; geometry && i < geometry->GetNodeInstanceCount(); ++i)
        Add(geometry->GetNodeInstanceAt(i));
}

void Objects::FollowAttribute(const AttributeInstance& attribute) {
    if (!attribute.GetStoredValue() || !attribute.HoldsInstances())
        return;
    for (int i = 0; i < attribute.GetDimension(); ++i)
        Add(attribute.GetNestedInstance(i));
}
