#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

namespace Kor {

/// A number for a key, spread over all its bits; for tables in memory only.
inline std::uint64_t HashKey(std::string_view key) {
    constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15u; // of the golden ratio
    // A product carries differences upwards only, and names differ in their last, upper bytes: so
    // the upper half is folded down, twice.
    const auto mix = [](std::uint64_t hash, std::uint64_t word) {
        hash = (hash ^ word) * kFactor;
        hash = (hash ^ (hash >> 32)) * kFactor;
        return hash ^ (hash >> 29);
    };
    const auto load = [](const char* from) {
        std::uint64_t word = 0;
        std::memcpy(&word, from, sizeof word);
        return word;
    };
    const char* from = key.data();
    size_t left = key.size();
    std::uint64_t hash = left * kFactor;
    for (; left > 8; from += 8, left -= 8)
        hash = mix(hash, load(from));
    if (key.size() >= 8) // the last eight bytes, some of them perhaps for the second time
        return mix(hash, load(key.data() + key.size() - 8));
    std::uint64_t word = 0;
    for (; left > 0; --left)
        word = word << 8 | static_cast<unsigned char>(from[left - 1]);
    return mix(hash, word);
}

} // namespace Kor
