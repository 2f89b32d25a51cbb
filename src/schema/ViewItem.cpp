#include "schema/ViewItem.h"

#include <algorithm>
#include <utility>

#include "schema/Group.h"

namespace Kor {

void ViewItem::Leave() noexcept {
    while (!groups_.empty())
        groups_.back()->ForgetItem(*this);
    NamedObject::Leave();
}

void ViewItem::RemoveGroup(Group* group) {
    groups_.TakeOut(group);
}

void ViewItem::PutLast(Group* group) {
    Group* last = groups_.back();
    groups_.Replace(groups_.FindInFewSteps(group), last);
    groups_.Replace(groups_.size() - 1, group);
}

} // namespace Kor
