#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace Kor {

/// Two random numbers of each process: whoever chooses names cannot choose which of them fall
/// together in a table. No result may depend on them.
struct HashSecrets {
    std::uint64_t start;
    std::uint64_t factor; ///< odd
};
extern const HashSecrets kHashSecrets;

/// Multiplies to twice the width and folds the halves: each bit of the result is of all bits.
inline std::uint64_t FoldedProduct(std::uint64_t a, std::uint64_t b) {
    __extension__ using Wide = unsigned __int128;
    const Wide product = static_cast<Wide>(a) * b;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

/// A number for a number, spread over all its bits; for tables in memory only.
inline std::uint64_t HashNumber(std::uint64_t number) {
    return FoldedProduct(number ^ kHashSecrets.start, kHashSecrets.factor);
}

/// A number for a key, spread over all its bits; for tables in memory only.
inline std::uint64_t HashKey(std::string_view key) {
    constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15u; // of the golden ratio
    const std::uint64_t factor = kHashSecrets.factor;
    const auto load = [](const char* from) {
        std::uint64_t word = 0;
        std::memcpy(&word, from, sizeof word);
        return word;
    };
    const char* from = key.data();
    size_t left = key.size();
    std::uint64_t hash = kHashSecrets.start ^ left;
    for (; left > 8; from += 8, left -= 8)
        hash = FoldedProduct(hash ^ load(from), factor);
    std::uint64_t word = 0;
    if (key.size() >= 8) { // the last eight bytes, some of them perhaps for the second time
        word = load(key.data() + key.size() - 8);
    } else {
        for (; left > 0; --left)
            word = word << 8 | static_cast<unsigned char>(from[left - 1]);
    }
    return FoldedProduct(FoldedProduct(hash ^ word, factor), kSpread);
}

/// For the tables of the standard library that have names as their keys.
struct KeyHash {
    size_t operator()(std::string_view key) const { return static_cast<size_t>(HashKey(key)); }
};

} // namespace Kor
