#include "schema/ViewItem.h"

#include <algorithm>

#include "schema/Group.h"

namespace Kor {

ViewItem::~ViewItem() {
    while (!groups_.empty())
        groups_.back()->ForgetItem(*this);
}

void ViewItem::RemoveGroup(Group* group) {
    const auto found = std::find(groups_.begin(), groups_.end(), group);
    if (found != groups_.end())
        groups_.erase(found);
}

} // namespace Kor
