#include "manager/VersionIndex.h"

#include <algorithm>
#include <new>
#include <utility>

#include "core/MakeRoom.h"
#include "schema/Template.h"

namespace Kor {

const VersionIndex::Versions* VersionIndex::Find(const std::string& name) const {
    const auto found = lists_.find(name);
    return found == lists_.end() ? nullptr : &found->second.versions;
}

const VersionIndex::Versions& VersionIndex::Enter(const std::string& name, Versions versions) {
    List& list = lists_[name];
    list.versions = std::move(versions);
    return list.versions;
}

void VersionIndex::MakeRoomIn(const std::string& name) {
    const auto found = lists_.find(name);
    if (found != lists_.end())
        MakeRoom(found->second.versions);
}

void VersionIndex::Add(Template& version) noexcept {
    const auto found = lists_.find(version.GetFullName());
    if (found == lists_.end())
        return;
    Versions& versions = found->second.versions;
    const auto comesBefore = [](const Template* a, const Template* b) {
        return a->GetVersion() < b->GetVersion();
    };
    try {
        MakeRoom(versions);
        versions.insert(std::upper_bound(versions.begin(), versions.end(), &version, comesBefore),
                        &version);
    } catch (const std::bad_alloc&) {
        lists_.erase(found);
    }
}

/// A version that leaves keeps the number that it knows.
void VersionIndex::Remove(Template& version) noexcept {
    version.SetLatestVersion(version.GetLatestVersion());
    const auto found = lists_.find(version.GetFullName());
    if (found == lists_.end())
        return;
    Versions& versions = found->second.versions;
    const auto first =
        std::partition_point(versions.begin(), versions.end(), [&version](const Template* other) {
            return other->GetVersion() < version.GetVersion();
        });
    const auto place = std::find(first, versions.end(), &version);
    if (place != versions.end())
        versions.erase(place);
    if (versions.empty())
        lists_.erase(found);
}

bool VersionIndex::AreAllTold(const List& list, int latest) {
    const auto told = static_cast<size_t>(list.latest.use_count()) - 1; // but for the list itself
    return told == list.versions.size() && list.versions.front()->GetVersion() >= 1 &&
           list.versions.back()->GetVersion() <= latest;
}

void VersionIndex::RaiseLatest(Template& latest, std::shared_ptr<int> number) {
    const auto found = lists_.find(latest.GetFullName());
    if (found == lists_.end())
        return;
    List& list = found->second;
    if (list.latest) {
        latest.ShareLatestVersion(list.latest);
        if (AreAllTold(list, latest.GetVersion())) {
            *list.latest = *number;
            return;
        }
    }
    for (Template* version : list.versions) {
        if (version->GetVersion() >= 1 && version->GetVersion() <= latest.GetVersion())
            version->ShareLatestVersion(number);
    }
    list.latest = std::move(number);
}

} // namespace Kor
