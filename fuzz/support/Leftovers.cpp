#include "support/Leftovers.h"

#include "instances/AssetManager.h"
#include "instances/AttributeInstance.h"
#include "manager/TemplateManager.h"
#include "ovi/ovi.h"
#include "schema/AttributeProperty.h"
#include "schema/Command.h"
#include "schema/GeometryProperty.h"

using namespace Kor;

void Leftovers::TakeSchema() {
    const TemplateManager& manager = *TemplateManager::Get();
    for (int i = 0; i < manager.GetTemplateCount(); ++i) {
        for (const Property* property : manager.GetTemplateAt(i)->GetDeclaredProperties())
            TakeProperty(*property);
    }
    for (int i = 0; i < manager.GetLODCount(); ++i) {
        if (known_.insert(manager.GetLODAt(i)).second)
            taken_.push_back(manager.GetLODAt(i));
    }
    WalkInstances(0);
}

void Leftovers::TakeScene() {
    const size_t first = instances_.size();
    const AssetManager& assets = *AssetManager::Get();
    for (int i = 0; i < assets.GetAssetCount(); ++i)
        instances_.push_back(assets.GetAssetAt(i));
    WalkInstances(first);
}

void Leftovers::TakeProperty(const Property& property) {
    for (int i = 0; i < property.GetCommandCount(); ++i) {
        if (known_.insert(property.GetCommandAt(i)).second)
            taken_.push_back(property.GetCommandAt(i));
    }
    if (const auto* attribute = ObjectCast<AttributeProperty>(&property))
        TakeValues(*attribute);
    const auto* geometry = ObjectCast<GeometryProperty>(&property);
    for (int i = 0; geometry && i < geometry->GetAlternateCount(); ++i) {
        GeometryAlternate* alternate = geometry->GetAlternateAt(i);
        if (known_.insert(alternate).second)
            taken_.push_back(alternate);
        TakeValues(*alternate);
    }
}

void Leftovers::TakeValues(const AttributeProperty& attribute) {
    if (const Type* type = attribute.GetType()) {
        TakeBlock(*type, attribute.GetReadableDefault(type->GetDimension()));
        TakeBlock(*type, attribute.GetReadableMin());
        TakeBlock(*type, attribute.GetReadableMax());
    }
}

void Leftovers::TakeBlock(const Type& type, const void* block) {
    if (!block || !ObjectCast<Template>(type.GetStorageType()))
        return;
    for (int i = 0; i < type.GetDimension(); ++i)
        TakeInstance(static_cast<Instance* const*>(block)[i]);
}

void Leftovers::TakeInstance(Instance* instance) {
    if (!instance || !known_.insert(instance).second)
        return;
    taken_.push_back(instance);
    instances_.push_back(instance);
}

/// Looks into the instances from that one on; what is found joins the list.
void Leftovers::WalkInstances(size_t first) {
    for (size_t i = first; i < instances_.size(); ++i) {
        for (const PropertyInstance* member : instances_[i]->GetPropertyInstances()) {
            const auto* attribute = ObjectCast<AttributeInstance>(member);
            if (attribute && attribute->GetStoredValue() && attribute->HoldsInstances())
                TakeNested(*attribute);
        }
    }
}

void Leftovers::TakeNested(const AttributeInstance& attribute) {
    for (int i = 0; i < attribute.GetDimension(); ++i)
        TakeInstance(attribute.GetNestedInstance(i));
}

void Leftovers::Delete() {
    instances_.clear();
    known_.clear();
    for (Object* object : taken_)
        OviObject_Delete(reinterpret_cast<OviObject*>(object));
    taken_.clear();
}
