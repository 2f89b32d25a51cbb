#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/PathFinder.h"

namespace Kor {

/// Finds the directories of packages below the search paths. It lists a directory once at most,
/// only when a name is missing there, and then knows for all names at once which search paths have
/// them: neither many packages nor many search paths make a single look-up longer. It takes it that
/// no directory changes meanwhile, so one finder serves one call of a host.
class PackageFinder {
public:
    explicit PackageFinder(std::vector<std::string> searchPaths);
    ~PackageFinder();

    /// A directory that a package has.
    struct Place {
        size_t searchPath;     ///< below which it lies
        std::string directory; ///< as the system has it, with a separator at its end
    };

    /// The n-th directory of a package in the order of the search paths; null behind the last. It
    /// stays until the next call.
    const Place* Find(std::string_view package, size_t n);

    /// The search path of a place, as it was given.
    const std::string& GetSearchPath(const Place& place) const {
        return searchPaths_[place.searchPath];
    }

private:
    struct Node;
    using Chain = std::vector<Node*>;

    Node& GetChild(Node& parent, std::string_view part);
    bool Reach(const Chain& chain, size_t n);
    void TakeNextSearchPath();

    std::vector<std::string> searchPaths_;
    size_t nextSearchPath_ = 0;
    PathFinder paths_;
    std::vector<std::unique_ptr<Node>> nodes_; ///< the first is that of the search paths
};

} // namespace Kor
