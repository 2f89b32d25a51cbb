#pragma once

#include <algorithm>
#include <vector>

namespace Kor {

/// Takes the first such entry out of a list; false when there is none.
template <class T> bool TakeOut(std::vector<T*>& list, const T* entry) {
    const auto found = std::find(list.begin(), list.end(), entry);
    if (found == list.end())
        return false;
    list.erase(found);
    return true;
}

} // namespace Kor
