#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "core/Names.h"

namespace Kor {

/// The paths of the loaded template files, each in the exact spelling it was loaded under, and
/// found in any case when a file is unloaded. Removing needs no memory.
class LoadedFiles {
public:
    /// Whether a file was loaded under exactly this spelling.
    bool Contains(std::string_view path) const;

    /// Enters this spelling, once.
    void Add(std::string_view path);

    /// Removes exactly this spelling; others of the same path stay.
    void Remove(std::string_view path);

    /// Removes the path in all its spellings.
    void RemoveInAnyCase(std::string_view path);

    /// All of them in byte order.
    std::vector<std::string> GetAll() const;

private:
    using Spellings = std::set<std::string, std::less<>>;

    std::map<std::string, Spellings, LessIgnoringCase> spellings_;
};

} // namespace Kor
