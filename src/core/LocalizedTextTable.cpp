#include "core/LocalizedTextTable.h"

#include <memory>

#include "core/Names.h"

namespace Kor {

const char* LocalizedTextTable::FindExactly(std::string_view language) const {
    const Entry* entry = entries_.Get(language);
    return entry ? entry->text.c_str() : nullptr;
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
    const int index = entries_.Find(key);
    if (index >= 0 && text)
        entries_.GetAt(index)->text = text;
    else if (index >= 0)
        entries_.EraseAt(index);
    else if (text)
        entries_.Insert(std::make_unique<Entry>(key, text));
}

} // namespace Kor
