#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "core/KeyHash.h"

namespace Kor {

/// Remembers at which index of its instance a property was found by its name. The instances of one
/// template list their properties alike, so that a search can begin there. What it says is a guess
/// that has to be checked.
class PropertyPlaces {
public:
    explicit PropertyPlaces(std::string_view name)
        : hash_(HashKey(name)), place_(places_[hash_ % places_.size()]) {}

    /// The index, or -1.
    int Guess() const { return place_.tag == Tag() ? place_.index : -1; }

    void Remember(int index) { place_ = {Tag(), index}; }

private:
    struct Place {
        std::uint32_t tag;
        int index;
    };

    std::uint32_t Tag() const { return static_cast<std::uint32_t>(hash_ >> 32); }

    std::uint64_t hash_;
    Place& place_;

    static inline std::array<Place, 256> places_{};
};

} // namespace Kor
