#include "core/SortedStringList.h"

#include <memory>

namespace Kor {

int SortedStringList::Insert(std::string_view text) {
    const int found = Find(text);
    return found >= 0 ? ~found : strings_.Insert(std::make_unique<Entry>(text));
}

int SortedStringList::Remove(std::string_view text) {
    const int found = Find(text);
    if (found >= 0)
        strings_.EraseAt(found);
    return found;
}

} // namespace Kor
