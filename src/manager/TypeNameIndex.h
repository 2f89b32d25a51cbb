#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "core/KeyHash.h"

namespace Kor {

class UsingList;

/// Knows with which prefixes the ends of full names were ever completed, so that a name that a file
/// uses need not be looked up with each of thousands of prefixes. Names that are gone may still be
/// known: what it gives is to be looked up.
class TypeNameIndex {
public:
    /// Hashes of a text from its first and from its last character on.
    static std::uint64_t HashPrefix(std::string_view text) {
        std::uint64_t hash = kHashSecrets.start;
        for (const char c : text)
            hash = Next(hash, c);
        return hash;
    }
    static std::uint64_t HashEnd(std::string_view text) {
        std::uint64_t hash = kHashSecrets.start;
        for (auto c = text.rbegin(); c != text.rend(); ++c)
            hash = Next(hash, *c);
        return hash;
    }

    bool IsEmpty() const { return pairs_.empty(); }
    void Add(std::string_view fullName);

    /// The prefixes of a long list, in its order, that may complete a name or are its beginning (of
    /// the latter only the first, since all lead to the name itself).
    std::vector<const std::string*> GetPrefixes(std::string_view name,
                                                const UsingList& prefixes) const;

private:
    static std::uint64_t Next(std::uint64_t hash, char c) {
        return FoldedProduct(hash ^ (static_cast<unsigned char>(c) + std::uint64_t{1}),
                             kHashSecrets.factor);
    }
    static const std::string* FindBeginning(std::string_view name, const UsingList& prefixes);

    std::unordered_map<std::uint64_t, std::vector<std::uint64_t>> prefixesByEnd_;
    std::unordered_set<std::uint64_t> pairs_; // of a prefix and an end: each is entered once
};

} // namespace Kor
