#pragma once

#include "core/CompactString.h"
#include "instances/Instance.h"

namespace Kor {

class AssetManager;

/// An instance at the top of a scene; it may refer to a file.
class Asset : public Instance {
public:
    static constexpr int kClassId = kAssetClass;
    KOR_OBJECT_MEMORY

    explicit Asset(std::string_view name) : Instance(name) {}
    ~Asset() override;

    int GetClass() const override { return kClassId; }
    bool ImplementsClass(int id) const override {
        return id == kClassId || Instance::ImplementsClass(id);
    }

    /// A place for a pointer of the host's own; null, since nothing sets it yet.
    void* GetAssetNode() const { return assetNode_; }

    /// The file the asset refers to, or "".
    const char* GetReference() const { return reference_.CStr(); }

    /// Replaces the reference; with `announce`, events go out and the references to files are
    /// counted. What callbacks set while the old file is let go is replaced at once.
    void SetReference(std::string_view reference, bool announce);

    /// Whether the asset manager lists the asset and therefore owns it.
    bool IsListed() const { return listed_; }
    void SetListed(bool listed) { listed_ = listed; }

    /// Takes itself out of the scene.
    void Leave() noexcept override;

protected:
    void MakeRoomInSortedLists() override;
    void LeaveSortedLists() override;
    void EnterSortedLists() override;

private:
    void LeaveScene() noexcept;
    void LetGoOfFile(AssetManager& assets);

    bool listed_ = false;
    bool lettingGo_ = false;
    void* assetNode_ = nullptr;
    CompactString reference_;
};

} // namespace Kor
