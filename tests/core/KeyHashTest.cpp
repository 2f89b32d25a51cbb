#include "core/KeyHash.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>

#include "platform/RandomNumber.h"

namespace {

using namespace Kor;

TEST(KeyHash, IsOfSecretsThatDifferFromProcessToProcess) {
    std::set<std::uint64_t> numbers;
    for (int i = 0; i < 10; ++i)
        numbers.insert(GetRandomNumber());
    EXPECT_EQ(numbers.size(), 10U);
    EXPECT_EQ(numbers.count(kHashSecrets.start), 0U);
    EXPECT_EQ(kHashSecrets.factor % 2, 1U);
}

/// A hash that anybody can compute lets names be made that fall together. These did so in the hash
/// that the library had before, which had no secret.
std::uint64_t KnownHash(std::uint64_t hash, std::uint64_t word) {
    constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15U;
    hash = (hash ^ word) * kFactor;
    hash = (hash ^ (hash >> 32)) * kFactor;
    return hash ^ (hash >> 29);
}

TEST(KeyHash, TellsNamesApartThatWereMadeToFallTogether) {
    constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15U;
    const std::uint64_t start = 16 * kFactor;
    std::set<std::uint64_t> known;
    std::set<std::uint64_t> hashes;
    for (std::uint64_t i = 0; i < 1000; ++i) {
        const std::uint64_t first = 0x6161616161616161U + i;
        const std::uint64_t second = KnownHash(start, first); // what is mixed in next becomes zero
        known.insert(KnownHash(KnownHash(start, first), second));
        const std::string key = std::string(reinterpret_cast<const char*>(&first), sizeof first) +
                                std::string(reinterpret_cast<const char*>(&second), sizeof second);
        hashes.insert(HashKey(key) & 0xFFFFFFFFU);
    }
    EXPECT_EQ(known.size(), 1U);
    EXPECT_GT(hashes.size(), 990U);
}

TEST(KeyHash, GivesTheSameForTheSameKeyWhereverItStands) {
    for (size_t length = 0; length < 40; ++length) {
        const std::string key(length, 'k');
        const std::string shifted = "x" + key;
        EXPECT_EQ(HashKey(key), HashKey(std::string_view(shifted).substr(1)));
        EXPECT_NE(HashKey(key), HashKey(key + "k"));
    }
}

} // namespace
