#pragma once

#include <string>
#include <string_view>

#include "core/BlockPool.h"
#include "core/OwnedSortedList.h"

namespace Kor {

/// Texts per language, ascending by language in byte order, each language once.
/// The language "" is the default entry.
class LocalizedTextTable {
public:
    struct Entry : Pooled {
        Entry(std::string_view itsLanguage, const char* itsText)
            : language(itsLanguage), text(itsText) {}
        std::string_view GetKey() const { return language; }

        std::string language;
        std::string text;
    };

    /// The text for a language, with fallback to the part before its first "_" and then to the
    /// default entry; a null language asks for the default entry alone. Null when there is none.
    const char* Find(const char* language) const;

    /// Sets the text of a language (null: the default entry); a null text removes the entry.
    void Set(const char* language, const char* text);

    /// Whether there is a text for exactly this language.
    bool Contains(std::string_view language) const { return FindExactly(language) != nullptr; }

    int GetCount() const { return entries_.GetCount(); }
    const Entry& GetAt(int index) const { return *entries_.GetAt(index); }

private:
    const char* FindExactly(std::string_view language) const;

    OwnedSortedList<Entry> entries_;
};

} // namespace Kor
