// The part of a template that keeps its parents and children.

#include <algorithm>
#include <vector>

#include "schema/Template.h"

// The root, to which templates without parents fall back, is the manager's.
#include "manager/TemplateManager.h"

#include "core/TakeOut.h"
#include "schema/SchemaRevision.h"

namespace Kor {

int Template::AddParent(Template* parent) {
    if (parent == this || (MayHaveDescendants() && parent->IsDescendantOf(this)))
        return -1;
    TemplateManager* manager = TemplateManager::Get();
    Template* root = manager ? manager->GetRoot() : nullptr;
    if (parents_.GetCount() == 1 && parents_.GetAt(0) == root)
        UnlinkParent(root);
    SchemaRevision::Advance();
    Template* replaced = nullptr;
    const int result = parents_.Insert(parent, &replaced);
    if (result >= 0) {
        TakeOut(formerParents_, parent);
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

/// Deliberately the new parent does not show this child, and the replaced one goes on doing so.
void Template::ReplaceParent(Template* replaced, Template* parent) {
    if (!TakeOut(replaced->unlistedChildren_, this))
        formerParents_.push_back(replaced);
    if (!TakeOut(formerParents_, parent))
        parent->unlistedChildren_.push_back(this);
}

void Template::LinkChild(Template* child) {
    TakeOut(unlistedChildren_, child);
    Template* replaced = nullptr;
    children_.Insert(child, &replaced);
    if (replaced && replaced != child)
        unlistedChildren_.push_back(replaced);
}

/// A child that this one had pushed out of the list by having the same key returns to it.
void Template::UnlinkChild(Template* child) {
    if (TakeOut(unlistedChildren_, child) || !children_.RemoveExactly(child))
        return;
    const auto hidden =
        std::find_if(unlistedChildren_.begin(), unlistedChildren_.end(),
                     [child](const Template* other) { return other->GetKey() == child->GetKey(); });
    if (hidden == unlistedChildren_.end())
        return;
    children_.Insert(*hidden);
    unlistedChildren_.erase(hidden);
}

void Template::UnlinkParent(Template* parent) {
    if (parents_.RemoveExactly(parent))
        parent->UnlinkChild(this);
    SchemaRevision::Advance();
}

int Template::RemoveParent(Template* parent) {
    const int index = parents_.FindEntry(parent);
    if (index >= 0)
        UnlinkParent(parents_.GetAt(index));
    if (TakeOut(formerParents_, parent))
        parent->UnlinkChild(this);
    TemplateManager* manager = TemplateManager::Get();
    Template* root = manager ? manager->GetRoot() : nullptr;
    if (parents_.IsEmpty() && root && parent != root)
        AddParent(root);
    return index;
}

void Template::DropParents() {
    while (!parents_.IsEmpty())
        UnlinkParent(parents_.GetAt(parents_.GetCount() - 1));
    for (Template* former : formerParents_)
        former->UnlinkChild(this);
    formerParents_.clear();
}

std::vector<Template*> Template::GetAllParents() const {
    std::vector<Template*> parents = parents_.GetAll();
    parents.insert(parents.end(), formerParents_.begin(), formerParents_.end());
    return parents;
}

std::vector<Template*> Template::GetAllChildren() const {
    std::vector<Template*> children = children_.Snapshot();
    children.insert(children.begin(), unlistedChildren_.begin(), unlistedChildren_.end());
    return children;
}

void Template::DropChildren(Template* fallback) {
    const std::vector<Template*> children = GetAllChildren();
    children_.Clear();
    unlistedChildren_.clear();
    for (auto child = children.rbegin(); child != children.rend(); ++child) {
        (*child)->parents_.RemoveExactly(this);
        TakeOut((*child)->formerParents_, this);
        if ((*child)->parents_.IsEmpty() && fallback && fallback != this && *child != fallback)
            (*child)->AddParent(fallback);
    }
}

} // namespace Kor
