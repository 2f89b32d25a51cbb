#pragma once

#include <cstdint>

namespace Kor {

/// A number that changes whenever anything changes that a template's derived data depends on
/// (parents, properties, full names), so that such data can be kept and checked cheaply.
class SchemaRevision {
public:
    static std::uint64_t Get() { return revision_; }
    static void Advance() { ++revision_; }

private:
    static inline std::uint64_t revision_ = 1;
};

} // namespace Kor
