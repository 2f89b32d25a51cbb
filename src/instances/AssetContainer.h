#pragma once

#include "core/ObjectRegistry.h"
#include "instances/Asset.h"

namespace Kor {

/// A list of assets by name, with a dirty flag for the host.
class IAssetContainer {
public:
    virtual ~IAssetContainer() = default;

    virtual int GetAssetCount() const = 0;
    virtual Asset* GetAssetAt(int index) const = 0;
    virtual Asset* GetAsset(std::string_view name) const = 0;

    /// What the container offers beyond this interface; null where that is nothing.
    virtual void* GetExtension() { return nullptr; }

    /// Makes an asset of that name and gives its index, -1 when the name is in use or invalid.
    virtual int CreateAsset(const char* name) = 0;

    /// Inserts by name; the result is the list's. Makes the container dirty.
    virtual int AddAsset(Asset* asset) = 0;

    /// Removes by name without deleting; the result is the list's. Makes the container dirty.
    virtual int RemoveAsset(Asset* asset) = 0;

    virtual bool IsDirty() const = 0;
    virtual void SetDirty(bool dirty) = 0;

    /// Deletes every asset, last first.
    virtual void Clear() = 0;
};

class AssetContainer : public IAssetContainer {
public:
    ~AssetContainer() override;

    int GetAssetCount() const override { return assets_.GetCount(); }
    Asset* GetAssetAt(int index) const override { return assets_.GetAt(index); }
    Asset* GetAsset(std::string_view name) const override { return assets_.Get(name); }
    int CreateAsset(const char* name) override;
    int AddAsset(Asset* asset) override;
    /// Adds an asset whose name is not in use, for callers who need no index.
    void AddNewAsset(Asset* asset);

    int RemoveAsset(Asset* asset) override;
    bool IsDirty() const override { return dirty_; }
    void SetDirty(bool dirty) override { dirty_ = dirty; }
    void Clear() override;

    /// Called by an asset around a change of its name and at its end. Where room was made before,
    /// listing it again needs no memory.
    void MakeRoom() { assets_.MakeRoom(); }
    void Unlist(Asset& asset);
    void List(Asset& asset) { assets_.Place(&asset); }

    const ObjectRegistry<Asset>& GetAssets() const { return assets_; }

protected:
    /// Called when a name may have become free.
    virtual void NoteFreedName(std::string_view) {}

private:
    ObjectRegistry<Asset> assets_;
    bool dirty_ = false;
};

} // namespace Kor
