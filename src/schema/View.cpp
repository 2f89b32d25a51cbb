#include "schema/View.h"

#include "core/Names.h"
#include "schema/Template.h"

namespace Kor {

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
