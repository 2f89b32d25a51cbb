#pragma once

#include <algorithm>
#include <iterator>

namespace Kor {

/// Takes the first such entry out of a list; false when there is none.
template <class List, class T> bool TakeOut(List& list, const T* entry) {
    const auto found = std::find(list.begin(), list.end(), entry);
    if (found == list.end())
        return false;
    list.erase(found);
    return true;
}

/// The same for the last such entry: for lists that mostly lose what came last.
template <class List, class T> bool TakeOutLast(List& list, const T* entry) {
    const auto found = std::find(list.rbegin(), list.rend(), entry);
    if (found == list.rend())
        return false;
    list.erase(std::next(found).base());
    return true;
}

} // namespace Kor
