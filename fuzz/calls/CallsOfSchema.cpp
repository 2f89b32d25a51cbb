// Calls of the functions for templates, properties, geometry and views.

#include <algorithm>

#include "calls/CallTable.h"
#include "calls/ValueBlock.h"
#include "schema/AttributeProperty.h"
#include "schema/Template.h"

using namespace Kor;

namespace {

constexpr unsigned kChanges = 0;

template <class Handle> Handle* To(Object* object) {
    return reinterpret_cast<Handle*>(object);
}

bool Declares(const Template& definition, const Property& property) {
    const auto& declared = definition.GetDeclaredProperties();
    return std::find(declared.begin(), declared.end(), &property) != declared.end();
}

/// The template owns the property when it took it and the versions are equal. The result does not
/// tell: -1 stands for a refusal and for the first place of which an older definition gave way.
void AddProperty(World& world) {
    auto* owner = Argument<OviTemplate*>::Take(world);
    auto* added = Argument<OviProperty*>::Take(world);
    const auto* definition = ObjectCast<Template>(reinterpret_cast<Object*>(owner));
    const auto* property = ObjectCast<Property>(reinterpret_cast<Object*>(added));
    OviTemplate_AddProperty(owner, added, world.PickInt());
    if (World::IsAlive(definition) && World::IsAlive(property) &&
        property->GetOwner() == definition && Declares(*definition, *property))
        world.Disown(property);
}

/// Whether a template still declares the property that deletes it at its own end.
bool IsOwnedByATemplate(const Property& property) {
    const auto& holders = property.GetHolders();
    return std::any_of(holders.begin(), holders.end(), [&](const Template* holder) {
        const bool isOwner = property.GetOwner() == holder || property.GetKeeper() == holder;
        return isOwner && Declares(*holder, property);
    });
}

/// A property that the template only shares with a lower version stays that one's, and one that
/// another template owns as well is that one's.
void RemoveProperty(World& world) {
    auto* owner = Argument<OviTemplate*>::Take(world);
    auto* removed = Argument<OviProperty*>::Take(world);
    const auto* property = ObjectCast<Property>(reinterpret_cast<Object*>(removed));
    const bool wasOwned = property && IsOwnedByATemplate(*property);
    OviTemplate_RemoveProperty(owner, removed);
    if (wasOwned && World::IsAlive(property) && !IsOwnedByATemplate(*property))
        world.Own(removed);
}

// -- values of properties -------------------------------------------------------------------------

using Setter = void (*)(OviAttributeProperty*, void*);

/// The property takes the block over.
void SetPropertyValue(World& world, Setter set) {
    auto* property = world.Pick<AttributeProperty>();
    const bool toNull = world.GetInput().TakeByte() % 8 == 0;
    if (!property || !property->GetType() || toNull) {
        set(Argument<OviAttributeProperty*>::Take(world), nullptr);
        return;
    }
    ValueBlock value(world, *property->GetType(), property->GetType()->GetDimension());
    if (!World::IsAlive(property))
        return; // a callback of an instance that was made as an element ended it
    set(To<OviAttributeProperty>(property), value.HandOver());
}

void SetDefaultValue(World& world) {
    SetPropertyValue(world, &OviAttributeProperty_SetDefaultValue);
}

void SetMinValue(World& world) {
    SetPropertyValue(world, &OviAttributeProperty_SetMinValue);
}

void SetMaxValue(World& world) {
    SetPropertyValue(world, &OviAttributeProperty_SetMaxValue);
}

void IsValueValid(World& world) {
    auto* property = world.Pick<AttributeProperty>();
    if (!property || !property->GetType())
        return;
    const ValueBlock value(world, *property->GetType());
    if (World::IsAlive(property))
        OviAttributeProperty_IsValueValid(To<OviAttributeProperty>(property), value.Get());
}

void GetCompatibleAnchors(World& world) {
    auto* anchor = Argument<OviAnchorProperty*>::Take(world);
    const int capacity = world.PickCount();
    std::vector<OviPropertyInstance*> found(static_cast<size_t>(std::max(capacity, 0)));
    const int count = OviAnchorProperty_GetCompatibleAnchors(
        anchor, capacity, found.empty() ? nullptr : found.data());
    for (int i = 0; i < std::min(count, capacity); ++i)
        Look(found[static_cast<size_t>(i)]);
}

void NewViewProperty(World& world) {
    const char* name = world.PickText();
    world.Own(OviViewProperty_New(name, Argument<OviProperty*>::Take(world)));
}

} // namespace

std::vector<Call> CallsOfSchema() {
    return {
        OVI_READS(OviTemplate_GetVersion),
        OVI_READS(OviTemplate_GetLatestVersion),
        OVI_CHANGES(OviTemplate_AddParent),
        OVI_CHANGES(OviTemplate_RemoveParent),
        OVI_READS(OviTemplate_GetParentCount),
        OVI_READS(OviTemplate_GetParentAt),
        OVI_READS(OviTemplate_GetParent),
        OVI_READS(OviTemplate_GetChildCount),
        OVI_READS(OviTemplate_GetChildAt),
        OVI_READS(OviTemplate_GetChild),
        OVI_READS(OviTemplate_IsChildOf),
        OVI_READS(OviTemplate_IsDescendantOf),
        OVI_SPECIAL(OviTemplate_AddProperty, AddProperty, kChanges),
        OVI_SPECIAL(OviTemplate_RemoveProperty, RemoveProperty, Call::kDrastic),
        OVI_READS(OviTemplate_GetPropertyCount),
        OVI_READS(OviTemplate_GetPropertyAt),
        OVI_READS(OviTemplate_GetProperty),
        OVI_CHANGES(OviTemplate_CreateView),
        OVI_CHANGES(OviTemplate_AddView),
        OVI_CHANGES(OviTemplate_RemoveView),
        OVI_READS(OviTemplate_GetViewCount),
        OVI_READS(OviTemplate_GetViewAt),
        OVI_READS(OviTemplate_GetView),

        OVI_READS(OviProperty_GetFullName),
        OVI_READS(OviProperty_GetTemplate),
        OVI_CHANGES(OviProperty_AddCommand),
        OVI_CHANGES(OviProperty_RemoveCommand),
        OVI_READS(OviProperty_GetCommandCount),
        OVI_READS(OviProperty_GetCommandAt),

        OVI_MAKES(OviAttributeProperty_New),
        OVI_READS(OviAttributeProperty_GetType),
        OVI_CHANGES(OviAttributeProperty_SetType),
        OVI_READS(OviAttributeProperty_GetDefaultValue),
        OVI_SPECIAL(OviAttributeProperty_SetDefaultValue, SetDefaultValue, kChanges),
        OVI_READS(OviAttributeProperty_GetMinValue),
        OVI_SPECIAL(OviAttributeProperty_SetMinValue, SetMinValue, kChanges),
        OVI_READS(OviAttributeProperty_GetMaxValue),
        OVI_SPECIAL(OviAttributeProperty_SetMaxValue, SetMaxValue, kChanges),
        OVI_SPECIAL(OviAttributeProperty_IsValueValid, IsValueValid, kChanges),
        OVI_READS(OviAttributeProperty_IsReference),
        OVI_CHANGES(OviAttributeProperty_SetReference),
        OVI_READS(OviAttributeProperty_GetAutoBind),
        OVI_CHANGES(OviAttributeProperty_SetAutoBind),

        OVI_MAKES(OviNodeProperty_New),
        OVI_READS(OviNodeProperty_GetAncestor),
        OVI_CHANGES(OviNodeProperty_SetAncestor),
        OVI_READS(OviNodeProperty_GetAncestorDistance),
        OVI_CHANGES(OviNodeProperty_SetAncestorDistance),
        OVI_MAKES(OviAnchorProperty_New),
        OVI_READS(OviAnchorProperty_IsChild),
        OVI_CHANGES(OviAnchorProperty_SetChild),
        OVI_CHANGES(OviAnchorProperty_AddAnchorType),
        OVI_CHANGES(OviAnchorProperty_RemoveAnchorType),
        OVI_READS(OviAnchorProperty_GetAnchorTypeCount),
        OVI_READS(OviAnchorProperty_GetAnchorTypeAt),
        OVI_READS(OviAnchorProperty_GetAnchorType),
        OVI_SPECIAL(OviAnchorProperty_GetCompatibleAnchors, GetCompatibleAnchors, kChanges),

        OVI_READS(OviLOD_GetType),
        OVI_CHANGES(OviLOD_SetType),
        OVI_READS(OviLOD_GetTypeName),
        OVI_READS(OviLOD_GetThreshold),
        OVI_CHANGES(OviLOD_SetThreshold),
        OVI_READS(OviLOD_GetMaxShapes),
        OVI_CHANGES(OviLOD_SetMaxShapes),
        OVI_CHANGES(OviLOD_AllowShape),
        OVI_CHANGES(OviLOD_DisallowShape),
        OVI_READS(OviLOD_IsShapeAllowed),
        OVI_READS(OviLOD_GetAllowedShapeNames),
        OVI_MAKES(OviGeometryProperty_New),
        OVI_CHANGES(OviGeometryProperty_AddAlternate),
        OVI_ROW(OviGeometryProperty_RemoveAlternate, Call::kDrastic),
        OVI_READS(OviGeometryProperty_GetAlternateCount),
        OVI_READS(OviGeometryProperty_GetAlternateAt),
        OVI_READS(OviGeometryProperty_GetAlternate),
        OVI_READS(OviGeometryAlternate_GetLOD),
        OVI_CHANGES(OviGeometryAlternate_SetLOD),

        OVI_MAKES(OviGroup_New),
        OVI_CHANGES(OviGroup_AddViewItemAt),
        OVI_CHANGES(OviGroup_RemoveViewItemAt),
        OVI_READS(OviGroup_GetViewItemCount),
        OVI_READS(OviGroup_GetViewItemAt),
        OVI_SPECIAL(OviViewProperty_New, NewViewProperty, kChanges),
        OVI_READS(OviViewProperty_GetProperty),
        OVI_CHANGES(OviViewProperty_SetProperty),
    };
}
