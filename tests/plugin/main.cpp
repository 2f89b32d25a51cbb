// A host that loads the library while it runs, as plug-ins do: it finds every exported function by
// its plain name, uses some, and lets go of the library, with and without ending it first. The next
// one that it loads must know nothing of the one before.
//
// usage: ovi_plugin_host LIBRARY LIST_OF_FUNCTIONS

#include <cstdio>
#include <fstream>
#include <string>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
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

} // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount != 3) {
        std::fputs("usage: ovi_plugin_host LIBRARY LIST_OF_FUNCTIONS\n", stderr);
        return 2;
    }
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
