#include "schema/ViewItem.h"

#include "core/TakeOut.h"
#include "schema/Group.h"

namespace Kor {

ViewItem::~ViewItem() {
    while (!groups_.empty())
        groups_.back()->ForgetItem(*this);
}

void ViewItem::RemoveGroup(Group* group) {
    TakeOut(groups_, group);
}

} // namespace Kor
