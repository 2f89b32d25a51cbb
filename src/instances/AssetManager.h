#pragma once

#include <map>
#include <string>

#include "core/Singleton.h"
#include "instances/AssetContainer.h"

namespace Kor {

/// The scene: its assets, its files, and how often assets refer to other files.
class AssetManager : public AssetContainer, public Singleton<AssetManager> {
public:
    /// Deletes every asset and clears the dirty flag; always true.
    bool NewScene();

    /// True when the file was never referenced before; then "ReferenceFile" was sent. A file that
    /// was let go stays in the table, so that it is announced once only.
    bool ReferenceFile(Asset& asset, std::string file);

    /// Makes a place for a file in the table: referencing it then needs no memory.
    void MakeRoomForFile(const std::string& file) { fileReferences_.try_emplace(file); }

    /// True when this was the last reference; then "UnreferenceFile" was sent.
    bool UnreferenceFile(Asset& asset, const std::string& file);

    /// A new asset, announced; without a name the first free one of Asset1, Asset2, ... Null when
    /// the name is in use or breaks the name rule.
    Asset* NewAsset(const char* name);

    /// As AddAsset and RemoveAsset, announced.
    int AddAssetAndAnnounce(Asset* asset);
    int RemoveAssetAndAnnounce(Asset* asset);

protected:
    void NoteFreedName(std::string_view name) override;

private:
    friend class Singleton<AssetManager>;

    AssetManager() = default;
    ~AssetManager() override = default;

    /// What ending means while the memory has to stay.
    void Empty() { Clear(); }

    std::string FindFreeName();

    struct FileUse {
        int count = 0;
        bool announced = false;
    };

    std::map<std::string, FileUse> fileReferences_;
    int lowestFreeNumber_ = 1; // all lower numbers are in use as Asset1, Asset2, ...
};

} // namespace Kor
