// Calls on the registry of the schema: what is registered, files, packages and search paths.

#include "faults/CallRows.h"

namespace {

constexpr const char* kNew = "another.package.Template_with_a_long_name";

template <class Handle> long Removed(Model& m, int index, Handle* removed) {
    if (index >= 0)
        m.Keep(removed);
    return index;
}

/// Composed beforehand: the test's own texts are not what fails.
const char* SavedFile() {
    static const std::string path = Model::Path("saved.template");
    return path.c_str();
}
const char* MoreFile() {
    static const std::string path = Model::Path("library/more/more.template");
    return path.c_str();
}
const char* SecondLibrary() {
    static const std::string path = Model::Path("second");
    return path.c_str();
}
const char* OtherPath() {
    static const std::string path = Model::Path("library/more");
    return path.c_str();
}

} // namespace

CallRows ManagerRows() {
    return {
        OVI_CALL(OviTemplateManager_GetTemplate("main.Part")),
        OVI_CALL(OviTemplateManager_GetTemplateVersion("main.Part", 2)),
        OVI_CALL(OviTemplateManager_GetTemplateCount()),
        OVI_CALL(OviTemplateManager_GetTemplateAt(0)),
        OVI_CALL(OviTemplateManager_CreateTemplate(kNew)),
        OVI_CALL(OviTemplateManager_CreateTemplate("main.Part")),
        OVI_CALL(OviTemplateManager_CreateTemplateVersion("main.Base", 2)),
        OVI_CALL(OviTemplateManager_CreateTemplateVersion("main.Part", 7)),
        OVI_CALL(OviTemplateManager_CreateTemplateVersion("main.Whole", 2)),
        OVI_CALL(OviTemplateManager_AddTemplate(m.freeTemplate)),
        OVI_CALL((OviTemplateManager_AddTemplate(m.freeTemplate),
                  OviTemplateManager_RemoveTemplate(m.freeTemplate)) +
                 1),
        OVI_CALL(OviTemplateManager_GetRoot()),
        OVI_CALL(OviTemplateManager_GetProperty("main.Part#1.colour")),
        OVI_CALL(OviTemplateManager_GetEnumerationCount()),
        OVI_CALL(OviTemplateManager_GetEnumerationAt(0)),
        OVI_CALL(OviTemplateManager_GetEnumeration("main.Colour")),
        OVI_CALL(OviTemplateManager_AddEnumeration(m.freeEnumeration) + 1),
        OVI_CALL(Removed(m, OviTemplateManager_RemoveEnumeration(m.colour), m.colour)),
        OVI_CALL(OviTemplateManager_GetType("INT32")),
        OVI_CALL(OviTemplateManager_GetTypeCount()),
        OVI_CALL(OviTemplateManager_GetTypeAt(0)),
        OVI_CALL(OviTemplateManager_GetTypesByFileName(Model::SchemaFile().c_str(), m.types, 8)),
        OVI_CALL(OviTemplateManager_ResolveType("main.Vector")),
        OVI_CALL(OviTemplateManager_AddType(m.freeType)),
        OVI_CALL(OviTemplateManager_AddType(m.freeItem)),
        OVI_CALL(OviTemplateManager_AddType(m.freeTemplate)),
        OVI_CALL(Removed(m, OviTemplateManager_RemoveType(m.vector), m.vector)),
        OVI_CALL(OviTemplateManager_GetLODCount()),
        OVI_CALL(OviTemplateManager_GetLODAt(0)),
        OVI_CALL(OviTemplateManager_GetLOD("High")),
        OVI_CALL(OviTemplateManager_AddLOD(m.freeLOD)),
        OVI_CALL(OviTemplateManager_RemoveLOD(m.lod) + 1),
        OVI_CALL(OviTemplateManager_GetAnchorTypeCount()),
        OVI_CALL(OviTemplateManager_GetAnchorTypeAt(0)),
        OVI_CALL(OviTemplateManager_GetAnchorType("High")),
        OVI_CALL(OviTemplateManager_AddAnchorType(m.freeCommand) + 1),
        OVI_CALL(
            (OviTemplateManager_AddAnchorType(m.lod), OviTemplateManager_RemoveAnchorType(m.lod)) +
            1),

        OVI_PARTS(OviTemplateManager_LoadTemplateFile(MoreFile())),
        OVI_PARTS(OviTemplateManager_UnloadTemplateFile(Model::SchemaFile().c_str())),
        OVI_DO(OviTemplateManager_SaveTemplateFile(Model::SchemaFile().c_str(), SavedFile())),
        OVI_CALL(OviTemplateManager_GetSearchPathCount()),
        OVI_CALL(OviTemplateManager_GetSearchPathAt(0)),
        OVI_DO(OviTemplateManager_AddSearchPath(OtherPath(), false)),
        OVI_PARTS(OviTemplateManager_AddSearchPath(SecondLibrary(), true)),
        OVI_DO(OviTemplateManager_RemoveSearchPath(OviTemplateManager_GetSearchPathAt(0))),
        OVI_CALL(OviTemplateManager_EnumeratePackages(false, &m.count, m.buffer)),
        OVI_CALL(OviTemplateManager_EnumeratePackages(true, &m.count, m.buffer)),
        OVI_PARTS(OviTemplateManager_LoadPackage("more")),
        OVI_PARTS(OviTemplateManager_LoadTemplate("more.more")),
    };
}
