#include "schema/ParentTimes.h"

#include <algorithm>
#include <functional>

#include "core/MakeRoom.h"

namespace Kor {

std::vector<ParentTimes::Entry>::iterator ParentTimes::Find(const Template* parent) {
    return std::lower_bound(entries_.begin(), entries_.end(), parent,
                            [](const Entry& entry, const Template* wanted) {
                                return std::less<>()(entry.parent, wanted);
                            });
}

void ParentTimes::MakeRoom() {
    Kor::MakeRoom(entries_);
}

void ParentTimes::Set(const Template* parent, unsigned time) {
    const auto place = Find(parent);
    if (place != entries_.end() && place->parent == parent)
        place->time = time;
    else
        entries_.insert(place, {parent, time});
}

void ParentTimes::Forget(const Template* parent) {
    const auto place = Find(parent);
    if (place != entries_.end() && place->parent == parent)
        entries_.erase(place);
}

unsigned ParentTimes::Get(const Template* parent) const {
    const auto place = const_cast<ParentTimes*>(this)->Find(parent);
    return place != entries_.end() && place->parent == parent ? place->time : 0;
}

} // namespace Kor
