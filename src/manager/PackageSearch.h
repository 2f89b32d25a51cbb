#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/DirectoryId.h"
#include "platform/PathFinder.h"

namespace Kor {

/// Finds all packages below search paths: every directory at every depth is one. A directory that
/// cannot be listed is reported and passed over, so that it hides no other; one that a link leads
/// back to, from somewhere inside of it, is passed over, as there would be no end of it.
class PackageSearch {
public:
    /// Looks below one more search path; false when it cannot be listed itself.
    bool LookBelow(const std::string& searchPath);

    /// What was found so far, in any order, and once for each search path that has it.
    const std::vector<std::string>& GetPackages() const { return packages_; }

private:
    /// A directory to be listed.
    struct Pending {
        std::string relative; ///< below the search path
        size_t depth;
    };

    bool List(const std::string& directory, const Pending& listed);
    void Visit(const std::string& searchPath, const std::string& found, const Pending& next);
    bool Enter(const std::string& directory, size_t depth);

    PathFinder paths_;
    std::vector<std::string> packages_;
    std::vector<Pending> pending_;                ///< the next one last
    std::vector<std::optional<DirectoryId>> way_; ///< from the search path to what is being listed
    std::set<DirectoryId> onWay_;
};

} // namespace Kor
