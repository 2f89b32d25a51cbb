#include "core/NameAndTexts.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

using Kor::CompactString;
using Kor::NameAndTexts;

namespace {

NameAndTexts& Named(NameAndTexts& object, const char* name) {
    object.EditName().Assign(name);
    return object;
}

TEST(NameAndTexts, HasNeitherAtFirst) {
    const NameAndTexts object;
    EXPECT_TRUE(object.GetName().IsEmpty());
    EXPECT_EQ(object.GetTexts(), nullptr);
}

TEST(NameAndTexts, KeepsTheNameWhenTextsComeAndTheTextsWhenTheNameChanges) {
    NameAndTexts object;
    Named(object, "lamp").EditTexts().comment.Assign("bright");
    EXPECT_EQ(object.GetName().View(), "lamp");
    Named(object, "lantern");
    EXPECT_EQ(object.GetName().View(), "lantern");
    ASSERT_NE(object.GetTexts(), nullptr);
    EXPECT_EQ(object.GetTexts()->comment.View(), "bright");
}

TEST(NameAndTexts, LeavesTheCharactersOfTheNameWhereTheyAreWhenTextsComeAndGo) {
    NameAndTexts object;
    const char* name = Named(object, "lamp").GetName().CStr();
    object.EditTexts().labels.Set("en", "Lamp");
    EXPECT_EQ(object.GetName().CStr(), name);
    object.CopyTexts(NameAndTexts());
    EXPECT_EQ(object.GetName().CStr(), name);
}

TEST(NameAndTexts, EditsTheSameTextsAgain) {
    NameAndTexts object;
    object.EditTexts().labels.Set("en", "Lamp");
    object.EditTexts().descriptions.Set("en", "Gives light");
    EXPECT_STREQ(object.GetTexts()->labels.Find("en"), "Lamp");
    EXPECT_STREQ(object.GetTexts()->descriptions.Find("en"), "Gives light");
}

TEST(NameAndTexts, CopiesEverythingIntoACopyOfItsOwn) {
    NameAndTexts object;
    Named(object, "lamp").EditTexts().comment.Assign("bright");
    NameAndTexts copy(object);
    Named(object, "lantern").EditTexts().comment.Assign("dim");
    EXPECT_EQ(copy.GetName().View(), "lamp");
    EXPECT_EQ(copy.GetTexts()->comment.View(), "bright");
    const NameAndTexts plain(Named(*std::make_unique<NameAndTexts>(), "plain"));
    EXPECT_EQ(plain.GetName().View(), "plain");
    EXPECT_EQ(plain.GetTexts(), nullptr);
}

TEST(NameAndTexts, TakesOnlyTheTextsOfAnotherOne) {
    NameAndTexts object;
    NameAndTexts other;
    Named(other, "other").EditTexts().comment.Assign("bright");
    Named(object, "object").CopyTexts(other);
    EXPECT_EQ(object.GetName().View(), "object");
    EXPECT_EQ(object.GetTexts()->comment.View(), "bright");
    object.CopyTexts(NameAndTexts());
    EXPECT_EQ(object.GetName().View(), "object");
    EXPECT_EQ(object.GetTexts(), nullptr);
}

TEST(NameAndTexts, KeepsItsTextsWhenTheyAreCopiedFromItself) {
    NameAndTexts object;
    Named(object, "lamp").EditTexts().comment.Assign("bright");
    object.CopyTexts(object);
    EXPECT_EQ(object.GetTexts()->comment.View(), "bright");
}

TEST(NameAndTexts, ExchangesTheNameForOneThatIsThere) {
    NameAndTexts object;
    Named(object, "lamp").EditTexts();
    CompactString fresh("lantern");
    std::swap(object.EditName(), fresh);
    EXPECT_EQ(object.GetName().View(), "lantern");
    EXPECT_EQ(fresh.View(), "lamp");
}

} // namespace
