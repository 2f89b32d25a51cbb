// Calls on instances, property instances, assets and the scene.

#include "faults/CallRows.h"

namespace {

constexpr const char* kLong = "|a|path|of|the|host|that|is|too|long|to|stand|in|a|string|object";

const char* SavedScene() {
    static const std::string path = Model::Path("saved.asset");
    return path.c_str();
}

const char* OtherScene() {
    static const std::string path = Model::Path("other.asset");
    return path.c_str();
}

OviAttributeInstance* Held(OviInstance* instance, const char* name) {
    return static_cast<OviAttributeInstance*>(
        OviInstance_GetPropertyInstance(instance, name, false));
}

/// A block of two texts for an attribute of texts.
const void* Texts() {
    static const char* const kTexts[] = {"the first of two texts that are long", "second"};
    return kTexts;
}

} // namespace

CallRows SceneRows() {
    return {
        OVI_CALL(m.Keep(OviInstance_New("another_instance_with_a_long_name"))),
        OVI_DO(OviInstance_AddTemplate(m.screw, m.whole)),
        OVI_DO(OviInstance_AddTemplate(m.freeAsset, m.part2)),
        OVI_CALL(OviInstance_GetTemplate(m.screw, "main.Part")),
        OVI_CALL(OviInstance_GetTemplateAt(m.screw, 0)),
        OVI_CALL(OviInstance_GetTemplateCount(m.screw)),
        OVI_DO(OviInstance_RemoveTemplate(m.chair, m.whole)),
        OVI_PARTS(OviInstance_UpdateTemplate(m.screw, m.part)),
        OVI_CALL(OviInstance_GetPropertyInstance(m.screw, "Whole.part", true)),
        OVI_CALL(OviInstance_GetPropertyInstance(m.screw, "main.Whole.part", true)),
        OVI_CALL(OviInstance_IsPropertyInstanceValid(m.screw, "Base.size")),
        OVI_CALL(OviInstance_IsValid(m.screw)),
        OVI_DO(OviInstance_GetSize(m.chair)),
        OVI_DO(OviInstance_WriteToBinary(m.chair, m.buffer, sizeof m.buffer)),
        OVI_CALL(OviInstance_GetParentAsset(m.leg)),
        OVI_CALL(OviInstance_GetParentPropertyInstance(m.leg)),
        OVI_CALL((OviInstance_WriteToXML(m.screw, 0, &m.bytes, m.buffer), m.buffer[0])),
        OVI_CALL((OviInstance_WriteToXML(m.chair, 0, &m.bytes, m.buffer), m.buffer[0])),

        OVI_CALL(OviPropertyInstance_GetProperty(m.sizeOfScrew)),
        OVI_CALL(OviPropertyInstance_GetTemplate(m.sizeOfScrew)),
        OVI_CALL(OviPropertyInstance_IsValid(m.sizeOfScrew)),
        OVI_CALL(OviPropertyInstance_IsBindingLocked(m.plugOfScrew)),
        OVI_CALL(OviPropertyInstance_IsValueLocked(m.plugOfScrew)),
        OVI_CALL(OviPropertyInstance_SetBindingLocked(m.sizeOfScrew, true)),
        OVI_CALL(OviPropertyInstance_SetValueLocked(m.sizeOfScrew, true)),

        OVI_CALL(OviAttributeInstance_GetValue(m.sizeOfScrew)),
        OVI_CALL(OviAttributeInstance_GetValue(Held(m.chair, "Core.note")) == nullptr),
        OVI_CALL(OviAttributeInstance_GetValue(Held(m.screw, "Common.note"))),
        OVI_CALL(OviAttributeInstance_GetValue(Held(m.chair, "Whole.other"))),
        OVI_DO(OviAttributeInstance_SetValue(m.sizeOfScrew, m.value)),
        OVI_DO(OviAttributeInstance_SetValue(m.textsOfScrew, Texts())),
        OVI_PARTS(OviAttributeInstance_SetValue(m.partOfChair,
                                                OviAttributeInstance_GetValue(m.partOfChair))),
        OVI_CALL(OviAttributeInstance_GetBinding(m.sizeOfScrew)),
        OVI_DO(OviAttributeInstance_SetBinding(m.sizeOfScrew, kLong)),
        OVI_CALL(OviAttributeInstance_GetDimension(m.textsOfScrew)),
        OVI_CALL(OviAttributeInstance_SetDimension(m.textsOfScrew, 4)),
        OVI_CALL(OviAnchorInstance_GetAttachedAnchor(m.plugOfScrew)),
        OVI_DO(OviAnchorInstance_SetAttachedAnchor(m.plugOfScrew, kLong)),
        OVI_CALL(OviGeometryInstance_GetNodeInstanceAt(m.shapeOfScrew, 0)),
        OVI_DO((m.Keep(OviGeometryInstance_GetNodeInstanceAt(m.shapeOfScrew, 0)),
                OviGeometryInstance_SetNodeInstanceAt(m.shapeOfScrew, 0, nullptr))),

        OVI_CALL(OviAsset_GetAssetNode(m.chair)),
        OVI_CALL(OviAsset_GetReference(m.chair)),
        OVI_CALL(OviAsset_SetReference(m.chair, "another_file_with_a_long_name.asset")),
        OVI_CALL(OviAssetManager_GetAssetCount()),
        OVI_CALL(OviAssetManager_GetAssetAt(0)),
        OVI_CALL(OviAssetManager_GetAsset("chair")),
        OVI_CALL(OviAssetManager_NewAsset("another_asset_with_a_long_name")),
        OVI_CALL(OviAssetManager_NewAsset(nullptr)),
        OVI_CALL(OviAssetManager_AddAsset(m.freeAsset)),
        OVI_DO(OviAssetManager_RemoveAsset(m.Keep(m.chair))),
        OVI_CALL(OviAssetManager_NewScene()),
        OVI_PARTS(OviAssetManager_LoadScene(OtherScene())),
        OVI_CALL(OviAssetManager_SaveScene(SavedScene())),
        OVI_CALL(OviAssetManager_IsDirty()),
    };
}
