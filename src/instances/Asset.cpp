#include "instances/Asset.h"

#include <string>

#include "instances/AssetManager.h"
#include "notify/NotificationManager.h"

namespace Kor {

/// An asset that is deleted by hand leaves the scene's list with it.
Asset::~Asset() {
    if (listed_ && AssetManager::Exists())
        AssetManager::Get()->Unlist(*this);
}

void Asset::SetReference(std::string_view reference, bool announce) {
    AssetManager* assets = AssetManager::Get();
    NotificationManager* notifications = NotificationManager::Get();
    CompactString stored(reference);
    if (announce) {
        std::string text(reference);
        if (notifications)
            notifications->NotifyInstance(this, kReferenceChanged, text.data());
        if (assets && !reference_.IsEmpty())
            assets->UnreferenceFile(*this, std::string(reference_.View()));
    }
    reference_ = std::move(stored);
    if (announce && assets && !reference_.IsEmpty())
        assets->ReferenceFile(*this, std::string(reference_.View()));
}

void Asset::LeaveSortedLists() {
    if (listed_)
        AssetManager::Get()->Unlist(*this);
}

void Asset::EnterSortedLists() {
    if (listed_)
        AssetManager::Get()->List(*this);
}

} // namespace Kor
