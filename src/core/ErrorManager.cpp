#include "core/ErrorManager.h"

#include <new>
#include <utility>

#include "core/MakeRoom.h"

namespace Kor {

void ErrorManager::AddErrorItem(int level, const char* sourceName, int lineNumber,
                                const char* message) {
    std::unique_ptr<ErrorItem> item;
    try {
        MakeRoom(items_);
        item = std::make_unique<ErrorItem>(level, sourceName ? sourceName : "", lineNumber,
                                           message ? message : "");
    } catch (const std::bad_alloc&) {
        item.reset(); // counted all the same: whoever counts must not take the load for a good one
    }
    if (items_.size() < items_.capacity())
        items_.push_back(std::move(item));
    for (int i = 0; i < kLevelCount; ++i) {
        if (level & (1 << i))
            ++counters_[static_cast<size_t>(i)];
    }
}

int ErrorManager::GetErrorItemCount(int levelMask) const {
    unsigned sum = 0;
    for (int i = 0; i < kLevelCount; ++i) {
        if (levelMask & (1 << i))
            sum += counters_[static_cast<size_t>(i)];
    }
    return static_cast<int>(sum);
}

ErrorItem* ErrorManager::GetErrorItemAt(int index) const {
    if (index < 0 || static_cast<size_t>(index) >= items_.size())
        return nullptr;
    return items_[static_cast<size_t>(index)].get();
}

void ErrorManager::Clear() {
    items_.clear();
    counters_.fill(0);
}

} // namespace Kor
