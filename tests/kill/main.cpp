// A host that is killed while it saves: ovi_save_loop ASSETS FILE [one|other]
//
// Saves two scenes to the file in turn, for ever; with a name only that scene, once. Prints a line
// when the first save is done. The exit code is 0 when the file was saved.

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "ovi/ovi.h"

namespace {

void MakeScene(int assets) {
    for (int i = 0; i < assets; ++i) {
        OviAsset* asset = OviAssetManager_NewAsset(("asset" + std::to_string(100000 + i)).c_str());
        OviInstance_AddTemplate(asset, OviTemplateManager_GetRoot());
    }
}

/// The other scene has an asset more, in front of all.
void ChangeTo(bool other, OviAsset* more) {
    if (other)
        OviAssetManager_AddAsset(more);
    else if (OviAssetManager_GetAsset("additional") == more)
        OviAssetManager_RemoveAsset(more);
}

} // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount < 3 || argumentCount > 4) {
        std::fputs("usage: ovi_save_loop ASSETS FILE [one|other]\n", stderr);
        return 2;
    }
    Ovi_Initialize();
    MakeScene(std::atoi(arguments[1]));
    OviAsset* more = OviAssetManager_NewAsset("additional");
    if (argumentCount == 4) {
        ChangeTo(!std::strcmp(arguments[3], "other"), more);
        return OviAssetManager_SaveScene(arguments[2]) ? 0 : 1;
    }
    for (bool other = true;; other = !other) {
        ChangeTo(other, more);
        if (!OviAssetManager_SaveScene(arguments[2]))
            return 1;
        std::puts("saved");
        std::fflush(stdout);
    }
}
