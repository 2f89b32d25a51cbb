// The rules for names, and comparison without regard to case.

#include <gtest/gtest.h>

#include "core/Names.h"

namespace {

using namespace Kor;

TEST(Names, AFullNameMayHaveDotsInside) {
    for (const char* name : {"a", "a.b", "a.b.C", "3.D", "_._", "a..b"})
        EXPECT_TRUE(IsValidFullName(name)) << name;
    for (const char* name : {"", ".", ".a", "a.", "a b", "a.b-c", "..", "a/b", "\xc3\xa9"})
        EXPECT_FALSE(IsValidFullName(name)) << name;
}

TEST(Names, ANulByteIsNoPartOfAName) {
    EXPECT_FALSE(IsValidName(std::string_view("a\0b", 3)));
    EXPECT_FALSE(IsValidFullName(std::string_view("a.\0b", 4)));
}

TEST(Names, OnlyAsciiLettersHaveCase) {
    EXPECT_TRUE(EqualsIgnoreCase("AbC_9", "aBc_9"));
    EXPECT_FALSE(EqualsIgnoreCase("a", "ab"));
    EXPECT_FALSE(EqualsIgnoreCase("\xc4", "\xe4"));
    EXPECT_FALSE(EqualsIgnoreCase("@", "`"));
    EXPECT_FALSE(EqualsIgnoreCase("[", "{"));
    EXPECT_TRUE(EqualsIgnoreCase("", ""));
}

TEST(Names, TheOrderWithoutCaseIsThatOfSmallLetters) {
    EXPECT_LT(CompareIgnoreCase("a", "B"), 0);
    EXPECT_GT(CompareIgnoreCase("b", "A"), 0);
    EXPECT_EQ(CompareIgnoreCase("Same", "sAME"), 0);
    EXPECT_LT(CompareIgnoreCase("a", "ab"), 0);
    EXPECT_GT(CompareIgnoreCase("ab", "A"), 0);
    EXPECT_LT(CompareIgnoreCase("Z", "\xff"), 0); // bytes are unsigned
    EXPECT_LT(CompareIgnoreCase("_", "a"), 0);
    EXPECT_EQ(CompareIgnoreCase("a/long/path/TO/it", "a/long/path/to/IT"), 0);
    EXPECT_LT(CompareIgnoreCase("a/long/path/to/A", "A/LONG/path/to/b"), 0);
    EXPECT_GT(CompareIgnoreCase("a/long/path/to/b", "a/long/path/to/A"), 0);
    EXPECT_LT(CompareIgnoreCase("12345678", "123456789"), 0);
    EXPECT_LT(CompareIgnoreCase("_", "A"), 0);
}

TEST(Names, ANullTextReadsAsEmpty) {
    EXPECT_EQ(TextOf(nullptr), "");
    EXPECT_EQ(TextOf("x"), "x");
}

} // namespace
