#include "xml/VersionOrder.h"

#include <queue>
#include <unordered_map>
#include <unordered_set>

#include "schema/Template.h"

namespace Kor {

namespace {

/// The steps as nodes of a graph whose edges say which must come first.
class StepGraph {
public:
    explicit StepGraph(const std::vector<const Template*>& versions) {
        for (size_t i = 0; i < versions.size(); ++i)
            AddVersion(*versions[i], i > 0 ? versions[i - 1] : nullptr);
        for (size_t i = 1; i < versions.size(); ++i)
            AddCreation(versions, i);
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
    size_t AddStep(const VersionStep& step) {
        steps_.push_back(step);
        followers_.emplace_back();
        blockers_.push_back(0);
        return steps_.size() - 1;
    }

    void AddVersion(const Template& version, const Template* lower) {
        const size_t first = steps_.size();
        const bool hasParents = !GetIntroducedParents(version, lower).empty();
        if (hasParents)
            AddStep({&version, lower, nullptr, false});
        for (const Property* property : version.GetDeclaredProperties()) {
            if (property->GetOwner() == &version && property->GetVersion() == version.GetVersion())
                nodes_.emplace(property, AddStep({&version, lower, property, false}));
        }
        if (steps_.size() == first && lower)
            AddStep({&version, lower, nullptr, true});
        ranges_.push_back({first, steps_.size()});
    }

    /// The first step of a version makes it: what it shares with lower versions comes after, what
    /// it has copies of before.
    void AddCreation(const std::vector<const Template*>& versions, size_t at) {
        const auto [creation, end] = ranges_[at];
        for (size_t step = creation + 1; step < end; ++step)
            AddEdge(creation, step);
        const auto& declared = versions[at]->GetDeclaredProperties();
        const std::unordered_set<const Property*> shared(declared.begin(), declared.end());
        for (size_t step = 0; step < creation; ++step) {
            const Property* property = steps_[step].property;
            if (!property)
                continue;
            if (shared.count(property))
                AddEdge(creation, step);
            else
                AddEdge(step, creation);
        }
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
