#include "core/SortedStringList.h"

#include <algorithm>

namespace Kor {

int SortedStringList::Find(std::string_view text) const {
    const auto found = std::lower_bound(strings_.begin(), strings_.end(), text);
    const int index = static_cast<int>(found - strings_.begin());
    return found != strings_.end() && *found == text ? index : ~index;
}

int SortedStringList::Insert(std::string_view text) {
    const int found = Find(text);
    if (found >= 0)
        return ~found;
    strings_.insert(strings_.begin() + ~found, std::string(text));
    return ~found;
}

int SortedStringList::Remove(std::string_view text) {
    const int found = Find(text);
    if (found >= 0)
        strings_.erase(strings_.begin() + found);
    return found;
}

} // namespace Kor
