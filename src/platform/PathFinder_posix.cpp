#include "platform/PathFinder.h"

#include "core/Names.h"
#include "platform/PathLookup_posix.h"

#include <algorithm>
#include <map>
#include <vector>

namespace Kor {

namespace {

using Names = std::vector<std::string>;

/// By case only where nothing else differs, so that the first of equal names is that in byte order.
bool ComesBefore(const std::string& a, const std::string& b) {
    const int order = CompareIgnoreCase(a, b);
    return order != 0 ? order < 0 : a < b;
}

Names ReadSorted(const std::string& directory) {
    Names names;
    const DirectoryHandle open = OpenDirectory(directory);
    while (const dirent* entry = open ? readdir(open.get()) : nullptr)
        names.emplace_back(entry->d_name);
    std::sort(names.begin(), names.end(), ComesBefore);
    return names;
}

} // namespace

/// The names of directories in which more than one name was missing.
struct PathFinder::Listings {
    struct Listing {
        bool askedBefore = false;
        bool read = false;
        Names names;
    };

    /// As FindInDirectory, which is quicker for a single name and answers the first question.
    std::string Find(const std::string& directory, const std::string& wanted) {
        Listing& listing = directories[directory];
        if (!listing.askedBefore) {
            listing.askedBefore = true;
            return FindInDirectory(directory, wanted);
        }
        if (!listing.read)
            listing.names = ReadSorted(directory);
        listing.read = true;
        const auto found = std::lower_bound(
            listing.names.begin(), listing.names.end(), wanted,
            [](const std::string& a, const std::string& b) { return CompareIgnoreCase(a, b) < 0; });
        const bool isThere = found != listing.names.end() && EqualsIgnoreCase(*found, wanted);
        return isThere ? *found : std::string();
    }

    std::map<std::string, Listing> directories;
};

PathFinder::PathFinder() : listings_(std::make_unique<Listings>()) {}
PathFinder::~PathFinder() = default;

std::string PathFinder::Find(const std::string& path) {
    const auto found =
        FindPath(path, [this](const std::string& directory, const std::string& wanted) {
            return listings_->Find(directory, wanted);
        });
    return found.isThere ? found.path : std::string();
}

// ASCII letters alone have a case here.
bool PathFinder::IsShownByListing(std::string_view /*name*/) {
    return true;
}

} // namespace Kor
