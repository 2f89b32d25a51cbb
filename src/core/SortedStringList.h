#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Kor {

/// Strings in ascending byte order, each once; results as in SortedObjectList.
class SortedStringList {
public:
    int GetCount() const { return static_cast<int>(strings_.size()); }
    const std::string& GetAt(int index) const { return strings_[static_cast<size_t>(index)]; }

    /// The index of the string, or the complement of its insertion point.
    int Find(std::string_view text) const;
    bool Contains(std::string_view text) const { return Find(text) >= 0; }

    /// The new index, or the complement of the index where the string was already there.
    int Insert(std::string_view text);

    /// The index that the string had, or the failed search's result.
    int Remove(std::string_view text);

    auto begin() const { return strings_.begin(); }
    auto end() const { return strings_.end(); }

private:
    std::vector<std::string> strings_;
};

} // namespace Kor
