#include "manager/TypeNameIndex.h"

#include <algorithm>

#include "manager/UsingList.h"

namespace Kor {

void TypeNameIndex::Add(std::string_view fullName) {
    std::vector<std::uint64_t> ends(fullName.size() + 1); // of what begins at each character
    ends.back() = kHashSecrets.start;
    for (size_t at = fullName.size(); at > 0; --at)
        ends[at - 1] = Next(ends[at], fullName[at - 1]);
    pairs_.insert(ends.front()); // not empty any more, whatever the name
    std::uint64_t prefix = kHashSecrets.start;
    for (size_t at = 0; at < fullName.size(); ++at) {
        const std::uint64_t end = ends[at + 1];
        if (fullName[at] == '.' && pairs_.insert(HashNumber(HashNumber(prefix) ^ end)).second)
            prefixesByEnd_[end].push_back(prefix);
        prefix = Next(prefix, fullName[at]);
    }
}

/// The shortest prefix with which the name begins, which is the first in the list; null without.
const std::string* TypeNameIndex::FindBeginning(std::string_view name, const UsingList& prefixes) {
    std::uint64_t hash = kHashSecrets.start;
    for (size_t length = 0;; ++length) {
        const std::string* found = prefixes.FindHash(hash);
        if (found && *found == name.substr(0, length))
            return found;
        if (length == name.size())
            return nullptr;
        hash = Next(hash, name[length]);
    }
}

std::vector<const std::string*> TypeNameIndex::GetPrefixes(std::string_view name,
                                                           const UsingList& prefixes) const {
    std::vector<const std::string*> found;
    if (const std::string* beginning = FindBeginning(name, prefixes))
        found.push_back(beginning);
    const auto known = prefixesByEnd_.find(HashEnd(name));
    if (known != prefixesByEnd_.end()) {
        for (const std::uint64_t hash : known->second) {
            const std::string* prefix = prefixes.FindHash(hash);
            if (prefix && prefix != (found.empty() ? nullptr : found.front()))
                found.push_back(prefix);
        }
    }
    std::sort(found.begin(), found.end(),
              [](const std::string* a, const std::string* b) { return *a < *b; });
    return found;
}

} // namespace Kor
