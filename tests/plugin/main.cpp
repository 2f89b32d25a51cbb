// A host that loads the library while it runs, as plug-ins do: it finds every exported function by
// its plain name, uses some, and lets go of the library, with and without ending it first. The next
// one that it loads must know nothing of the one before.
//
// usage: ovi_plugin_host LIBRARY LIST_OF_FUNCTIONS [ROUNDS DIRECTORY]
//
// With ROUNDS it does so that often, ends the library each time, and looks at the memory that it
// has then; files go into the directory.

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#ifdef _WIN32
#include <windows.h>
#include <psapi.h>
#else
#include <dlfcn.h>
#include <malloc.h>
#include <unistd.h>
#endif

#include "ovi/ovi.h"

namespace {

#ifdef _WIN32
using Library = HMODULE;

Library Open(const char* path) {
    return LoadLibraryA(path);
}

void* FindAddress(Library library, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(library, name));
}

bool Close(Library library) {
    return FreeLibrary(library) != 0;
}

/// Bytes that the process has from the system.
long long CountBytes() {
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return static_cast<long long>(counters.PagefileUsage);
}
#else
using Library = void*;

Library Open(const char* path) {
    return dlopen(path, RTLD_NOW | RTLD_LOCAL);
}

void* FindAddress(Library library, const char* name) {
    return dlsym(library, name);
}

bool Close(Library library) {
    return dlclose(library) == 0;
}

/// Bytes that the process has from the system, and those of the heap that are in use.
long long CountBytes() {
    long long pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    const auto heap = mallinfo2();
    return pages * sysconf(_SC_PAGESIZE) + static_cast<long long>(heap.uordblks + heap.hblkhd);
}
#endif

template <class Function> Function* Find(Library library, const char* name) {
    return reinterpret_cast<Function*>(FindAddress(library, name));
}

/// Whether the library has all functions of the list, which names some.
bool HasAll(Library library, const char* list) {
    std::ifstream names(list);
    int found = 0;
    for (std::string name; names >> name; ++found) {
        if (!FindAddress(library, name.c_str())) {
            std::printf("%s is not exported\n", name.c_str());
            return false;
        }
    }
    return found > 0;
}

/// Fills a new scene and leaves it behind; with "end", the library is ended.
bool Use(Library library, bool end) {
    constexpr int kAssets = 3000;
    const auto newAsset =
        Find<decltype(OviAssetManager_NewAsset)>(library, "OviAssetManager_NewAsset");
    const auto getCount =
        Find<decltype(OviAssetManager_GetAssetCount)>(library, "OviAssetManager_GetAssetCount");
    Find<decltype(Ovi_Initialize)>(library, "Ovi_Initialize")();
    if (getCount() != 0)
        return false;
    for (int i = 0; i < kAssets; ++i)
        newAsset(nullptr);
    const bool right = getCount() == kAssets;
    if (end)
        Find<decltype(Ovi_Terminate)>(library, "Ovi_Terminate")();
    return right;
}

void Ignore(void*, void*, int, void*) {}

/// Makes a schema and a scene, saves, changes and loads them, and makes mistakes.
bool UseMuch(Library library, const std::string& directory) {
#define OVI_FIND(function) const auto function = Find<decltype(::function)>(library, #function)
    OVI_FIND(Ovi_Initialize);
    OVI_FIND(Ovi_Terminate);
    OVI_FIND(Ovi_SetChecks);
    OVI_FIND(OviTemplateManager_LoadTemplateFile);
    OVI_FIND(OviTemplateManager_AddSearchPath);
    OVI_FIND(OviTemplateManager_GetTemplate);
    OVI_FIND(OviAssetManager_NewAsset);
    OVI_FIND(OviInstance_AddTemplate);
    OVI_FIND(OviInstance_GetPropertyInstance);
    OVI_FIND(OviAttributeInstance_SetValue);
    OVI_FIND(OviAssetManager_SaveScene);
    OVI_FIND(OviAssetManager_LoadScene);
    OVI_FIND(OviNotificationManager_RegisterInstanceCallback);
    OVI_FIND(OviObject_Delete);
    OVI_FIND(OviNamedObject_SetLabel);
    OVI_FIND(OviAnchorProperty_New);
    OVI_FIND(OviAnchorProperty_AddAnchorType);
#undef OVI_FIND
    const std::string schema = directory + "/plugin.template";
    std::ofstream(schema) << "<?xml version='1.0'?><templates><lod name='High'/>"
                             "<enum name='Colour' type='INT32'>"
                             "<item name='Red' value='1'/></enum><template name='Thing'>"
                             "<attribute name='size' type='FLOAT' default='1'>"
                             "<command execute='run' notification='now'/></attribute>"
                             "<node name='n'/><geometry name='g'><alternate lod='High'/></geometry>"
                             "<attribute name='colour' type='Colour'/></template>"
                             "<view name='main' template='Thing'><property name='size'/></view>"
                             "<template name='Other' extends='Thing'/></templates>";
    const std::string scene = directory + "/plugin.asset";
    const float size = 2;
    Ovi_Initialize();
    Ovi_SetChecks(true);
    OviNotificationManager_RegisterInstanceCallback(&Ignore, nullptr);
    OviTemplateManager_AddSearchPath(directory.c_str(), false);
    bool right = OviTemplateManager_LoadTemplateFile(schema.c_str());
    for (int i = 0; i < 500; ++i) {
        OviAsset* asset = OviAssetManager_NewAsset(nullptr);
        OviInstance_AddTemplate(asset, OviTemplateManager_GetTemplate("Other"));
        OviAttributeInstance_SetValue(
            static_cast<OviAttributeInstance*>(
                OviInstance_GetPropertyInstance(asset, "Thing.size", false)),
            &size);
        OviNamedObject_SetLabel(asset, "en", "a label that is no short text");
        if (i % 2 == 0)
            OviObject_Delete(asset);
        if (i == 0)
            OviObject_Delete(asset); // a mistake, which is reported
    }
    OviAnchorProperty* anchor = OviAnchorProperty_New("anchor", 1);
    OviAnchorProperty_AddAnchorType(anchor, OviTemplateManager_GetTemplate("Thing"));
    OviObject_Delete(anchor);
    right = right && OviAssetManager_SaveScene(scene.c_str());
    right = right && OviAssetManager_LoadScene(scene.c_str());
    right = right && !OviTemplateManager_LoadTemplateFile("none.template");
    Ovi_Terminate();
    return right;
}

/// Whether rounds of loading, using, ending and letting go of the library keep no memory.
bool KeepsNothing(const char* path, int rounds, const std::string& directory) {
    [[maybe_unused]] long long tolerance = 256 * 1024; // the system's own, such as its loader's
#ifdef _WIN32
    // MinGW's threads keep a record of each thread that used them, 934 bytes with what belongs to
    // it, for each copy of that runtime that was loaded.
    tolerance += rounds * 1024LL;
#endif
    long long before = 0;
    for (int round = 0; round < rounds; ++round) {
        if (round == rounds / 10)
            before = CountBytes();
        const Library library = Open(path);
        if (!library || !UseMuch(library, directory) || !Close(library)) {
            std::printf("failed in round %d\n", round);
            return false;
        }
    }
    const long long more = CountBytes() - before;
    std::printf("%d rounds: %lld bytes more than after a tenth of them\n", rounds, more);
#ifdef __SANITIZE_ADDRESS__
    return true; // it keeps memory of its own, and finds at the end what was lost
#else
    return more < tolerance;
#endif
}

} // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount != 3 && argumentCount != 5) {
        std::fputs("usage: ovi_plugin_host LIBRARY LIST_OF_FUNCTIONS [ROUNDS DIRECTORY]\n", stderr);
        return 2;
    }
    if (argumentCount == 5)
        return KeepsNothing(arguments[1], std::atoi(arguments[3]), arguments[4]) ? 0 : 1;
    constexpr int kRounds = 6;
    for (int round = 0; round < kRounds; ++round) {
        const Library library = Open(arguments[1]);
        const bool end = round % 2 == 1;
        if (!library || !HasAll(library, arguments[2]) || !Use(library, end) || !Close(library)) {
            std::printf("failed in round %d\n", round);
            return 1;
        }
    }
    return 0;
}
