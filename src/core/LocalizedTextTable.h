#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Kor {

/// Texts per language, ascending by language in byte order, each language once.
/// The language "" is the default entry.
class LocalizedTextTable {
public:
    struct Entry {
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

    int GetCount() const { return static_cast<int>(entries_.size()); }
    const Entry& GetAt(int index) const { return entries_[static_cast<size_t>(index)]; }

private:
    size_t LowerBound(std::string_view language) const;
    const char* FindExactly(std::string_view language) const;

    std::vector<Entry> entries_;
};

} // namespace Kor
