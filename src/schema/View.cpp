#include "schema/View.h"

#include <algorithm>

#include "core/Names.h"
#include "schema/Template.h"

namespace Kor {

void View::Leave() noexcept {
    SetTemplate(nullptr);
    for (Template* lister : listers_)
        lister->UnlistView(*this);
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
    for (Template* lister : listers_)
        lister->MakeRoomForView();
    for (Template* lister : listers_)
        lister->UnlistView(*this);
    SwapName(stored);
    for (Template* lister : listers_)
        lister->ListView(*this);
    return true;
}

void View::SetTemplate(Template* owner) {
    if (owner)
        owner->MakeRoomForTiedView();
    if (owner_)
        owner_->UntieView(*this);
    owner_ = owner;
    if (owner_)
        owner_->TieView(*this);
}

void View::AddLister(Template* lister) {
    if (listers_.FindInFewSteps(lister) == PointerList<Template>::kNotFound)
        listers_.push_back(lister);
}

void View::RemoveLister(Template* lister) {
    listers_.TakeOut(lister);
}

} // namespace Kor
