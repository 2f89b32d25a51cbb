#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "core/KeyHash.h"

namespace Kor {

class GeometryProperty;

/// Finds the alternates of a geometry by the names of their levels of detail, whatever the case.
class AlternatesByLevel {
public:
    /// The index of the first alternate whose level has the name, or -1.
    int Find(const GeometryProperty& geometry, std::string_view level);

    /// Forgets a geometry that may change before it is asked about again.
    void Clear() { geometry_ = nullptr; }

private:
    void Build(const GeometryProperty& geometry);

    const GeometryProperty* geometry_ = nullptr; // the one that the indexes are of
    int count_ = 0;
    std::unordered_map<std::string, int, KeyHash> indexes_; // under the levels' names in lower case
};

} // namespace Kor
