#include "platform/PathFinder.h"

#include "platform/WideText_windows.h"

#include <algorithm>

#ifndef NOMINMAX
#define NOMINMAX
#endif
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace Kor {

// The system finds names in any case by itself, and quickly.
struct PathFinder::Listings {};

PathFinder::PathFinder() = default;
PathFinder::~PathFinder() = default;

std::string PathFinder::Find(const std::string& path) {
    const bool isThere = GetFileAttributesW(ToWidePath(path).c_str()) != INVALID_FILE_ATTRIBUTES;
    return isThere ? path : std::string();
}

// Short forms have a "~", blanks at the end do not count, and other letters have a case, too.
bool PathFinder::IsShownByListing(std::string_view name) {
    return std::all_of(name.begin(), name.end(),
                       [](char c) { return c > ' ' && c < '\x7F' && c != '~'; });
}

} // namespace Kor
