#include "instances/AssetContainer.h"

#include "core/Ending.h"
#include "core/Names.h"
#include "core/Prefetch.h"

namespace Kor {

namespace {

constexpr size_t kPrefetchDistance = 4; // assets: deleting that many takes as long as a fetch

} // namespace

AssetContainer::~AssetContainer() {
    AssetContainer::Clear();
}

int AssetContainer::CreateAsset(const char* name) {
    if (!IsValidName(TextOf(name)) || assets_.Find(TextOf(name)) >= 0)
        return -1;
    auto asset = std::make_unique<Asset>(TextOf(name));
    const int index = AddAsset(asset.get());
    static_cast<void>(asset.release()); // the list has it now
    return index;
}

int AssetContainer::AddAsset(Asset* asset) {
    Asset* replaced = nullptr;
    const int index = assets_.Insert(asset, &replaced);
    dirty_ = true;
    if (replaced)
        replaced->SetListed(false);
    asset->SetListed(true);
    return index;
}

void AssetContainer::AddNewAsset(Asset* asset) {
    dirty_ = true;
    assets_.InsertLate(asset);
    asset->SetListed(true);
}

void AssetContainer::Unlist(Asset& asset) {
    NoteFreedName(asset.GetNameView());
    assets_.RemoveExactly(&asset);
}

int AssetContainer::RemoveAsset(Asset* asset) {
    dirty_ = true;
    NoteFreedName(asset->GetNameView());
    if (asset->IsListed()) {
        asset->SetListed(false);
        return assets_.Remove(asset);
    }
    const int index = assets_.Find(asset->GetKey());
    if (Asset* namesake = assets_.GetAt(index)) {
        namesake->SetListed(false);
        assets_.Remove(namesake);
    }
    return index;
}

void AssetContainer::Clear() {
    while (Asset* last = assets_.TakeLast()) {
        Prefetch(assets_.PeekFromEnd(kPrefetchDistance));
        last->SetListed(false);
        if (Ending::IsDeferred())
            Ending::End(last);
        else
            delete last;
    }
}

} // namespace Kor
