#include "schema/Template.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <new>

// The root, to which templates without parents fall back, is the manager's.
#include "manager/TemplateManager.h"

#include "core/Kept.h"
#include "core/MakeRoom.h"
#include "core/Undo.h"
#include "schema/SchemaHistory.h"
#include "schema/SchemaRevision.h"
#include "schema/TemplateLinks.h"
#include "schema/TemplateWalk.h"

namespace Kor {

Template::Template(std::string_view name, int dimension, int alignment)
    : Type(name, dimension, alignment), VersionedObject(1), creationTime_(SchemaHistory::Next()) {
    Template::UpdateFullName();
}

Template::Template(const Template& source, AsVersion version)
    : Type(source), VersionedObject(source), latestVersion_(source.GetLatestVersion()),
      creationTime_(SchemaHistory::Next()) {
    VersionedObject::SetVersion(version.version);
    Template::UpdateFullName();
}

Template::~Template() {
    Template::Leave();
    ReleaseKey(key_);
}

void Template::Leave() noexcept {
    // A dying manager is out of reach already: then nobody falls back to its root.
    TemplateManager* manager = TemplateManager::Exists() ? TemplateManager::Get() : nullptr;
    try {
        ShareChildren(manager ? manager->GetRoot() : nullptr);
    } catch (const std::bad_alloc&) {
        // The children stay without a parent: there is nobody to tell.
    }
    Type::Leave();
    DropLinks();
    LeaveVersions();
}

std::unique_ptr<Object> Template::Clone() const {
    return MakeVersion(*this, GetVersion());
}

std::unique_ptr<Template> Template::MakeVersion(const Template& source, int version) {
    std::unique_ptr<Template> copy(new Template(source, AsVersion{version}));
    copy->CopyParentsAndProperties(source);
    return copy;
}

void Template::BecomeVersionOf(const Template& source) {
    SetPrevious(const_cast<Template*>(&source));
    SetVersionStatus(source.GetVersionStatus());
    CopyTexts(source);
    SetLatestVersion(source.GetLatestVersion());
    creationTime_ = SchemaHistory::Next();
    CopyParentsAndProperties(source);
    SetFileName(source.GetFileName());
}

void Template::CopyParentsAndProperties(const Template& source) {
    for (Template* parent : source.parents_)
        PlaceParent(parent);
    CopyProperties(source);
    SchemaRevision::Advance();
}

void Template::Redeclare(std::string_view name, std::string_view packageName, Type* base) {
    Type::Redeclare(name, packageName, base);
    SetLatestVersion(1);
    SetVersion(1);
}

// -- key and version ------------------------------------------------------------------------------

void Template::SetVersion(int version) {
    MakeRoomInSortedLists();
    const int former = GetVersion();
    LeaveSortedLists();
    Undo renumbered([&] {
        VersionedObject::SetVersion(former);
        EnterSortedLists();
    });
    VersionedObject::SetVersion(version);
    UpdateFullName();
    renumbered.Forget();
    EnterSortedLists();
}

void Template::UpdateFullName() {
    Type::UpdateFullName();
    std::string key = GetFullName();
    key.append(1, '#').append(std::to_string(GetVersion()));
    ++KeyCounts()[key];
    key_.swap(key);
    ReleaseKey(key);
    TellOfKey();
    SchemaRevision::Advance();
    if (instanceCount_ > 0)
        SchemaRevision::AdvanceKeys();
}

/// How many templates there are of each key, registered or not.
std::unordered_map<std::string, int, KeyHash>& Template::KeyCounts() {
    using Counts = std::unordered_map<std::string, int, KeyHash>;
    static NeverDestroyed<Counts> counts;
    static const EmptiedAtEnd<Counts> emptied(counts.Get());
    return counts.Get();
}

void Template::ReleaseKey(const std::string& key) {
    const auto found = KeyCounts().find(key);
    if (found != KeyCounts().end() && --found->second == 0)
        KeyCounts().erase(found);
}

bool Template::IsOnlyOneOfItsKey() const {
    return KeyCounts()[key_] == 1;
}

void Template::MakeRoomInSortedLists() {
    Type::MakeRoomInSortedLists();
    ForEachParent([](Template* parent) { parent->children_.MakeRoom(); });
}

void Template::LeaveSortedLists() {
    Type::LeaveSortedLists();
    ForEachParent([this](Template* parent) { parent->UnlinkChild(this); });
    ForEachChild([this](Template* child) { child->parents_.RemoveExactly(this); });
}

void Template::EnterSortedLists() {
    ForEachParent([this](Template* parent) { parent->children_.Place(this); });
    ForEachChild([this](Template* child) {
        if (child->formerParents_.FindInFewSteps(this) == PointerList<Template>::kNotFound)
            child->parents_.Place(this); // there is still the room that leaving made
    });
    Type::EnterSortedLists();
}

// -- lives ----------------------------------------------------------------------------------------

void Template::Clear(Template* fallback) {
    ShareChildren(fallback);
    DropLinks();
}

/// What clearing takes away; needs no memory.
void Template::DropLinks() {
    views_.Drop();
    DropParents(nullptr);
    DropChildren();
    DropProperties(false);
    DropRetired(false);
    ReleaseRemoved();
    views_.LetGo();
}

void Template::SortForClearing(std::vector<Template*>& templates) {
    std::sort(templates.begin(), templates.end(), [](const Template* a, const Template* b) {
        const int order = a->GetFullName().compare(b->GetFullName());
        return order == 0 ? a->GetVersion() > b->GetVersion() : order < 0;
    });
}

void Template::BeginRedefinition(Template* parent) {
    const int copies = inherited_ ? inherited_->CountCopies() : 0;
    retiredProperties_.reserve(retiredProperties_.size() + properties_.size() +
                               static_cast<size_t>(copies));
    if (parent)
        AddParent(parent);
    views_.Drop();
    DropParents(parent);
    DropProperties(true);
    DropRetired(true);
    creationTime_ = SchemaHistory::Next();
}

void Template::CollectPackages(std::set<std::string>& packages) const {
    CollectPackages({this}, packages);
}

/// Goes on into the templates that are contained, however deep and each once: where versions or
/// parents were added later, templates may even contain each other.
void Template::CollectPackages(const std::vector<const Type*>& types,
                               std::set<std::string>& packages) {
    const std::uint64_t walk = NextTemplateWalk();
    std::vector<const Template*> pending;
    for (const Type* type : types) {
        const auto* definition = ObjectCast<Template>(type);
        if (definition && definition->Visit(walk))
            pending.push_back(definition);
    }
    while (!pending.empty()) {
        const Template* current = pending.back();
        pending.pop_back();
        current->VisitProperties(walk, [&](const Property& property) {
            const auto* contained = ObjectCast<Template>(property.GetContainedType());
            if (!contained)
                property.CollectPackages(packages);
            else if (contained->Visit(walk))
                pending.push_back(contained);
        });
    }
}

} // namespace Kor
