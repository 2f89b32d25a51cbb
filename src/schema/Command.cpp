#include "schema/Command.h"

#include <algorithm>

#include "core/Names.h"
#include "schema/Property.h"

namespace Kor {

void Command::Leave() noexcept {
    for (Property* lister : listers_)
        lister->UnlistCommand(*this);
    listers_.clear();
    NamedObject::Leave();
}

bool Command::SetName(const char* name) {
    if (!IsValidName(TextOf(name)))
        return false;
    CompactString stored(TextOf(name)); // first, since no list has the command while it is renamed
    for (Property* lister : listers_)
        lister->UnlistCommand(*this);
    SwapName(stored);
    for (Property* lister : listers_)
        lister->ListCommand(*this);
    return true;
}

void Command::RemoveLister(Property* lister) {
    listers_.TakeOut(lister);
    if (listers_.empty())
        EndUnlisted();
}

} // namespace Kor
