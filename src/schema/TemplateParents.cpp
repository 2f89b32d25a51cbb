// The part of a template that keeps its parents and children.

#include <algorithm>
#include <vector>

#include "schema/Template.h"

// The root, to which templates without parents fall back, is the manager's.
#include "manager/TemplateManager.h"

#include "core/MakeRoom.h"
#include "core/Undo.h"
#include "schema/SchemaHistory.h"
#include "schema/SchemaRevision.h"
#include "schema/TemplateLinks.h"

namespace Kor {

int Template::AddParent(Template* parent) {
    if (GetLatestVersion() > 1)
        parentTimes_.MakeRoom();
    const int result = PlaceParent(parent);
    if (result >= 0 && GetLatestVersion() > 1)
        parentTimes_.Set(parent, SchemaHistory::Next());
    return result;
}

int Template::PlaceParent(Template* parent) {
    if (!MayGetParent(parent))
        return -1;
    TemplateManager* manager = TemplateManager::Get();
    Template* root = manager ? manager->GetRoot() : nullptr;
    const bool onlyHasRoot = parents_.GetCount() == 1 && parents_.GetAt(0) == root;
    SchemaRevision::Advance();
    if (onlyHasRoot && parent == root)
        return 0;
    MakeRoomForParent(*parent);
    if (onlyHasRoot)
        UnlinkParent(root);
    return LinkParent(parent);
}

bool Template::MayGetParent(const Template* parent) const {
    return parent != this && !(MayHaveDescendants() && parent->IsDescendantOf(this));
}

/// Linking the parent next needs no memory then.
void Template::MakeRoomForParent(Template& parent) {
    parents_.MakeRoom();
    MakeRoom(formerParents_);
    parent.children_.MakeRoomFor(key_);
    parent.unlistedChildren_.MakeRoom();
}

int Template::LinkParent(Template* parent) {
    Template* replaced = nullptr;
    const int result = parents_.Insert(parent, &replaced);
    if (result >= 0) {
        formerParents_.TakeOut(parent);
        parent->LinkChild(this);
    } else if (replaced != parent) {
        ReplaceParent(replaced, parent);
    }
    return result;
}

/// False for most templates that get their first parents, which saves the walk through all
/// ancestors. Descent goes by key, so that the children of another template of the same key count,
/// registered or not.
bool Template::MayHaveDescendants() const {
    return HasChildren() || !IsOnlyOneOfItsKey();
}

/// The new parent does not show this child. The replaced one goes on doing so until it, too, is
/// removed as a parent.
void Template::ReplaceParent(Template* replaced, Template* parent) {
    if (!replaced->unlistedChildren_.RemoveExactly(this))
        formerParents_.push_back(replaced);
    if (!formerParents_.TakeOut(parent))
        parent->unlistedChildren_.Place(this);
}

void Template::LinkChild(Template* child) {
    unlistedChildren_.RemoveExactly(child);
    Template* replaced = nullptr;
    children_.Insert(child, &replaced);
    if (replaced && replaced != child)
        unlistedChildren_.Place(replaced);
}

/// A child that this one had pushed out of the list by having the same key returns to it.
void Template::UnlinkChild(Template* child) {
    if (unlistedChildren_.RemoveExactly(child))
        return;
    Template* hidden = unlistedChildren_.Get(child->GetKey());
    if (!hidden)
        children_.RemoveExactly(child);
    else if (children_.Replace(child, hidden))
        unlistedChildren_.RemoveExactly(hidden);
}

void Template::UnlinkParent(Template* parent) {
    if (parents_.RemoveExactly(parent))
        parent->UnlinkChild(this);
    parentTimes_.Forget(parent);
    SchemaRevision::Advance();
}

int Template::RemoveParent(Template* parent) {
    const int index = parents_.FindEntry(parent);
    TemplateManager* manager = TemplateManager::Get();
    Template* root = manager ? manager->GetRoot() : nullptr;
    const bool isLast = parents_.GetCount() == (index >= 0 ? 1 : 0);
    const bool fallsBack = isLast && root && parent != root && MayGetParent(root);
    if (fallsBack)
        MakeRoomForParent(*root);
    if (index >= 0)
        UnlinkParent(parents_.GetAt(index));
    if (formerParents_.TakeOut(parent))
        parent->UnlinkChild(this);
    if (fallsBack)
        LinkParent(root);
    return index;
}

void Template::DropParents(const Template* kept) {
    for (int i = parents_.GetCount() - 1; i >= 0; --i) {
        if (parents_.GetAt(i) != kept)
            UnlinkParent(parents_.GetAt(i));
    }
    for (Template* former : formerParents_)
        former->UnlinkChild(this);
    formerParents_.clear();
}

void Template::ShareChildren(Template* fallback) {
    if (!fallback || fallback == this)
        return;
    std::vector<Template*> orphans;
    ForEachChild([&](Template* child) {
        const bool isOnly = child->parents_.GetCount() == 1 && child->parents_.GetAt(0) == this;
        if (child != fallback && (isOnly || child->parents_.IsEmpty()))
            orphans.push_back(child);
    });
    size_t shared = 0;
    Undo all([&] {
        while (shared > 0)
            orphans[--shared]->UnlinkParent(fallback);
    });
    for (; shared < orphans.size(); ++shared)
        orphans[shared]->AddParent(fallback);
    all.Commit();
}

void Template::DropChildren() {
    ForEachChild([this](Template* child) {
        child->parents_.RemoveExactly(this);
        child->parentTimes_.Forget(this);
        child->formerParents_.TakeOut(this);
    });
    children_.Clear();
    unlistedChildren_.Clear();
}

} // namespace Kor
