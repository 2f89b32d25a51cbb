#include "types/BoolType.h"

#include <gtest/gtest.h>

namespace Kor {
namespace {

TEST(BoolType, IsValidWhenTheCountFitsTheDimension) {
    const unsigned char flags[] = {0, 1, 1};
    const BoolType one("One", 1, 1);
    const BoolType three("Three", 3, 1);
    const BoolType many("Many", 0, 1);
    EXPECT_TRUE(one.IsValueValid(flags, nullptr, nullptr, 1));
    EXPECT_FALSE(one.IsValueValid(flags, nullptr, nullptr, 3));
    EXPECT_TRUE(three.IsValueValid(flags, nullptr, nullptr, 3));
    EXPECT_FALSE(three.IsValueValid(flags, nullptr, nullptr, 1));
    for (const int count : {0, 1, 3})
        EXPECT_TRUE(many.IsValueValid(flags, nullptr, nullptr, count));
    EXPECT_FALSE(many.IsValueValid(nullptr, nullptr, nullptr, 0));
}

TEST(BoolType, FindsNoDifferenceInNoElements) {
    const unsigned char flag = 1;
    EXPECT_EQ(BoolType("One", 1, 1).CompareValues(nullptr, &flag, 0), 0);
}

} // namespace
} // namespace Kor
