#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

namespace OviTool {

/// A package below a search path.
struct PackageEntry {
    std::string name;
    std::string directory;
    std::size_t fileCount; ///< Its own template files.
    bool isHidden;         ///< A search path in front has the package, and only that one is loaded.
};

/// The packages below the library's search paths, by name and then in the order of the paths.
class PackageList {
public:
    PackageList();

    void PrintText(std::ostream& out) const;
    void PrintJson(std::ostream& out) const;
    void PrintSummary(std::ostream& out) const;

private:
    void AddPackage(const std::string& name);

    std::vector<PackageEntry> entries_;
};

} // namespace OviTool
