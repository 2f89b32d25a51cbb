#include "ovi/template_manager.h"

#include <cstring>
#include <new>

#include "api/Barrier.h"
#include "core/ErrorManager.h"
#include "formats/XMLTemplateFileWriter.h"
#include "manager/TemplateManager.h"
#include "manager/UsingList.h"

using namespace Kor;
using namespace Kor::Api;

namespace {

using Manager = TemplateManager;

OviTemplate* const kNoTemplate = nullptr;
OviType* const kNoType = nullptr;
OviEnumeration* const kNoEnumeration = nullptr;
OviLOD* const kNoLOD = nullptr;
OviNamedObject* const kNoAnchorType = nullptr;

/// Puts names into a buffer one behind the other, each with its NUL where it fits, and one NUL
/// more at the end; gives the bytes that the whole list needs.
size_t PackNames(const SortedStringList& names, char* buffer, size_t size) {
    size_t position = 0;
    for (const std::string& name : names) {
        if (buffer && position + name.size() + 1 <= size)
            std::memcpy(buffer + position, name.c_str(), name.size() + 1);
        position += name.size() + 1;
    }
    if (buffer && position < size)
        buffer[position] = '\0';
    return position + 1;
}

} // namespace

// -- templates ------------------------------------------------------------------------------------

OviTemplate* OviTemplateManager_GetTemplate(const char* name) {
    return WithManager<Manager>(kNoTemplate, [name](Manager& manager) {
        return To<OviTemplate>(manager.GetTemplate(Text(name)));
    });
}

OviTemplate* OviTemplateManager_GetTemplateVersion(const char* name, uint32_t version) {
    return WithManager<Manager>(kNoTemplate, [=](Manager& manager) {
        return To<OviTemplate>(manager.GetTemplateVersion(Text(name), version));
    });
}

int OviTemplateManager_GetTemplateCount(void) {
    return WithManager<Manager>(0, [](Manager& manager) { return manager.GetTemplateCount(); });
}

OviTemplate* OviTemplateManager_GetTemplateAt(int index) {
    return WithManager<Manager>(kNoTemplate, [index](Manager& manager) {
        return To<OviTemplate>(manager.GetTemplateAt(index));
    });
}

OviTemplate* OviTemplateManager_CreateTemplate(const char* name) {
    return WithManager<Manager>(kNoTemplate, [name](Manager& manager) {
        return To<OviTemplate>(manager.CreateTemplate(Text(name)));
    });
}

OviTemplate* OviTemplateManager_CreateTemplateVersion(const char* name, int version) {
    return WithManager<Manager>(kNoTemplate, [=](Manager& manager) {
        return To<OviTemplate>(manager.CreateTemplateVersion(Text(name), version));
    });
}

int OviTemplateManager_AddTemplate(OviTemplate* added) {
    return WithManagerAnd<Manager, Template>(
        added, [](Manager& manager, Template& object) { return manager.AddTemplate(&object); });
}

int OviTemplateManager_RemoveTemplate(OviTemplate* removed) {
    return WithManagerAnd<Manager, Template>(removed, [](Manager& manager, Template& object) {
        return manager.RemoveTemplate(&object);
    });
}

OviTemplate* OviTemplateManager_GetRoot(void) {
    return WithManager<Manager>(
        kNoTemplate, [](Manager& manager) { return To<OviTemplate>(manager.GetRoot()); });
}

OviProperty* OviTemplateManager_GetProperty(const char* fullName) {
    return WithManager<Manager>(static_cast<OviProperty*>(nullptr), [fullName](Manager& manager) {
        return To<OviProperty>(manager.GetProperty(Text(fullName)));
    });
}

// -- enumerations and plain types -----------------------------------------------------------------

int OviTemplateManager_GetEnumerationCount(void) {
    return WithManager<Manager>(0, [](Manager& manager) { return manager.GetEnumerationCount(); });
}

OviEnumeration* OviTemplateManager_GetEnumerationAt(int index) {
    return WithManager<Manager>(kNoEnumeration, [index](Manager& manager) {
        return To<OviEnumeration>(manager.GetEnumerationAt(index));
    });
}

OviEnumeration* OviTemplateManager_GetEnumeration(const char* name) {
    return WithManager<Manager>(kNoEnumeration, [name](Manager& manager) {
        return To<OviEnumeration>(manager.GetEnumeration(Text(name)));
    });
}

int OviTemplateManager_AddEnumeration(OviEnumeration* enumeration) {
    return WithManagerAnd<Manager, Enumeration>(
        enumeration,
        [](Manager& manager, Enumeration& object) { return manager.AddEnumeration(&object); });
}

int OviTemplateManager_RemoveEnumeration(OviEnumeration* enumeration) {
    return WithManagerAnd<Manager, Enumeration>(
        enumeration,
        [](Manager& manager, Enumeration& object) { return manager.RemoveEnumeration(&object); });
}

OviType* OviTemplateManager_GetType(const char* name) {
    return WithManager<Manager>(
        kNoType, [name](Manager& manager) { return To<OviType>(manager.GetType(Text(name))); });
}

int OviTemplateManager_GetTypeCount(void) {
    return WithManager<Manager>(0, [](Manager& manager) { return manager.GetTypeCount(); });
}

OviType* OviTemplateManager_GetTypeAt(int index) {
    return WithManager<Manager>(
        kNoType, [index](Manager& manager) { return To<OviType>(manager.GetTypeAt(index)); });
}

int OviTemplateManager_GetTypesByFileName(const char* fileName, OviType** types, int capacity) {
    return WithManager<Manager>(0, [=](Manager& manager) {
        // Handles are the addresses of the objects themselves.
        return manager.GetTypesByFileName(Text(fileName), reinterpret_cast<Type**>(types),
                                          capacity);
    });
}

OviType* OviTemplateManager_ResolveType(const char* name) {
    return WithManager<Manager>(kNoType, [name](Manager& manager) {
        UsingList exact;
        exact.Insert("");
        return To<OviType>(manager.ResolveType(Text(name), exact));
    });
}

int OviTemplateManager_AddType(OviType* type) {
    return WithManagerAnd<Manager, Type>(
        type, [](Manager& manager, Type& object) { return manager.AddType(&object); });
}

int OviTemplateManager_RemoveType(OviType* type) {
    return WithManagerAnd<Manager, Type>(
        type, [](Manager& manager, Type& object) { return manager.RemoveType(&object); });
}

// -- levels of detail and anchor types ------------------------------------------------------------

int OviTemplateManager_GetLODCount(void) {
    return WithManager<Manager>(0, [](Manager& manager) { return manager.GetLODCount(); });
}

OviLOD* OviTemplateManager_GetLODAt(int index) {
    return WithManager<Manager>(
        kNoLOD, [index](Manager& manager) { return HandOut<OviLOD>(manager.GetLODAt(index)); });
}

OviLOD* OviTemplateManager_GetLOD(const char* name) {
    return WithManager<Manager>(
        kNoLOD, [name](Manager& manager) { return HandOut<OviLOD>(manager.GetLOD(Text(name))); });
}

int OviTemplateManager_AddLOD(OviLOD* lod) {
    return WithManagerAnd<Manager, LOD>(
        lod, [](Manager& manager, LOD& object) { return manager.AddLOD(&object); });
}

int OviTemplateManager_RemoveLOD(OviLOD* lod) {
    return WithManagerAnd<Manager, LOD>(
        lod, [](Manager& manager, LOD& object) { return manager.RemoveLOD(&object); });
}

int OviTemplateManager_GetAnchorTypeCount(void) {
    return WithManager<Manager>(0, [](Manager& manager) { return manager.GetAnchorTypeCount(); });
}

OviNamedObject* OviTemplateManager_GetAnchorTypeAt(int index) {
    return WithManager<Manager>(kNoAnchorType, [index](Manager& manager) {
        return To<OviNamedObject>(manager.GetAnchorTypeAt(index));
    });
}

OviNamedObject* OviTemplateManager_GetAnchorType(const char* name) {
    return WithManager<Manager>(kNoAnchorType, [name](Manager& manager) {
        return To<OviNamedObject>(manager.GetAnchorType(Text(name)));
    });
}

int OviTemplateManager_AddAnchorType(OviNamedObject* type) {
    return WithManagerAnd<Manager, NamedObject>(
        type, [](Manager& manager, NamedObject& object) { return manager.AddAnchorType(&object); });
}

int OviTemplateManager_RemoveAnchorType(OviNamedObject* type) {
    return WithManagerAnd<Manager, NamedObject>(type, [](Manager& manager, NamedObject& object) {
        return manager.RemoveAnchorType(&object);
    });
}

// -- template files -------------------------------------------------------------------------------

// One message, without a line, says that the file as a whole was not loaded, whether it could not
// be opened or is faulty. The faults themselves were reported before it, each with its line.
bool OviTemplateManager_LoadTemplateFile(const char* path) {
    return WithManager<Manager>(false, [path](Manager& manager) {
        bool loaded = false;
        try {
            loaded = manager.LoadTemplateFile(Text(path));
        } catch (const std::bad_alloc&) {
            loaded = false; // reported, too, as any other reason
        }
        ErrorManager* errors = ErrorManager::Get();
        if (!loaded && errors) {
            const std::string message =
                std::string("Unable to open file '") + Text(path) + "' for reading";
            errors->AddErrorItem(kError, Text(path), -1, message.c_str());
        }
        return loaded;
    });
}

bool OviTemplateManager_UnloadTemplateFile(const char* path) {
    return WithManager<Manager>(
        false, [path](Manager& manager) { return manager.UnloadTemplateFile(Text(path)); });
}

bool OviTemplateManager_SaveTemplateFile(const char* fileName, const char* output) {
    return WithManager<Manager>(false, [=](Manager& manager) {
        return XMLTemplateFileWriter::Save(manager, Text(fileName), output);
    });
}

// -- search paths and packages --------------------------------------------------------------------

int OviTemplateManager_GetSearchPathCount(void) {
    return WithManager<Manager>(0, [](Manager& manager) { return manager.GetSearchPathCount(); });
}

const char* OviTemplateManager_GetSearchPathAt(int index) {
    return WithManager<Manager>(
        "", [index](Manager& manager) { return manager.GetSearchPathAt(index); });
}

int OviTemplateManager_AddSearchPath(const char* path, bool load) {
    return WithManager<Manager>(
        -1, [=](Manager& manager) { return manager.AddSearchPath(Text(path), load); });
}

int OviTemplateManager_RemoveSearchPath(const char* path) {
    return WithManager<Manager>(
        -1, [path](Manager& manager) { return manager.RemoveSearchPath(Text(path)); });
}

int OviTemplateManager_EnumeratePackages(bool loadedOnly, int* size, char* buffer) {
    return WithManager<Manager>(-1, [=](Manager& manager) {
        SortedStringList names;
        if (!manager.EnumeratePackages(loadedOnly, names))
            return -1;
        const int given = size && *size > 0 ? *size : 0;
        const size_t needed = PackNames(names, buffer, static_cast<size_t>(given));
        if (size)
            *size = static_cast<int>(needed);
        return names.GetCount();
    });
}

bool OviTemplateManager_LoadPackage(const char* name) {
    return WithManager<Manager>(
        false, [name](Manager& manager) { return manager.LoadPackage(Text(name)); });
}

bool OviTemplateManager_LoadTemplate(const char* name) {
    return WithManager<Manager>(
        false, [name](Manager& manager) { return manager.LoadTemplate(Text(name), nullptr); });
}
