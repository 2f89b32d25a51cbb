#pragma once

#include <array>
#include <memory>
#include <string_view>
#include <vector>

#include "core/ErrorItem.h"
#include "core/IErrorListener.h"
#include "core/Singleton.h"

namespace Kor {

/// Collects diagnostics until the host clears them.
class ErrorManager : public IErrorListener, public Singleton<ErrorManager> {
public:
    /// Without memory for the item it is counted, and an empty place stands for it in the list.
    void AddErrorItem(int level, const char* sourceName, int lineNumber,
                      const char* message) override;

    /// Says that memory ran out while a file was read. An item is kept for that, which needs none:
    /// a host that is not told would take what was read for the whole file.
    void ReportOutOfMemory(std::string_view sourceName) noexcept;

    /// How often the level bits of the mask were reported: the sum of a counter for each level. An
    /// item with several bits counts once under each, one with none under nothing, so this need not
    /// be the number of items.
    int GetErrorItemCount(int levelMask) const;

    /// The item at a position of the whole list, whatever its level; null out of range, and where
    /// there was no memory for it.
    ErrorItem* GetErrorItemAt(int index) const;

    /// Forgets all items and sets the counters to 0.
    void Clear();

private:
    friend class Singleton<ErrorManager>;
    static constexpr int kLevelCount = 4;

    ErrorManager() { KeepSpare(); }
    ~ErrorManager() override = default;

    /// Readers go on reporting to it, and nobody sees that.
    void Empty() {}

    void Count(int level) noexcept;
    void KeepSpare() noexcept;

    std::array<unsigned, kLevelCount> counters_{};
    std::vector<std::unique_ptr<ErrorItem>> items_; ///< with room for the spare item
    std::unique_ptr<ErrorItem> spare_;              ///< null once it was needed
};

} // namespace Kor
