#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "core/SortedStringList.h"
#include "manager/TypeNameIndex.h"

namespace Kor {

/// The prefixes with which a file's type names may be completed, in ascending byte order. Once they
/// are many, each is also found by its hash.
class UsingList {
public:
    /// So few prefixes are tried one after the other.
    bool IsShort() const { return prefixes_.GetCount() <= kShort; }

    void Insert(std::string_view prefix) {
        const int index = prefixes_.Insert(prefix);
        if (index < 0 || IsShort())
            return;
        if (byHash_.empty()) {
            for (const std::string& listed : prefixes_)
                byHash_.emplace(TypeNameIndex::HashPrefix(listed), &listed);
        } else {
            const std::string& listed = prefixes_.GetAt(index);
            byHash_.emplace(TypeNameIndex::HashPrefix(listed), &listed);
        }
    }

    /// The prefix with that hash, or null; for a list that is not short.
    const std::string* FindHash(std::uint64_t hash) const {
        const auto found = byHash_.find(hash);
        return found == byHash_.end() ? nullptr : found->second;
    }

    auto begin() const { return prefixes_.begin(); }
    auto end() const { return prefixes_.end(); }

private:
    static constexpr int kShort = 32;

    SortedStringList prefixes_;
    std::unordered_map<std::uint64_t, const std::string*> byHash_;
};

} // namespace Kor
