// Calls of the functions for the registry of the schema, its files and packages.

#include <algorithm>

#include "calls/CallTable.h"

namespace {

constexpr unsigned kChanges = 0;
constexpr unsigned kDrastic = Call::kDrastic;
constexpr unsigned kReads = Call::kReads;

void GetTypesByFileName(World& world) {
    const char* path = world.PickTemplatePath();
    const int capacity = world.PickCount();
    std::vector<OviType*> types(static_cast<size_t>(std::max(capacity, 0)));
    const int count = OviTemplateManager_GetTypesByFileName(
        path, types.empty() ? nullptr : types.data(), capacity);
    for (int i = 0; i < std::min(count, capacity); ++i)
        Look(types[static_cast<size_t>(i)]);
}

void LoadTemplateFile(World& world) {
    OviTemplateManager_LoadTemplateFile(world.PickTemplatePath());
}

void UnloadTemplateFile(World& world) {
    const bool byText = world.GetInput().TakeByte() % 4 == 0;
    OviTemplateManager_UnloadTemplateFile(byText ? world.PickText() : world.PickTemplatePath());
}

/// Never to a file that the input names: that could be any.
void SaveTemplateFile(World& world) {
    const char* fileName = world.PickTemplatePath();
    OviTemplateManager_SaveTemplateFile(fileName, world.PickOutputPath());
}

const char* PickSearchPath(World& world) {
    static const char* const kPaths[] = {OVI_SOURCE_DIR "/fuzz/packages",
                                         OVI_SOURCE_DIR "\\FUZZ\\packages\\lib\\",
                                         OVI_SOURCE_DIR "/fuzz/missing", "\xff"};
    return kPaths[world.GetInput().TakeByte() % 4];
}

void AddSearchPath(World& world) {
    const char* path = PickSearchPath(world);
    OviTemplateManager_AddSearchPath(path, Argument<bool>::Take(world));
}

void RemoveSearchPath(World& world) {
    OviTemplateManager_RemoveSearchPath(PickSearchPath(world));
}

void EnumeratePackages(World& world) {
    const bool loadedOnly = Argument<bool>::Take(world);
    int size = world.GetInput().TakeByte();
    std::vector<char> buffer(static_cast<size_t>(size));
    OviTemplateManager_EnumeratePackages(loadedOnly, &size,
                                         buffer.empty() ? nullptr : buffer.data());
}

} // namespace

std::vector<Call> CallsOfManager() {
    return {
        OVI_READS(OviTemplateManager_GetTemplate),
        OVI_READS(OviTemplateManager_GetTemplateVersion),
        OVI_READS(OviTemplateManager_GetTemplateCount),
        OVI_READS(OviTemplateManager_GetTemplateAt),
        OVI_CHANGES(OviTemplateManager_CreateTemplate),
        OVI_CHANGES(OviTemplateManager_CreateTemplateVersion),
        OVI_CHANGES(OviTemplateManager_AddTemplate),
        OVI_ROW(OviTemplateManager_RemoveTemplate, kDrastic),
        OVI_READS(OviTemplateManager_GetRoot),
        OVI_READS(OviTemplateManager_GetProperty),
        OVI_READS(OviTemplateManager_GetEnumerationCount),
        OVI_READS(OviTemplateManager_GetEnumerationAt),
        OVI_READS(OviTemplateManager_GetEnumeration),
        OVI_CHANGES(OviTemplateManager_AddEnumeration),
        OVI_CHANGES(OviTemplateManager_RemoveEnumeration),
        OVI_READS(OviTemplateManager_GetType),
        OVI_READS(OviTemplateManager_GetTypeCount),
        OVI_READS(OviTemplateManager_GetTypeAt),
        OVI_SPECIAL(OviTemplateManager_GetTypesByFileName, GetTypesByFileName, kReads),
        OVI_READS(OviTemplateManager_ResolveType),
        OVI_CHANGES(OviTemplateManager_AddType),
        OVI_CHANGES(OviTemplateManager_RemoveType),
        OVI_READS(OviTemplateManager_GetLODCount),
        OVI_READS(OviTemplateManager_GetLODAt),
        OVI_READS(OviTemplateManager_GetLOD),
        OVI_CHANGES(OviTemplateManager_AddLOD),
        OVI_CHANGES(OviTemplateManager_RemoveLOD),
        OVI_READS(OviTemplateManager_GetAnchorTypeCount),
        OVI_READS(OviTemplateManager_GetAnchorTypeAt),
        OVI_READS(OviTemplateManager_GetAnchorType),
        OVI_CHANGES(OviTemplateManager_AddAnchorType),
        OVI_CHANGES(OviTemplateManager_RemoveAnchorType),
        OVI_SPECIAL(OviTemplateManager_LoadTemplateFile, LoadTemplateFile, kDrastic),
        OVI_SPECIAL(OviTemplateManager_UnloadTemplateFile, UnloadTemplateFile, kDrastic),
        OVI_SPECIAL(OviTemplateManager_SaveTemplateFile, SaveTemplateFile, kChanges),
        OVI_READS(OviTemplateManager_GetSearchPathCount),
        OVI_READS(OviTemplateManager_GetSearchPathAt),
        OVI_SPECIAL(OviTemplateManager_AddSearchPath, AddSearchPath, kChanges),
        OVI_SPECIAL(OviTemplateManager_RemoveSearchPath, RemoveSearchPath, kChanges),
        OVI_SPECIAL(OviTemplateManager_EnumeratePackages, EnumeratePackages, kReads),
        OVI_CHANGES(OviTemplateManager_LoadPackage),
        OVI_CHANGES(OviTemplateManager_LoadTemplate),
    };
}
