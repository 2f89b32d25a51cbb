#include "schema/View.h"

#include <algorithm>

#include "core/Names.h"
#include "schema/Template.h"

namespace Kor {

void View::Leave() noexcept {
    SetTemplate(nullptr);
    for (TemplateViews* lister : listers_)
        lister->Unlist(*this);
    listers_.clear();
    Group::Leave();
}

std::unique_ptr<Object> View::Clone() const {
    std::unique_ptr<View> copy(new View(*this));
    copy->CopyItems(*this);
    return copy;
}

bool View::SetName(const char* name) {
    if (!IsValidName(TextOf(name)))
        return false;
    CompactString stored(TextOf(name)); // first, since no list has the view while it is renamed
    for (TemplateViews* lister : listers_)
        lister->MakeRoom();
    for (TemplateViews* lister : listers_)
        lister->Unlist(*this);
    SwapName(stored);
    for (TemplateViews* lister : listers_)
        lister->List(*this);
    return true;
}

void View::SetTemplate(Template* owner) {
    if (owner)
        owner->GetViews().MakeRoomToTie();
    if (owner_)
        owner_->GetViews().Untie(*this);
    owner_ = owner;
    if (owner_)
        owner_->GetViews().Tie(*this);
}

void View::AddLister(TemplateViews* lister) {
    if (listers_.FindInFewSteps(lister) == PointerList<TemplateViews>::kNotFound)
        listers_.push_back(lister);
}

void View::RemoveLister(TemplateViews* lister) {
    listers_.TakeOut(lister);
}

} // namespace Kor
