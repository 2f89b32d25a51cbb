#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>
#include <vector>

namespace Kor {

/// The attributes of one start tag, without copies: names and values point into the text that was
/// read, each with a NUL byte behind it. Of several with one name the first one counts.
class XMLAttributes {
public:
    /// The value of that name, NUL-terminated; null when there is none.
    const char* Find(std::string_view name) const;

    /// The same for a literal, with which comparing takes no calls.
    template <size_t kSize> const char* Find(const char (&name)[kSize]) const {
        if (entries_.size() > kSearchInTurn)
            return Find(std::string_view(name));
        for (const Entry& entry : entries_) {
            if (entry.name.size() == kSize - 1 &&
                std::memcmp(entry.name.data(), name, kSize - 1) == 0)
                return entry.value.data();
        }
        return nullptr;
    }

    /// How many different names there are.
    int GetCount() const;

    /// The name at a position in ascending byte order of the names; empty out of range.
    std::string_view GetNameAt(int index) const;

    /// The value of the name at that position; empty out of range.
    std::string_view GetValueAt(int index) const;

    /// Forgets all attributes and keeps the memory.
    void Clear();

    /// Takes in one more, in the order of the tag. Both texts must have a NUL byte behind them.
    void Add(std::string_view name, std::string_view value);

private:
    struct Entry {
        std::string_view name;
        std::string_view value;
    };

    /// Up to this many, comparing with each in turn is quicker than any order or hash.
    static constexpr size_t kSearchInTurn = 16;

    void Settle() const;
    const Entry* GetEntryAt(int index) const;

    /// In the order of the tag, until somebody asks for what needs the order of names.
    mutable std::vector<Entry> entries_;
    mutable bool settled_ = true;
};

} // namespace Kor
