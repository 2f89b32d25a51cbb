#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/Names.h"

namespace Kor {

/// The search paths in the order in which they were added, each once whatever its case.
class SearchPaths {
public:
    int GetCount() const { return static_cast<int>(entries_.size()); }

    /// The path with the backslash at its end.
    const std::string& GetAt(int index) const { return entries_[static_cast<size_t>(index)].path; }
    std::vector<std::string> GetAll() const;

    /// The complement of the new index, or the index of an equal path that was there already.
    int Add(std::string_view path);

    /// The index that the path had, or the complement of the count.
    int Remove(std::string_view path);

    /// Another number after every change.
    unsigned GetRevision() const { return revision_; }

private:
    struct Entry {
        unsigned long long number; ///< rises along the list
        std::string path;
    };

    int FindIndex(unsigned long long number) const;

    std::vector<Entry> entries_;
    std::map<std::string, unsigned long long, LessIgnoringCase> numbers_;
    unsigned long long nextNumber_ = 0;
    unsigned revision_ = 0;
};

} // namespace Kor
