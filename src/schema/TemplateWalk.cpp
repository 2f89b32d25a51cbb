#include "schema/TemplateWalk.h"

#include <algorithm>
#include <limits>
#include <unordered_map>

#include "core/Names.h"
#include "schema/SchemaRevision.h"

namespace Kor {

std::uint64_t NextTemplateWalk() {
    static std::uint64_t last = 0;
    return ++last;
}

bool Template::Visit(std::uint64_t walk) const {
    if (lastWalk_ == walk)
        return false;
    lastWalk_ = walk;
    return true;
}

bool Template::IsDescendantOf(const Template* other) const {
    const std::string_view key = other->GetKey();
    return WalkAncestors(
        this, [key](const Template& current) { return current.GetParents().Find(key) >= 0; });
}

/// The template itself or the first ancestor that has a property of the name.
const Template* Template::FindOwner(std::string_view name, bool includeInherited) const {
    if (!includeInherited)
        return this;
    const Template* owner = nullptr;
    WalkAncestors(this, [&](const Template& current) {
        owner = current.FindOwn(name, &Template::PeekEntry) ? &current : nullptr;
        return owner != nullptr;
    });
    return owner;
}

View* Template::GetView(std::string_view name, bool includeInherited) const {
    if (!includeInherited)
        return views_.Get(name);
    View* found = nullptr;
    WalkAncestors(this, [&](const Template& current) {
        found = current.views_.Get(name);
        return found != nullptr;
    });
    return found;
}

const std::vector<Property*>& Template::GetInstanceProperties() const {
    if (instancePropertiesRevision_ == SchemaRevision::Get())
        return instanceProperties_;
    instanceProperties_.clear();
    WalkFromRoots(this, [this](const Template& current) {
        for (Property* property : current.GetOwnProperties())
            instanceProperties_.push_back(property);
    });
    const auto byFullName = [](const Property* a, const Property* b) {
        return a->GetFullName() < b->GetFullName();
    };
    const auto sameFullName = [](const Property* a, const Property* b) {
        return a->GetFullName() == b->GetFullName();
    };
    std::stable_sort(instanceProperties_.begin(), instanceProperties_.end(), byFullName);
    instanceProperties_.erase(
        std::unique(instanceProperties_.begin(), instanceProperties_.end(), sameFullName),
        instanceProperties_.end());
    instancePropertiesRevision_ = SchemaRevision::Get();
    return instanceProperties_;
}

namespace {

using Counts = std::unordered_map<const Template*, int>;

int AddClamped(int a, int b) {
    return a > std::numeric_limits<int>::max() - b ? std::numeric_limits<int>::max() : a + b;
}

/// The descendant counts of a template and all below it: each is counted once and added up along
/// every path, so the number of paths does not matter.
Counts CountDescendants(const Template* start) {
    struct Step {
        const Template* current;
        int nextChild;
    };
    Counts counts;
    std::vector<Step> path{{start, 0}};
    while (!path.empty()) {
        Step& step = path.back();
        if (step.nextChild < step.current->GetChildCount()) {
            const Template* child = step.current->GetChildAt(step.nextChild++);
            if (counts.find(child) == counts.end())
                path.push_back({child, 0});
            continue;
        }
        int count = 1;
        for (int i = 0; i < step.current->GetChildCount(); ++i)
            count = AddClamped(count, counts[step.current->GetChildAt(i)]);
        counts[step.current] = count;
        path.pop_back();
    }
    return counts;
}

} // namespace

int Template::GetDescendantCount() const {
    return CountDescendants(this)[this];
}

Template* Template::GetDescendantAt(int index) {
    const Counts counts = CountDescendants(this);
    Template* current = this;
    if (index < 0 || index >= counts.at(this))
        return nullptr;
    while (index > 0) {
        --index;
        int child = current->GetChildCount() - 1;
        for (; child > 0; --child) {
            const int size = counts.at(current->GetChildAt(child));
            if (index < size)
                break;
            index -= size;
        }
        current = current->GetChildAt(child);
    }
    return current;
}

Template* Template::FindDescendant(std::string_view name) {
    const std::uint64_t walk = NextTemplateWalk();
    SmallStack<Template*> pending;
    pending.Push(this);
    while (!pending.IsEmpty()) {
        Template* current = pending.Pop();
        if (!current->Visit(walk))
            continue;
        if (EqualsIgnoreCase(current->GetNameView(), name))
            return current;
        for (int i = 0; i < current->GetChildCount(); ++i)
            pending.Push(current->GetChildAt(i));
    }
    return nullptr;
}

bool Template::RefersTo(const Type* other, const char* excludedFile) const {
    const bool isTemplate = ObjectCast<Template>(other) != nullptr;
    const std::uint64_t walk = NextTemplateWalk();
    SmallStack<const Template*> pending;
    pending.Push(this);
    while (!pending.IsEmpty()) {
        const Template* current = pending.Pop();
        if (!current->Visit(walk))
            continue;
        if (excludedFile && EqualsIgnoreCase(excludedFile, current->GetFileName()))
            continue;
        if (other && (other == current || other == current->GetBaseType()))
            return true;
        for (int i = current->GetParentCount() - 1; isTemplate && i >= 0; --i)
            pending.Push(current->GetParentAt(i));
        bool found = false;
        current->VisitProperties(walk, [&](const Property& property) {
            const Type* type = property.GetContainedType();
            if (const auto* contained = ObjectCast<Template>(type))
                pending.Push(contained);
            else
                found = found || (type && type->RefersTo(other, excludedFile));
        });
        if (found)
            return true;
    }
    return false;
}

} // namespace Kor
