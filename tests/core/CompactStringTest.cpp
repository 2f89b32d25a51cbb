// The text in the space of one pointer.

#include <utility>

#include <gtest/gtest.h>

#include "core/CompactString.h"

namespace {

using namespace Kor;

TEST(CompactString, TakesTheSpaceOfOnePointer) {
    EXPECT_EQ(sizeof(CompactString), sizeof(void*));
}

TEST(CompactString, IsEmptyAtFirst) {
    const CompactString text;
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_STREQ(text.CStr(), "");
    EXPECT_EQ(text.View(), "");
}

TEST(CompactString, KeepsTextsOfAllLengths) {
    for (size_t length = 0; length < 300; ++length) {
        const std::string wanted(length, 'x');
        const CompactString text(wanted);
        EXPECT_EQ(text.View(), wanted);
        EXPECT_EQ(text.CStr(), wanted);
        EXPECT_EQ(text.IsEmpty(), length == 0);
    }
}

TEST(CompactString, KeepsNulBytes) {
    const CompactString text(std::string_view("a\0b", 3));
    EXPECT_EQ(text.View(), std::string_view("a\0b", 3));
}

TEST(CompactString, CopiesAreIndependent) {
    CompactString first("first");
    CompactString copy(first);
    CompactString assigned("before");
    assigned = first;
    first.Assign("changed");
    EXPECT_EQ(copy.View(), "first");
    EXPECT_EQ(assigned.View(), "first");
    assigned = CompactString();
    EXPECT_TRUE(assigned.IsEmpty());
}

TEST(CompactString, MovesWithoutCopying) {
    CompactString source("moved");
    const char* characters = source.CStr();
    CompactString target(std::move(source));
    EXPECT_EQ(target.CStr(), characters);
    CompactString other("other");
    other = std::move(target);
    EXPECT_EQ(other.CStr(), characters);
}

TEST(CompactString, MayBeAssignedFromItself) {
    CompactString text("part of itself");
    text.Assign(text.View().substr(8));
    EXPECT_EQ(text.View(), "itself");
    CompactString& same = text;
    text = same;
    EXPECT_EQ(text.View(), "itself");
    text = std::move(same);
    EXPECT_EQ(text.View(), "itself");
}

} // namespace
