#pragma once

#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>

#include "core/OwnedSortedList.h"

namespace Kor {

/// Strings in ascending byte order, each once; results as in SortedObjectList.
class SortedStringList {
    struct Entry {
        explicit Entry(std::string_view itsText) : text(itsText) {}
        std::string_view GetKey() const { return text; }

        std::string text;
    };
    using Entries = OwnedSortedList<Entry>;

public:
    /// Goes forward only. Valid until the list changes.
    class Iterator {
    public:
        // NOLINTBEGIN(readability-identifier-naming): the names that iterators have
        using iterator_category = std::forward_iterator_tag;
        using value_type = std::string;
        using difference_type = std::ptrdiff_t;
        using pointer = const std::string*;
        using reference = const std::string&;
        // NOLINTEND(readability-identifier-naming)

        const std::string& operator*() const { return (*at_)->text; }
        Iterator& operator++() {
            ++at_;
            return *this;
        }
        Iterator operator++(int) { return Iterator(at_++); }
        bool operator==(const Iterator& other) const { return at_ == other.at_; }
        bool operator!=(const Iterator& other) const { return at_ != other.at_; }

    private:
        friend class SortedStringList;
        using Place = PointerList<Entry>::Iterator;

        explicit Iterator(Place at) : at_(at) {}

        Place at_;
    };

    int GetCount() const { return strings_.GetCount(); }
    const std::string& GetAt(int index) const { return strings_.GetAt(index)->text; }

    /// The index of the string, or the complement of its insertion point.
    int Find(std::string_view text) const { return strings_.Find(text); }
    bool Contains(std::string_view text) const { return Find(text) >= 0; }

    /// The new index, or the complement of the index where the string was already there.
    int Insert(std::string_view text);

    /// The index that the string had, or the failed search's result.
    int Remove(std::string_view text);

    Iterator begin() const { return Iterator(strings_.begin()); }
    Iterator end() const { return Iterator(strings_.end()); }

private:
    Entries strings_;
};

} // namespace Kor
