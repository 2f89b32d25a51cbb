#include "schema/ViewItem.h"

#include <algorithm>
#include <utility>

#include "core/TakeOut.h"
#include "schema/Group.h"

namespace Kor {

void ViewItem::Leave() noexcept {
    while (!groups_.empty())
        groups_.back()->ForgetItem(*this);
    NamedObject::Leave();
}

void ViewItem::RemoveGroup(Group* group) {
    TakeOut(groups_, group);
}

void ViewItem::PutLast(Group* group) {
    std::swap(*std::find(groups_.begin(), groups_.end(), group), groups_.back());
}

} // namespace Kor
