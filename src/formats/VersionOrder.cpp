#include "formats/VersionOrder.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <unordered_set>
#include <utility>

// The root is what a version without parents descends from.
#include "manager/TemplateManager.h"

#include "schema/AttributeProperty.h"
#include "schema/Template.h"
#include "schema/TemplateWalk.h"

namespace Kor {

namespace {

/// What happens at one time, in the order in which a reader is told of it.
enum Rank { kHidden, kCreation, kParent, kProperty };

struct Event {
    unsigned time;
    Rank rank;
    size_t at; ///< The version, counted from the lowest.
    size_t place;
    VersionStep step;
    unsigned realTime; ///< Of what is told later than it happened, else 0.

    bool operator<(const Event& other) const {
        return std::tie(time, rank, realTime, at, place) <
               std::tie(other.time, other.rank, other.realTime, other.at, other.place);
    }
};

/// The times at which versions were made, of which one after the other is taken out.
class CreationTimes {
public:
    void Reset(const std::vector<unsigned>& times) {
        sorted_ = times;
        std::sort(sorted_.begin(), sorted_.end());
        removed_.assign(sorted_.size() + 1, 0);
    }

    void Remove(unsigned time) {
        for (size_t i = CountAll(time) + 1; i < removed_.size(); i += i & (~i + 1))
            ++removed_[i];
    }

    /// How many of those that are left come before a time.
    size_t CountBefore(unsigned time) const {
        const size_t all = CountAll(time);
        size_t gone = 0;
        for (size_t i = all; i > 0; i &= i - 1)
            gone += removed_[i];
        return all - gone;
    }

private:
    size_t CountAll(unsigned before) const {
        const auto found = std::lower_bound(sorted_.begin(), sorted_.end(), before);
        return static_cast<size_t>(found - sorted_.begin());
    }

    std::vector<unsigned> sorted_;
    std::vector<size_t> removed_; // summed up as in a Fenwick tree
};

/// Collects what happened to the versions of a template, from the lowest to the highest.
class History {
public:
    History(const std::vector<const Template*>& versions, const Template* origin)
        : versions_(versions) {
        if (origin)
            Know(TakeNew(*origin));
        for (size_t at = 0; at < versions.size(); ++at)
            times_.push_back(at == 0 ? 0 : versions[at]->GetCreationTime());
        laterTimes_.Reset(times_);
        for (size_t at = 0; at < versions.size(); ++at) {
            if (at > 0)
                Add(times_[at], kCreation, at, {versions[at], nullptr, nullptr, true});
            laterTimes_.Remove(times_[at]);
            const std::vector<const Property*> declared = TakeNew(*versions[at]);
            AddProperties(at, declared);
            AddParents(at, at > 0 ? versions[at - 1] : origin);
            Know(declared);
        }
        std::sort(events_.begin(), events_.end());
        TellParentsBehindVersionsOfTheRoot();
    }

    /// A version is made by the first step that names it: where that is not told next, it is made
    /// by a parent that is known.
    std::vector<VersionStep> GetSteps() {
        std::vector<VersionStep> steps;
        for (size_t i = 0; i < events_.size(); ++i) {
            const Event& event = events_[i];
            if (event.rank != kCreation) {
                steps.push_back(event.step);
            } else if (!IsMadeByNext(i)) {
                steps.push_back(event.step);
                steps.back().parent = FindKnownParent(event.at);
            }
        }
        return steps;
    }

private:
    /// Whether the event behind a creation makes that version. A type is looked for before the
    /// version of its attribute is made: one that is that version itself was there before.
    bool IsMadeByNext(size_t creation) const {
        if (creation + 1 == events_.size())
            return false;
        const Event& next = events_[creation + 1];
        return next.at == events_[creation].at && next.rank != kHidden &&
               !(next.step.property && GetOwnType(next.step) == next.step.version);
    }

    /// A version that only has the root is made by naming that, which all later versions get, too:
    /// none of them may have another parent by then.
    void TellParentsBehindVersionsOfTheRoot() {
        std::vector<unsigned> latest(versions_.size() + 1, 0); // for the versions above each
        for (size_t i = 0; i < events_.size(); ++i) {
            const Event& event = events_[i];
            if (event.rank == kCreation && !IsMadeByNext(i) && HasOnlyRoot(event.at))
                latest[event.at + 1] = event.time;
        }
        for (size_t at = 1; at < latest.size(); ++at)
            latest[at] = std::max(latest[at], latest[at - 1]);
        parents_.clear();
        for (Event& event : events_) {
            if (event.rank != kParent)
                continue;
            if (event.time < latest[event.at]) {
                event.time = latest[event.at];
                event.realTime = event.step.version->GetParentTime(*event.step.parent);
            }
            parents_[event.step.parent].emplace_back(event.at, event.time);
        }
        std::sort(events_.begin(), events_.end());
    }

    bool HasOnlyRoot(size_t at) const {
        const Template* known = FindKnownParent(at);
        return known && known->GetParentCount() == 0;
    }

    /// The version of the same template that an attribute has as its type, or null.
    static const Template* GetOwnType(const VersionStep& step) {
        const auto* attribute = ObjectCast<AttributeProperty>(step.property);
        const auto* type = ObjectCast<Template>(attribute ? attribute->GetType() : nullptr);
        return type && type->GetFullName() == step.version->GetFullName() ? type : nullptr;
    }

    void Add(unsigned time, Rank rank, size_t at, const VersionStep& step) {
        events_.push_back({time, rank, at, events_.size(), step, 0});
    }

    /// Of a version that is not the first, only what the version below lacks; never the root.
    void AddParents(size_t at, const Template* lower) {
        const Template& version = *versions_[at];
        for (const Template* parent : version.GetParents()) {
            const bool isRoot = parent->GetParentCount() == 0 && !parent->IsRecycled();
            if (isRoot || (lower && lower->GetParent(parent->GetKey())))
                continue;
            const unsigned time =
                GetToldTime(at, std::max(version.GetParentTime(*parent), times_[at]));
            Add(time, kParent, at, {&version, nullptr, parent, false});
            parents_[parent].emplace_back(at, time);
        }
    }

    /// A parent comes first in its version, unless properties came in between to which it may make
    /// a difference: newer ones that it has keep older ones out of later versions, and a type is
    /// looked for before the version of its attribute is made.
    unsigned GetToldTime(size_t at, unsigned time) const {
        const bool hasLater = laterTimes_.CountBefore(time) > 0;
        const bool matters =
            HasBetween(propertyTimes_, times_[at], time) ||
            ((hasLater || isMadeByOwnType_) && HasBetween(ownTimes_, times_[at], time));
        return matters ? time : times_[at];
    }

    static bool HasBetween(const std::set<unsigned>& times, unsigned after, unsigned before) {
        const auto found = times.upper_bound(after);
        return found != times.end() && *found < before;
    }

    void AddProperties(size_t at, const std::vector<const Property*>& declared) {
        const Template& version = *versions_[at];
        std::vector<std::pair<const Property*, unsigned>> own;
        std::vector<const Property*> hidden;
        for (const Property* property : declared) {
            if (IsKnown(*property))
                continue;
            if (version.PeekProperty(property->GetKey(), false) == property)
                own.emplace_back(property, std::max(property->GetTime(), times_[at]));
            else
                hidden.push_back(property);
        }
        for (auto& [property, time] : own) // what it was copied from is gone: its values are told
            property = version.GetPeeked(*property);
        for (const Property* property : hidden)
            AddHidden(*version.GetPeeked(*property), at);
        KeepDeclarationOrder(own);
        propertyTimes_.merge(ownTimes_);
        ownTimes_.clear();
        isMadeByOwnType_ =
            at > 0 && !own.empty() && GetOwnType({&version, own[0].first, nullptr, false});
        for (const auto& [property, time] : own) {
            Add(time, kProperty, at, {&version, property, nullptr, false});
            ownTimes_.insert(time);
        }
    }

    /// Between two creations of later versions the properties keep the order in which they are
    /// declared, which a host may choose, and come at the times at which one of them came.
    void KeepDeclarationOrder(std::vector<std::pair<const Property*, unsigned>>& own) const {
        std::stable_sort(own.begin(), own.end(), [this](const auto& a, const auto& b) {
            return laterTimes_.CountBefore(a.second) < laterTimes_.CountBefore(b.second);
        });
        std::vector<unsigned> times;
        times.reserve(own.size());
        for (const auto& [property, time] : own)
            times.push_back(time);
        std::sort(times.begin(), times.end());
        for (size_t i = 0; i < own.size(); ++i)
            own[i].second = times[i];
    }

    /// An older definition, which no lower version has any more: it goes to one of these, so that
    /// this version has it before the newer one.
    void AddHidden(const Property& property, size_t at) {
        size_t lower = at;
        while (lower > 0 && versions_[lower - 1]->GetVersion() > property.GetVersion())
            --lower;
        if (lower == 0 || times_[lower - 1] > times_[at] ||
            versions_[lower - 1]->PeekProperty(property.GetKey(), false))
            return;
        Add(times_[at], kHidden, lower - 1, {versions_[lower - 1], &property, nullptr, false});
    }

    /// What a version declares, but for what it has unchanged from another one.
    std::vector<const Property*> TakeNew(const Template& version) const {
        std::vector<const Property*> declared;
        version.VisitDeclared(
            walk_, [&declared](const Property& property) { declared.push_back(&property); });
        return declared;
    }

    void Know(const std::vector<const Property*>& declared) {
        for (const Property* property : declared) {
            known_.insert(property);
            knownNames_.emplace(property->GetKey(), property->GetVersion());
        }
    }

    /// Whether a lower version has the property, or what it is a copy of.
    bool IsKnown(const Property& property) const {
        return known_.count(&property) > 0 ||
               (property.GetKeeper() &&
                knownNames_.count({property.GetKey(), property.GetVersion()}) > 0);
    }

    /// A parent that the version is made with: one that the version below has by then. The root has
    /// none, so that a version of it in which nothing is new cannot be told.
    const Template* FindKnownParent(size_t at) const {
        size_t below = at - 1;
        while (below > 0 && times_[below] > times_[at])
            --below;
        for (const Template* parent : versions_[below]->GetParents()) {
            if (HadParent(below, parent, times_[at]))
                return parent;
        }
        const TemplateManager* manager = TemplateManager::Get();
        return manager && versions_[at]->GetParentCount() > 0 ? manager->GetRoot() : nullptr;
    }

    bool HadParent(size_t at, const Template* parent, unsigned time) const {
        const auto told = parents_.find(parent);
        return told != parents_.end() &&
               std::any_of(told->second.begin(), told->second.end(), [&](const auto& added) {
                   return added.first <= at && added.second < time;
               });
    }

    const std::vector<const Template*>& versions_;
    std::uint64_t walk_ = NextTemplateWalk(); // through all versions; no other starts meanwhile
    std::vector<unsigned> times_; // at which the versions were made; the first one was always there
    CreationTimes laterTimes_;    // of those above the version at hand
    std::vector<Event> events_;
    std::set<unsigned> propertyTimes_; // those of lower versions
    std::set<unsigned> ownTimes_;      // and those of the version at hand
    bool isMadeByOwnType_ = false;     // whether that one begins with an attribute of its type
    std::unordered_map<const Template*, std::vector<std::pair<size_t, unsigned>>> parents_;
    std::unordered_set<const Property*> known_;
    std::set<std::pair<std::string_view, int>> knownNames_;
};

} // namespace

std::vector<VersionStep> OrderVersionSteps(const std::vector<const Template*>& versions,
                                           const Template* origin) {
    return History(versions, origin).GetSteps();
}

} // namespace Kor
