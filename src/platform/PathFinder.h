#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace Kor {

/// Finds what paths lead to, by the rules that platform/File.h names. However many paths are looked
/// for, it goes through no directory more than twice, and then takes it that nothing changed there:
/// one finder serves one call of a host.
class PathFinder {
public:
    PathFinder();
    ~PathFinder();

    /// The path as the system has it; empty when nothing is there.
    std::string Find(const std::string& path);

    /// Whether the listing of a directory shows for certain if it has a name in any case. Windows
    /// knows more ways to write a name than the listed one.
    static bool IsShownByListing(std::string_view name);

private:
    struct Listings;
    std::unique_ptr<Listings> listings_;
};

} // namespace Kor
