#include "schema/View.h"

#include "core/Names.h"
#include "schema/Template.h"

namespace Kor {

std::unique_ptr<Object> View::Clone() const {
    std::unique_ptr<View> copy(new View(*this));
    copy->CopyItems(*this);
    return copy;
}

bool View::SetName(const char* name) {
    if (!IsValidName(TextOf(name)))
        return false;
    Template* lister = owner_ && owner_->ListsView(*this) ? owner_ : nullptr;
    if (lister)
        lister->UnlistView(*this);
    StoreName(TextOf(name));
    if (lister)
        lister->ListView(*this);
    return true;
}

} // namespace Kor
