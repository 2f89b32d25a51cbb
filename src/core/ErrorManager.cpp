#include "core/ErrorManager.h"

#include <algorithm>
#include <new>
#include <utility>

namespace Kor {

namespace {

/// The longest path of Linux: sources beyond it lose their beginning when there is no memory.
constexpr size_t kSpareSourceSize = 4096;

std::unique_ptr<ErrorItem> MakeItem(int level, const char* sourceName, int lineNumber,
                                    const char* message) {
    return std::make_unique<ErrorItem>(level, sourceName ? sourceName : "", lineNumber,
                                       message ? message : "");
}

} // namespace

void ErrorManager::AddErrorItem(int level, const char* sourceName, int lineNumber,
                                const char* message) {
    std::unique_ptr<ErrorItem> item;
    try {
        item = MakeItem(level, sourceName, lineNumber, message);
    } catch (const std::bad_alloc&) {
        item.reset(); // counted all the same: whoever counts must not take the load for a good one
    }
    KeepSpare();
    // The last place is the spare item's.
    if (items_.size() + 1 < items_.capacity())
        items_.push_back(std::move(item));
    Count(level);
}

void ErrorManager::ReportOutOfMemory(std::string_view sourceName) noexcept {
    KeepSpare(); // what was given up meanwhile may do
    if (spare_) {
        spare_->SetSourceName(
            sourceName.substr(sourceName.size() - std::min(sourceName.size(), kSpareSourceSize)));
        items_.push_back(std::move(spare_));
    }
    Count(kError);
    KeepSpare();
}

/// Makes the spare item and room for it and one more, where there is memory.
void ErrorManager::KeepSpare() noexcept {
    try {
        if (items_.capacity() < items_.size() + 2)
            items_.reserve(2 * items_.size() + 2);
        if (!spare_) {
            auto spare = MakeItem(kError, "", -1, "Out of memory while reading the file");
            spare->ReserveSourceName(kSpareSourceSize);
            spare_ = std::move(spare);
        }
    } catch (const std::bad_alloc&) {
        return; // the next call may find some
    }
}

void ErrorManager::Count(int level) noexcept {
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
    KeepSpare();
}

} // namespace Kor
