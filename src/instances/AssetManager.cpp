#include "instances/AssetManager.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "core/Names.h"
#include "core/NumberText.h"
#include "notify/NotificationManager.h"

namespace Kor {

namespace {

constexpr std::string_view kGeneratedName = "Asset";

void Announce(Asset* asset, int event, void* argument) {
    if (NotificationManager* notifications = NotificationManager::Get())
        notifications->NotifyInstance(asset, event, argument);
}

} // namespace

// -- scenes ---------------------------------------------------------------------------------------

bool AssetManager::NewScene() {
    Clear();
    lowestFreeNumber_ = 1;
    SetDirty(false);
    return true;
}

// -- file references ------------------------------------------------------------------------------

bool AssetManager::ReferenceFile(Asset& asset, std::string file) {
    FileUse& use = fileReferences_.try_emplace(file).first->second;
    ++use.count;
    const bool isNew = !std::exchange(use.announced, true);
    if (isNew)
        Announce(&asset, kReferenceFile, file.data());
    return isNew;
}

bool AssetManager::UnreferenceFile(Asset& asset, const std::string& file) {
    const auto entry = fileReferences_.find(file);
    if (entry == fileReferences_.end() || !entry->second.announced)
        return false;
    std::string name = file;
    if (--entry->second.count != 0)
        return false;
    Announce(&asset, kUnreferenceFile, name.data());
    return true;
}

// -- assets ---------------------------------------------------------------------------------------

Asset* AssetManager::NewAsset(const char* name) {
    const std::string given = name ? std::string(name) : FindFreeName();
    if (!IsValidName(given) || GetAsset(given))
        return nullptr;
    auto created = std::make_unique<Asset>(given);
    NotificationManager* notifications = NotificationManager::Get();
    if (!notifications || !notifications->HasInstanceListeners()) {
        AddNewAsset(created.get()); // nobody is told the index, which costs more than all the rest
        return created.release();
    }
    int index = AddAsset(created.get());
    Asset* asset = created.release();
    Announce(asset, kAssetAdded, &index);
    return asset->HasEnded() ? nullptr : asset;
}

std::string AssetManager::FindFreeName() {
    std::string name;
    do {
        name.assign(kGeneratedName).append(std::to_string(lowestFreeNumber_));
    } while (GetAsset(name) && ++lowestFreeNumber_);
    return name;
}

void AssetManager::NoteFreedName(std::string_view name) {
    if (name.size() > kGeneratedName.size() &&
        name.compare(0, kGeneratedName.size(), kGeneratedName) == 0) {
        const int number = ParseInt(name.data() + kGeneratedName.size());
        lowestFreeNumber_ = std::min(lowestFreeNumber_, std::max(number, 1));
    }
}

int AssetManager::AddAssetAndAnnounce(Asset* asset) {
    int result = AddAsset(asset);
    Announce(asset, kAssetAdded, &result);
    return result;
}

int AssetManager::RemoveAssetAndAnnounce(Asset* asset) {
    int result = RemoveAsset(asset);
    Announce(asset, kAssetRemoved, &result);
    return result;
}

} // namespace Kor
