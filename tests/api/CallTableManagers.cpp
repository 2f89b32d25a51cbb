// Bad handles, texts and indices for the functions that work on the managers.

#include "api/CallTable.h"

namespace {

int zero = 0;

} // namespace

Calls ManagerCalls() {
    return {
        OVI_RETURNS(Ovi_Initialize()),
        OVI_RETURNS(Ovi_Terminate()),
        OVI_RETURNS(Ovi_GetVersion()),
        OVI_RETURNS(Ovi_SetChecks(Ovi_GetChecks())),

        OVI_RETURNS(OviErrorManager_AddErrorItem(1, nullptr, 0, nullptr)),
        OVI_GIVES(0, OviErrorManager_GetErrorItemCount(0)),
        OVI_GIVES(nullptr, OviErrorManager_GetErrorItemAt(-1)),
        OVI_GIVES(nullptr, OviErrorManager_GetErrorItemAt(1000000)),
        OVI_RETURNS(OviErrorManager_Clear()),

        OVI_GIVES(0, OviNotificationManager_GetDCC()),
        OVI_RETURNS(OviNotificationManager_SetDCC(0)),
        // "true" says here that nothing was added.
        OVI_GIVES(true, OviNotificationManager_RegisterInstanceCallback(nullptr, nullptr)),
        OVI_GIVES(false, OviNotificationManager_UnregisterInstanceCallback(nullptr)),
        OVI_GIVES(true, OviNotificationManager_RegisterPropertyInstanceCallback(nullptr, nullptr)),
        OVI_GIVES(false, OviNotificationManager_UnregisterPropertyInstanceCallback(nullptr)),

        OVI_GIVES(1, OviAssetManager_GetAssetCount()),
        OVI_GIVES(nullptr, OviAssetManager_GetAssetAt(-1)),
        OVI_GIVES(nullptr, OviAssetManager_GetAssetAt(1)),
        OVI_GIVES(nullptr, OviAssetManager_GetAsset(nullptr)),
        OVI_RETURNS(OviObject_Delete(OviAssetManager_NewAsset(nullptr))),
        OVI_GIVES(nullptr, OviAssetManager_NewAsset("")),
        OVI_GIVES(-1, OviAssetManager_AddAsset(bad)),
        OVI_GIVES(-1, OviAssetManager_RemoveAsset(bad)),
        OVI_GIVES(false, OviAssetManager_LoadScene(nullptr)),
        OVI_RETURNS(OviAssetManager_SaveScene(nullptr)),
        OVI_GIVES(true, OviAssetManager_IsDirty()),
        OVI_GIVES(true, OviAssetManager_NewScene()),

        OVI_GIVES(nullptr, OviTemplateManager_GetTemplate(nullptr)),
        OVI_GIVES(nullptr, OviTemplateManager_GetTemplateVersion(nullptr, 1)),
        OVI_GIVES(nullptr, OviTemplateManager_GetTemplateVersion("Object", 4294967295u)),
        OVI_GIVES(2, OviTemplateManager_GetTemplateCount()),
        OVI_GIVES(nullptr, OviTemplateManager_GetTemplateAt(-1)),
        OVI_GIVES(nullptr, OviTemplateManager_GetTemplateAt(2)),
        OVI_GIVES(nullptr, OviTemplateManager_CreateTemplate(nullptr)),
        OVI_GIVES(nullptr, OviTemplateManager_CreateTemplateVersion(nullptr, 1)),
        OVI_GIVES(-1, OviTemplateManager_AddTemplate(bad)),
        OVI_GIVES(-1, OviTemplateManager_RemoveTemplate(bad)),
        OVI_GIVES(-1, OviTemplateManager_RemoveTemplate(OviTemplateManager_GetRoot())),
        OVI_GIVES(nullptr, OviTemplateManager_GetProperty(nullptr)),
        OVI_GIVES(1, OviTemplateManager_GetEnumerationCount()),
        OVI_GIVES(nullptr, OviTemplateManager_GetEnumerationAt(-1)),
        OVI_GIVES(nullptr, OviTemplateManager_GetEnumerationAt(1)),
        OVI_GIVES(nullptr, OviTemplateManager_GetEnumeration(nullptr)),
        OVI_GIVES(-1, OviTemplateManager_AddEnumeration(bad)),
        OVI_GIVES(-1, OviTemplateManager_RemoveEnumeration(bad)),
        OVI_GIVES(nullptr, OviTemplateManager_GetType(nullptr)),
        OVI_GIVES(14, OviTemplateManager_GetTypeCount()),
        OVI_GIVES(nullptr, OviTemplateManager_GetTypeAt(-1)),
        OVI_GIVES(nullptr, OviTemplateManager_GetTypeAt(14)),
        OVI_GIVES(0, OviTemplateManager_GetTypesByFileName("none", nullptr, 10)),
        OVI_RETURNS(OviTemplateManager_GetTypesByFileName(nullptr, nullptr, -1)),
        OVI_GIVES(nullptr, OviTemplateManager_ResolveType(nullptr)),
        OVI_GIVES(-1, OviTemplateManager_AddType(bad)),
        OVI_GIVES(-1, OviTemplateManager_RemoveType(bad)),
        OVI_GIVES(-1, OviTemplateManager_RemoveType(OviTemplateManager_GetRoot())),
        OVI_GIVES(0, OviTemplateManager_GetLODCount()),
        OVI_GIVES(nullptr, OviTemplateManager_GetLODAt(0)),
        OVI_GIVES(nullptr, OviTemplateManager_GetLODAt(-1)),
        OVI_GIVES(nullptr, OviTemplateManager_GetLOD(nullptr)),
        OVI_GIVES(-1, OviTemplateManager_AddLOD(bad)),
        OVI_GIVES(-1, OviTemplateManager_RemoveLOD(bad)),
        OVI_GIVES(0, OviTemplateManager_GetAnchorTypeCount()),
        OVI_GIVES(nullptr, OviTemplateManager_GetAnchorTypeAt(0)),
        OVI_GIVES(nullptr, OviTemplateManager_GetAnchorTypeAt(-1)),
        OVI_GIVES(nullptr, OviTemplateManager_GetAnchorType(nullptr)),
        OVI_GIVES(-1, OviTemplateManager_AddAnchorType(bad)),
        OVI_GIVES(-1, OviTemplateManager_RemoveAnchorType(bad)),

        OVI_GIVES(false, OviTemplateManager_LoadTemplateFile(nullptr)),
        OVI_RETURNS(OviTemplateManager_UnloadTemplateFile("none")),
        OVI_GIVES(false, OviTemplateManager_SaveTemplateFile(nullptr, nullptr)),
        OVI_GIVES(0, OviTemplateManager_GetSearchPathCount()),
        OVI_GIVES("", OviTemplateManager_GetSearchPathAt(0)),
        OVI_GIVES("", OviTemplateManager_GetSearchPathAt(-1)),
        OVI_GIVES(-1, OviTemplateManager_RemoveSearchPath(nullptr)),
        OVI_GIVES(-1, OviTemplateManager_AddSearchPath(nullptr, false)),
        OVI_GIVES(0, OviTemplateManager_RemoveSearchPath("")),
        OVI_GIVES(-1, OviTemplateManager_EnumeratePackages(false, nullptr, nullptr)),
        OVI_GIVES(-1, OviTemplateManager_EnumeratePackages(true, &zero, nullptr)),
        OVI_GIVES(false, OviTemplateManager_LoadPackage(nullptr)),
        OVI_GIVES(false, OviTemplateManager_LoadTemplate(nullptr)),
        OVI_GIVES(true, OviTemplateManager_GetRoot() != nullptr),
    };
}
