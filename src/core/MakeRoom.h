#pragma once

namespace Kor {

/// Room for one entry more, so that adding it needs no memory. What concerns several lists makes
/// room in all of them first: then it cannot end half-way.
template <class List> void MakeRoom(List& list) {
    if (list.size() == list.capacity())
        list.reserve(2 * list.size() + 1);
}

} // namespace Kor
