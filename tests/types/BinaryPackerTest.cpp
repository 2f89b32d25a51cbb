// Padding by address.

#include <cstdint>

#include <gtest/gtest.h>

#include "types/BinaryPacker.h"

namespace {

using namespace Kor;

int PaddingAt(std::uint64_t address, int alignment) {
    return PaddingOfAddress(reinterpret_cast<const void*>(static_cast<std::uintptr_t>(address)),
                            alignment);
}

// Where an alignment divides no power of two, the low half of an address has another remainder.
TEST(BinaryPacker, PadsByTheWholeAddress) {
    constexpr std::uint64_t kAbove = std::uint64_t{1} << 32;
    for (std::uint64_t low = 0; low < 7; ++low) {
        for (const int alignment : {3, 5, 6, 7}) {
            const auto wanted = static_cast<std::uint64_t>(alignment);
            EXPECT_EQ(PaddingAt(kAbove + low, alignment),
                      static_cast<int>((wanted - (kAbove + low) % wanted) % wanted))
                << low << " " << alignment;
        }
    }
    EXPECT_EQ(PaddingAt(kAbove + 1, 3), 1) << "the low half alone would give 2";
    EXPECT_EQ(PaddingAt(0xFFFFFFFFFFFFFFFE, 3), 1) << "no address is below 0";
}

TEST(BinaryPacker, TakesAlignmentsBelowTwoAsNone) {
    for (const int alignment : {-8, 0, 1})
        EXPECT_EQ(PaddingAt(7, alignment), 0) << alignment;
}

} // namespace
