#include "ovi/asset.h"

#include "api/Barrier.h"
#include "formats/SceneFile.h"
#include "instances/Asset.h"
#include "instances/AssetManager.h"

using namespace Kor;
using namespace Kor::Api;

namespace {

OviAsset* const kNoAsset = nullptr;

} // namespace

void* OviAsset_GetAssetNode(OviAsset* asset) {
    return With<Asset>(asset, static_cast<void*>(nullptr),
                       [](Asset& self) { return self.GetAssetNode(); });
}

const char* OviAsset_GetReference(OviAsset* asset) {
    return With<Asset>(asset, "", [](Asset& self) { return self.GetReference(); });
}

bool OviAsset_SetReference(OviAsset* asset, const char* reference) {
    return With<Asset>(asset, false, [reference](Asset& self) {
        self.SetReference(Text(reference), true);
        return true;
    });
}

int OviAssetManager_GetAssetCount(void) {
    return WithManager<AssetManager>(0, [](AssetManager& scene) { return scene.GetAssetCount(); });
}

OviAsset* OviAssetManager_GetAssetAt(int index) {
    return WithManager<AssetManager>(
        kNoAsset, [index](AssetManager& scene) { return To<OviAsset>(scene.GetAssetAt(index)); });
}

OviAsset* OviAssetManager_GetAsset(const char* name) {
    return WithManager<AssetManager>(
        kNoAsset, [name](AssetManager& scene) { return To<OviAsset>(scene.GetAsset(Text(name))); });
}

OviAsset* OviAssetManager_NewAsset(const char* name) {
    return WithManager<AssetManager>(
        kNoAsset, [name](AssetManager& scene) { return To<OviAsset>(scene.NewAsset(name)); });
}

int OviAssetManager_AddAsset(OviAsset* asset) {
    return WithManagerAnd<AssetManager, Asset>(
        asset, [](AssetManager& scene, Asset& added) { return scene.AddAssetAndAnnounce(&added); });
}

int OviAssetManager_RemoveAsset(OviAsset* asset) {
    return WithManagerAnd<AssetManager, Asset>(asset, [](AssetManager& scene, Asset& removed) {
        return scene.RemoveAssetAndAnnounce(&removed);
    });
}

bool OviAssetManager_NewScene(void) {
    return WithManager<AssetManager>(false, [](AssetManager& scene) { return scene.NewScene(); });
}

bool OviAssetManager_LoadScene(const char* path) {
    return WithManager<AssetManager>(false,
                                     [path](AssetManager&) { return SceneFile::Load(Text(path)); });
}

bool OviAssetManager_SaveScene(const char* path) {
    return WithManager<AssetManager>(false,
                                     [path](AssetManager&) { return SceneFile::Save(Text(path)); });
}

bool OviAssetManager_IsDirty(void) {
    return WithManager<AssetManager>(false, [](AssetManager& scene) { return scene.IsDirty(); });
}
