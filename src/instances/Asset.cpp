#include "instances/Asset.h"

#include <string>
#include <utility>

#include "instances/AssetManager.h"
#include "notify/NotificationManager.h"

namespace Kor {

namespace {

/// Sets a flag for as long as it lives.
class Mark {
public:
    explicit Mark(bool& flag) : flag_(flag) { flag_ = true; }
    ~Mark() { flag_ = false; }
    Mark(const Mark&) = delete;
    Mark& operator=(const Mark&) = delete;

private:
    bool& flag_;
};

} // namespace

Asset::~Asset() {
    LeaveScene();
}

void Asset::Leave() noexcept {
    LeaveScene();
    Instance::Leave();
}

void Asset::LeaveScene() noexcept {
    if (std::exchange(listed_, false) && AssetManager::Exists())
        AssetManager::Get()->Unlist(*this);
}

void Asset::SetReference(std::string_view reference, bool announce) {
    AssetManager* assets = AssetManager::Get();
    NotificationManager* notifications = NotificationManager::Get();
    CompactString stored(reference);
    std::string file(reference);
    if (announce) {
        std::string text(reference);
        if (assets && !reference.empty())
            assets->MakeRoomForFile(file);
        if (notifications)
            notifications->NotifyInstance(this, kReferenceChanged, text.data());
        if (assets && !HasEnded())
            LetGoOfFile(*assets);
    }
    if (HasEnded())
        return;
    reference_ = std::move(stored);
    if (announce && assets && !reference_.IsEmpty() && !lettingGo_)
        assets->ReferenceFile(*this, std::move(file));
}

/// Callbacks that set the reference meanwhile only set a text that will not stay: the old file is
/// let go once, and the one in between is not counted.
void Asset::LetGoOfFile(AssetManager& assets) {
    if (reference_.IsEmpty() || lettingGo_)
        return;
    const Mark mark(lettingGo_);
    assets.UnreferenceFile(*this, std::string(reference_.View()));
}

void Asset::MakeRoomInSortedLists() {
    if (listed_)
        AssetManager::Get()->MakeRoom();
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
