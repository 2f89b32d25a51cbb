#include "core/LocalizedTextTable.h"

#include <algorithm>

#include "core/Names.h"

namespace Kor {

size_t LocalizedTextTable::LowerBound(std::string_view language) const {
    const auto found = std::lower_bound(
        entries_.begin(), entries_.end(), language,
        [](const Entry& entry, std::string_view key) { return entry.language < key; });
    return static_cast<size_t>(found - entries_.begin());
}

const char* LocalizedTextTable::FindExactly(std::string_view language) const {
    const size_t at = LowerBound(language);
    if (at == entries_.size() || entries_[at].language != language)
        return nullptr;
    return entries_[at].text.c_str();
}

const char* LocalizedTextTable::Find(const char* language) const {
    const std::string_view key = TextOf(language);
    if (const char* text = FindExactly(key))
        return text;
    if (!language)
        return nullptr;
    const size_t underscore = key.find('_');
    if (underscore != std::string_view::npos) {
        if (const char* text = FindExactly(key.substr(0, underscore)))
            return text;
    }
    return FindExactly({});
}

void LocalizedTextTable::Set(const char* language, const char* text) {
    const std::string_view key = TextOf(language);
    const size_t at = LowerBound(key);
    const auto place = entries_.begin() + static_cast<std::ptrdiff_t>(at);
    const bool found = at < entries_.size() && entries_[at].language == key;
    if (found && text)
        place->text = text;
    else if (found)
        entries_.erase(place);
    else if (text)
        entries_.insert(place, Entry{std::string(key), text});
}

} // namespace Kor
