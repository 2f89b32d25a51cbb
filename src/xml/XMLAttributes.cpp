#include "xml/XMLAttributes.h"

#include <algorithm>

namespace Kor {

const char* XMLAttributes::Find(std::string_view name) const {
    if (entries_.size() <= kSearchInTurn) {
        for (const Entry& entry : entries_) {
            if (entry.name == name)
                return entry.value.data();
        }
        return nullptr;
    }
    Settle();
    const auto at = std::lower_bound(
        entries_.begin(), entries_.end(), name,
        [](const Entry& entry, std::string_view wanted) { return entry.name < wanted; });
    return at != entries_.end() && at->name == name ? at->value.data() : nullptr;
}

int XMLAttributes::GetCount() const {
    Settle();
    return static_cast<int>(entries_.size());
}

std::string_view XMLAttributes::GetNameAt(int index) const {
    const Entry* entry = GetEntryAt(index);
    return entry ? entry->name : std::string_view("");
}

std::string_view XMLAttributes::GetValueAt(int index) const {
    const Entry* entry = GetEntryAt(index);
    return entry ? entry->value : std::string_view("");
}

void XMLAttributes::Clear() {
    entries_.clear();
    settled_ = true;
}

void XMLAttributes::Add(std::string_view name, std::string_view value) {
    entries_.push_back({name, value});
    settled_ = false;
}

/// Brings the attributes into the order of names and drops all but the first of each name.
void XMLAttributes::Settle() const {
    if (settled_)
        return;
    const auto begin = entries_.begin();
    const auto end = entries_.end();
    const auto less = [](const Entry& a, const Entry& b) { return a.name < b.name; };
    if (entries_.size() > kSearchInTurn) {
        std::stable_sort(begin, end, less);
    } else { // std::stable_sort would ask for memory each time
        for (auto at = begin; at != end; ++at)
            std::rotate(std::upper_bound(begin, at, *at, less), at, at + 1);
    }
    const auto same = [](const Entry& a, const Entry& b) { return a.name == b.name; };
    entries_.erase(std::unique(begin, end, same), end);
    settled_ = true;
}

const XMLAttributes::Entry* XMLAttributes::GetEntryAt(int index) const {
    Settle();
    const auto at = static_cast<size_t>(index);
    return index >= 0 && at < entries_.size() ? &entries_[at] : nullptr;
}

} // namespace Kor
