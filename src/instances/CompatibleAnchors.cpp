#include "instances/CompatibleAnchors.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <unordered_map>
#include <vector>

#include "instances/AssetManager.h"
#include "instances/NodeInstance.h"
#include "schema/AnchorProperty.h"
#include "schema/Template.h"

namespace Kor {

namespace {

constexpr const char* kAssetNode = "AssetNode";
constexpr std::int64_t kLimit = std::numeric_limits<int>::max();

/// The property instance by which an asset says that the host has a node for it: the one of that
/// full name, else that of a node property of that own name.
const NodeInstance* FindAssetNode(Asset& asset) {
    if (const PropertyInstance* named = asset.GetPropertyInstance(kAssetNode, true))
        return ObjectCast<NodeInstance>(named);
    for (const PropertyInstance* candidate : asset.GetPropertyInstances()) {
        const auto* property = ObjectCast<NodeProperty>(candidate->GetProperty());
        if (property && property->GetNameView() == kAssetNode)
            return ObjectCast<NodeInstance>(candidate);
    }
    return nullptr;
}

/// Counts the compatible anchors of templates, each template once, added up along every path of
/// inheritance; lists as many as are asked for by walking only where there are some.
class AnchorSearch {
public:
    AnchorSearch(bool child, int capacity, PropertyInstance** found)
        : child_(child), capacity_(found ? std::max(capacity, 0) : 0), found_(found) {}

    void Search(Asset& asset) {
        for (int i = asset.GetTemplateCount() - 1; i >= 0; --i) {
            const Template* implemented = asset.GetTemplateAt(i);
            const std::int64_t count = Count(implemented);
            if (stored_ < capacity_ && count > 0)
                List(implemented, asset);
            total_ = std::min(total_ + count, kLimit);
        }
    }

    int GetTotal() const { return static_cast<int>(total_); }

private:
    struct Step {
        const Template* current;
        int nextParent; ///< Parents are taken from the last to the first.
    };

    /// What is known of a template: how many anchors its paths of inheritance lead to, and the next
    /// template on the way to them where something is to be listed or the way parts.
    struct Known {
        std::int64_t count = 0;
        const Template* next = nullptr;
    };

    bool IsCompatible(const Property* property) const {
        const auto* anchor = ObjectCast<AnchorProperty>(property);
        return anchor && anchor->IsChild() != child_;
    }

    Known Sum(const Template& definition) {
        const auto& own = definition.GetOwnProperties();
        Known sum{std::count_if(own.begin(), own.end(),
                                [this](const Property* p) { return IsCompatible(p); }),
                  nullptr};
        bool mustStop = sum.count > 0;
        for (const Template* parent : definition.GetParents()) {
            const Known& inherited = known_[parent];
            if (inherited.count == 0)
                continue;
            mustStop = mustStop || sum.next;
            sum.next = inherited.next;
            sum.count = std::min(sum.count + inherited.count, kLimit);
        }
        if (mustStop)
            sum.next = &definition;
        return sum;
    }

    std::int64_t Count(const Template* start) {
        std::vector<Step> path{{start, start->GetParentCount() - 1}};
        while (!path.empty()) {
            Step& step = path.back();
            if (step.nextParent >= 0) {
                const Template* parent = step.current->GetParentAt(step.nextParent--);
                if (known_.find(parent) == known_.end())
                    path.push_back({parent, parent->GetParentCount() - 1});
                continue;
            }
            const Known sum = Sum(*step.current);
            known_[step.current] = sum;
            path.pop_back();
        }
        return known_[start].count;
    }

    void List(const Template* start, Asset& asset) {
        std::vector<Step> path;
        const auto enter = [&path, this](const Template* definition) {
            if (const Template* next = known_[definition].next)
                path.push_back({next, next->GetParentCount() - 1});
        };
        enter(start);
        while (!path.empty() && stored_ < capacity_) {
            Step& step = path.back();
            if (step.nextParent >= 0) {
                enter(step.current->GetParentAt(step.nextParent--));
                continue;
            }
            StoreOwn(*step.current, asset);
            path.pop_back();
        }
    }

    void StoreOwn(const Template& owner, Asset& asset) {
        const auto& own = owner.GetOwnProperties();
        for (int i = own.GetCount() - 1; i >= 0 && stored_ < capacity_; --i) {
            if (IsCompatible(own.GetAt(i)))
                found_[stored_++] = asset.GetPropertyInstance(own.GetAt(i)->GetFullName(), true);
        }
    }

    bool child_;
    int capacity_;
    PropertyInstance** found_;
    int stored_ = 0;
    std::int64_t total_ = 0;
    std::unordered_map<const Template*, Known> known_;
};

} // namespace

int FindCompatibleAnchors(const AnchorProperty& anchor, int capacity, PropertyInstance** found) {
    AnchorSearch search(anchor.IsChild(), capacity, found);
    AssetManager* scene = AssetManager::Get();
    const std::vector<Asset*> assets =
        scene ? scene->GetAssets().Snapshot() : std::vector<Asset*>();
    for (auto asset = assets.rbegin(); asset != assets.rend(); ++asset) {
        const NodeInstance* node = FindAssetNode(**asset);
        if (node && *node->GetBinding())
            search.Search(**asset);
    }
    return search.GetTotal();
}

} // namespace Kor
