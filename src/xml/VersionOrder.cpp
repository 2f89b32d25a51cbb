#include "xml/VersionOrder.h"

#include <algorithm>
#include <cstddef>
#include <queue>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "schema/AttributeProperty.h"
#include "schema/Template.h"

namespace Kor {

namespace {

/// The steps as nodes of a graph whose edges say which must come first.
class StepGraph {
public:
    explicit StepGraph(const std::vector<const Template*>& versions) {
        for (size_t i = 0; i < versions.size(); ++i)
            AddVersion(versions, i);
        for (size_t i = 1; i < versions.size(); ++i)
            AddCreation(versions, i);
        for (size_t i = 1; i < versions.size(); ++i)
            AddVersionsBetween(versions, i);
        AddLateParents();
        AddOwnTypes(versions);
        for (const Template* version : versions)
            AddDeclarationOrder(*version);
    }

    /// The steps, the first possible one in turn; circles, which no reader makes, are cut.
    std::vector<VersionStep> Sort() {
        std::vector<VersionStep> sorted;
        std::priority_queue<size_t, std::vector<size_t>, std::greater<>> ready;
        std::vector<bool> done(steps_.size(), false);
        for (size_t i = 0; i < steps_.size(); ++i) {
            if (blockers_[i] == 0)
                ready.push(i);
        }
        for (size_t next = 0; next < steps_.size();) {
            if (ready.empty()) {
                if (!done[next])
                    ready.push(next);
                ++next;
                continue;
            }
            const size_t step = ready.top();
            ready.pop();
            if (done[step])
                continue;
            done[step] = true;
            sorted.push_back(steps_[step]);
            for (const size_t follower : followers_[step]) {
                if (--blockers_[follower] == 0)
                    ready.push(follower);
            }
        }
        return sorted;
    }

private:
    using NamedProperties = std::unordered_multimap<std::string_view, const Property*, KeyHash>;

    size_t AddStep(const VersionStep& step) {
        steps_.push_back(step);
        followers_.emplace_back();
        blockers_.push_back(0);
        return steps_.size() - 1;
    }

    /// The properties that a version introduces, and what they tell about how it came into being.
    struct Own {
        std::vector<const Property*> properties;
        bool foundVersion = false; ///< It was there before the first of them.
        bool madeVersion = false;  ///< It came with the first of them.
    };

    static Own CollectOwn(const std::vector<const Template*>& versions, size_t at) {
        const Template& version = *versions[at];
        Own own;
        for (const Property* property : version.GetDeclaredProperties()) {
            const bool isFirst = own.properties.empty();
            // A template made from another one has copies of its own version, which it keeps.
            if (property->GetOwner() == &version && property->GetKeeper() != &version &&
                property->GetVersion() == version.GetVersion()) {
                own.properties.push_back(property);
                const auto* type = ObjectCast<Template>(GetTypeOf(*property));
                const bool isOwnType = type && type->GetFullName() == version.GetFullName();
                own.foundVersion =
                    own.foundVersion ||
                    (isFirst && (type == &version || CameAfterACopy(*property, versions, at)));
                own.madeVersion = own.madeVersion || (isFirst && isOwnType &&
                                                      type->GetVersion() < version.GetVersion());
            } else if (isFirst && IsShared(*property, version)) {
                own.foundVersion = true;
            }
        }
        return own;
    }

    void AddVersion(const std::vector<const Template*>& versions, size_t at) {
        const Template* version = versions[at];
        const bool isLater = at > 0;
        const Template* lower =
            isLater ? versions[at - 1] : ObjectCast<Template>(version->GetBaseType());
        const size_t first = steps_.size();
        const std::vector<Template*> introduced = GetIntroducedParents(*version, lower);
        std::vector<const Property*> older = FindOlder(versions, at, introduced);
        const Own own = CollectOwn(versions, at);
        const bool madeByProperty = isLater && own.madeVersion;
        const bool parentsFirst = !introduced.empty() && older.empty() && !madeByProperty;
        if (parentsFirst)
            AddStep({version, lower, nullptr, false});
        else if (isLater && !madeByProperty && (own.properties.empty() || own.foundVersion))
            AddStep({version, lower, nullptr, true});
        for (const Property* property : own.properties)
            nodes_.emplace(property, AddStep({version, lower, property, false}));
        if (!introduced.empty() && !parentsFirst)
            lateParents_.emplace_back(AddStep({version, lower, nullptr, false}), std::move(older));
        ranges_.push_back({first, steps_.size()});
    }

    /// The properties that this or later versions share with lower ones although parents that this
    /// version introduces have newer ones of the name, which would keep them out: they were there
    /// before the parents.
    static std::vector<const Property*> FindOlder(const std::vector<const Template*>& versions,
                                                  size_t at,
                                                  const std::vector<Template*>& introduced) {
        std::vector<const Property*> older;
        for (size_t i = std::max<size_t>(at, 1); i < versions.size() && !introduced.empty(); ++i) {
            for (const Property* property : versions[i]->GetDeclaredProperties()) {
                const bool shared = property->GetOwner() && property->GetOwner() != versions[i];
                const bool hidden =
                    shared &&
                    std::any_of(introduced.begin(), introduced.end(), [&](Template* parent) {
                        const Property* other = parent->GetProperty(property->GetKey(), true);
                        return other && other->GetVersion() > property->GetVersion();
                    });
                if (hidden)
                    older.push_back(property);
            }
        }
        return older;
    }

    /// An attribute that refers to its own template got the version that was the latest.
    void AddOwnTypes(const std::vector<const Template*>& versions) {
        for (const auto& [property, node] : nodes_) {
            const auto type = std::find(versions.begin(), versions.end(), GetTypeOf(*property));
            for (auto version = type; version != versions.end(); ++version) {
                const size_t creation =
                    ranges_[static_cast<size_t>(version - versions.begin())].first;
                if (version == versions.begin() || creation == node)
                    continue;
                if (version == type)
                    AddEdge(creation, node);
                else
                    AddEdge(node, creation);
            }
        }
    }

    /// Whether the property is a lower version's own; copies have the version's or no owner.
    static bool IsShared(const Property& property, const Template& version) {
        return property.GetOwner() && property.GetOwner() != &version;
    }

    /// Whether a higher version was copied from this one without the property.
    static bool CameAfterACopy(const Property& property,
                               const std::vector<const Template*>& versions, size_t at) {
        const auto isCopy = [&property](const Property* other) {
            return other != &property && other->GetKey() == property.GetKey() &&
                   other->GetVersion() == property.GetVersion();
        };
        return std::any_of(versions.begin() + static_cast<std::ptrdiff_t>(at) + 1, versions.end(),
                           [&](const Template* higher) {
                               const auto& listed = higher->GetDeclaredProperties();
                               return higher->GetPrevious() == versions[at] &&
                                      std::none_of(listed.begin(), listed.end(), isCopy);
                           });
    }

    static const Type* GetTypeOf(const Property& property) {
        const auto* attribute = ObjectCast<AttributeProperty>(&property);
        return attribute ? attribute->GetType() : nullptr;
    }

    void AddLateParents() {
        for (const auto& [parents, older] : lateParents_) {
            for (const Property* property : older) {
                const auto node = nodes_.find(property);
                if (node != nodes_.end())
                    AddEdge(node->second, parents);
            }
        }
    }

    /// The first step of a version makes it; where the properties of lower versions stand to that
    /// shows in what the version has of them.
    void AddCreation(const std::vector<const Template*>& versions, size_t at) {
        const auto [creation, end] = ranges_[at];
        for (size_t step = creation + 1; step < end; ++step)
            AddEdge(creation, step);
        const auto& declared = versions[at]->GetDeclaredProperties();
        const std::unordered_set<const Property*> listed(declared.begin(), declared.end());
        NamedProperties named;
        for (const Property* property : declared)
            named.emplace(property->GetKey(), property);
        for (size_t step = 0; step < creation; ++step) {
            if (!steps_[step].property)
                continue;
            if (listed.count(steps_[step].property))
                AddEdge(creation, step);
            else
                AddUnshared(step, creation, named);
        }
    }

    /// A property of which the version has a copy was there before it. One of which it has nothing
    /// came after a newer definition that kept it out; the versions above say nothing more then.
    void AddUnshared(size_t step, size_t creation, const NamedProperties& named) {
        const Property* property = steps_[step].property;
        const auto [first, last] = named.equal_range(property->GetKey());
        const bool copied = std::any_of(first, last, [property](const auto& other) {
            return other.second->GetVersion() == property->GetVersion();
        });
        if (copied) {
            AddEdge(step, creation);
        } else if (keptOut_.insert(property).second) {
            AddEdge(creation, step);
            for (auto newer = first; newer != last; ++newer) {
                const auto node = nodes_.find(newer->second);
                if (node != nodes_.end() && node->second != step)
                    AddEdge(node->second, step);
            }
        }
    }

    /// A version is a copy of the nearest lower one that there was: those in between came later.
    void AddVersionsBetween(const std::vector<const Template*>& versions, size_t at) {
        const VersionedObject* source = versions[at]->GetPrevious();
        size_t below = at;
        while (below > 0 && versions[below - 1] != source)
            --below;
        if (below == 0) // made by hand or from a version that is gone
            return;
        for (size_t between = below; between < at; ++between)
            AddEdge(ranges_[at].first, ranges_[between].first);
    }

    void AddDeclarationOrder(const Template& version) {
        const Property* previous = nullptr;
        for (const Property* property : version.GetDeclaredProperties()) {
            if (!nodes_.count(property))
                continue;
            if (previous)
                AddEdge(nodes_[previous], nodes_[property]);
            previous = property;
        }
    }

    void AddEdge(size_t before, size_t after) {
        followers_[before].push_back(after);
        ++blockers_[after];
    }

    struct Range {
        size_t first;
        size_t end;
    };

    std::vector<VersionStep> steps_;
    std::vector<std::vector<size_t>> followers_;
    std::vector<int> blockers_;
    std::vector<Range> ranges_;
    std::unordered_map<const Property*, size_t> nodes_;
    std::unordered_set<const Property*> keptOut_;
    std::vector<std::pair<size_t, std::vector<const Property*>>> lateParents_;
};

} // namespace

std::vector<Template*> GetIntroducedParents(const Template& version, const Template* lower) {
    std::vector<Template*> introduced;
    for (Template* parent : version.GetParents()) {
        const bool known = lower && lower->GetParent(parent->GetKey());
        if (!known && parent->GetParentCount() > 0)
            introduced.push_back(parent);
    }
    return introduced;
}

std::vector<VersionStep> OrderVersionSteps(const std::vector<const Template*>& versions) {
    return StepGraph(versions).Sort();
}

} // namespace Kor
