#pragma once

#include <cstdint>
#include <new>
#include <unordered_map>

namespace Kor {

/// Numbers for the entries of a list that rise in its order: they find one among many of the same
/// key, each of which came behind the others. A help that may be missing: once memory runs out, the
/// ranks are incomplete and of no use any more.
class EntryRanks {
public:
    bool IsEmpty() const { return ranks_.empty(); }
    bool IsIncomplete() const { return incomplete_; }

    /// The number of an entry; 0 without it.
    std::uint64_t Get(const void* entry) const {
        const auto found = ranks_.find(entry);
        return found == ranks_.end() ? 0 : found->second;
    }

    /// An entry that comes last of all that it is to be told from.
    void Append(const void* entry) noexcept { Set(entry, ++last_); }

    /// Another one takes the place of an entry.
    void Replace(const void* entry, const void* other) noexcept {
        const std::uint64_t rank = Get(entry);
        ranks_.erase(entry);
        Set(other, rank);
    }

    void Remove(const void* entry) noexcept { ranks_.erase(entry); }

private:
    void Set(const void* entry, std::uint64_t rank) noexcept {
        try {
            ranks_[entry] = rank;
        } catch (const std::bad_alloc&) {
            incomplete_ = true;
        }
    }

    std::unordered_map<const void*, std::uint64_t> ranks_;
    std::uint64_t last_ = 0;
    bool incomplete_ = false;
};

} // namespace Kor
