// Calls of the functions for instances, property instances, assets and the scene.

#include <algorithm>

#include "calls/CallTable.h"
#include "calls/ValueBlock.h"
#include "instances/AttributeInstance.h"
#include "instances/GeometryInstance.h"

using namespace Kor;

namespace {

constexpr unsigned kChanges = 0;
constexpr unsigned kDrastic = Call::kDrastic;
constexpr unsigned kReads = Call::kReads;

void GetSize(World& world) {
    OviInstance_GetSize(Argument<OviInstance*>::Take(world));
}

void WriteToBinary(World& world) {
    constexpr std::uint32_t kAlignmentRoom = 4096;
    auto* instance = Argument<OviInstance*>::Take(world);
    const std::uint32_t size = world.GetInput().TakeByte();
    std::vector<char> buffer(size + kAlignmentRoom);
    OviInstance_WriteToBinary(instance, buffer.data(), size);
}

void WriteToXML(World& world) {
    auto* instance = Argument<OviInstance*>::Take(world);
    const std::uint32_t indent = world.GetInput().TakeByte();
    std::uint32_t size = 0;
    OviInstance_WriteToXML(instance, indent, &size, nullptr);
    if (!World::IsAlive(instance))
        return;
    const std::uint32_t less = world.GetInput().TakeByte() % 3;
    size = size < less ? 0 : size - less;
    std::vector<char> buffer(size);
    OviInstance_WriteToXML(instance, indent, &size, buffer.data());
}

/// A block of the type's form, the attribute's own, or null.
void SetValue(World& world) {
    auto* attribute = world.Pick<AttributeInstance>();
    const int choice = world.GetInput().TakeByte() % 8;
    if (!attribute || !attribute->GetType() || choice == 0) {
        OviAttributeInstance_SetValue(Argument<OviAttributeInstance*>::Take(world), nullptr);
        return;
    }
    auto* handle = reinterpret_cast<OviAttributeInstance*>(static_cast<Object*>(attribute));
    if (choice == 1 && attribute->GetReadableValue()) {
        OviAttributeInstance_SetValue(handle, attribute->GetReadableValue());
        return;
    }
    const ValueBlock value(world, *attribute->GetType(), attribute->GetDimension());
    if (World::IsAlive(attribute))
        OviAttributeInstance_SetValue(handle, value.Get());
}

void SetDimension(World& world) {
    auto* attribute = Argument<OviAttributeInstance*>::Take(world);
    OviAttributeInstance_SetDimension(attribute, world.PickCount());
}

void NewScene(World& world) {
    if (world.GetInput().TakeByte() % 4 == 0) // or else few inputs would keep their scene
        OviAssetManager_NewScene();
}

void LoadScene(World& world) {
    OviAssetManager_LoadScene(world.PickOutputPath());
}

void SaveScene(World& world) {
    OviAssetManager_SaveScene(world.PickOutputPath());
}

void SetChecks(World& world) {
    World::SetChecks(Argument<bool>::Take(world));
}

} // namespace

std::vector<Call> CallsOfInstances() {
    return {
        OVI_MAKES(OviInstance_New),
        OVI_ROW(OviInstance_AddTemplate, kDrastic),
        OVI_READS(OviInstance_GetTemplate),
        OVI_READS(OviInstance_GetTemplateAt),
        OVI_READS(OviInstance_GetTemplateCount),
        OVI_ROW(OviInstance_RemoveTemplate, kDrastic),
        OVI_ROW(OviInstance_UpdateTemplate, kDrastic),
        OVI_CHANGES(OviInstance_GetPropertyInstance),
        OVI_READS(OviInstance_IsPropertyInstanceValid),
        OVI_READS(OviInstance_IsValid),
        OVI_SPECIAL(OviInstance_GetSize, GetSize, kChanges),
        OVI_SPECIAL(OviInstance_WriteToBinary, WriteToBinary, kReads),
        OVI_READS(OviInstance_GetParentAsset),
        OVI_READS(OviInstance_GetParentPropertyInstance),
        OVI_SPECIAL(OviInstance_WriteToXML, WriteToXML, kReads),
        OVI_READS(OviPropertyInstance_GetProperty),
        OVI_READS(OviPropertyInstance_GetTemplate),
        OVI_READS(OviPropertyInstance_IsValid),
        OVI_READS(OviPropertyInstance_IsBindingLocked),
        OVI_READS(OviPropertyInstance_IsValueLocked),
        OVI_CHANGES(OviPropertyInstance_SetBindingLocked),
        OVI_CHANGES(OviPropertyInstance_SetValueLocked),

        OVI_CHANGES(OviAttributeInstance_GetValue),
        OVI_SPECIAL(OviAttributeInstance_SetValue, SetValue, kDrastic),
        OVI_READS(OviAttributeInstance_GetBinding),
        OVI_CHANGES(OviAttributeInstance_SetBinding),
        OVI_READS(OviAttributeInstance_GetDimension),
        OVI_SPECIAL(OviAttributeInstance_SetDimension, SetDimension, kDrastic),
        OVI_READS(OviAnchorInstance_GetAttachedAnchor),
        OVI_CHANGES(OviAnchorInstance_SetAttachedAnchor),
        OVI_READS(OviGeometryInstance_GetNodeInstanceAt),
        OVI_CHANGES(OviGeometryInstance_SetNodeInstanceAt),

        OVI_READS(OviAsset_GetAssetNode),
        OVI_READS(OviAsset_GetReference),
        OVI_CHANGES(OviAsset_SetReference),
        OVI_READS(OviAssetManager_GetAssetCount),
        OVI_READS(OviAssetManager_GetAssetAt),
        OVI_READS(OviAssetManager_GetAsset),
        OVI_CHANGES(OviAssetManager_NewAsset),
        OVI_CHANGES(OviAssetManager_AddAsset),
        OVI_ROW(OviAssetManager_RemoveAsset, kDrastic),
        OVI_SPECIAL(OviAssetManager_NewScene, NewScene, kDrastic),
        OVI_SPECIAL(OviAssetManager_LoadScene, LoadScene, kDrastic),
        OVI_SPECIAL(OviAssetManager_SaveScene, SaveScene, kReads),
        OVI_READS(OviAssetManager_IsDirty),

        OVI_SPECIAL(Ovi_SetChecks, SetChecks, kChanges),
        OVI_READS(Ovi_GetChecks),
    };
}
