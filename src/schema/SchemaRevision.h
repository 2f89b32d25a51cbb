#pragma once

#include <cstdint>

namespace Kor {

/// A number that changes whenever anything changes that a template's derived data depends on
/// (parents, properties, full names), so that such data can be kept and checked cheaply.
class SchemaRevision {
public:
    static std::uint64_t Get() { return revision_; }
    static void Advance() { ++revision_; }

    /// The same for the full names of properties and the keys of templates that instances refer to:
    /// lists sorted by them must then be sorted anew.
    static std::uint64_t GetKeys() { return keys_; }
    static void AdvanceKeys() { ++keys_; }

private:
    static inline std::uint64_t revision_ = 1;
    static inline std::uint64_t keys_ = 1;
};

} // namespace Kor
