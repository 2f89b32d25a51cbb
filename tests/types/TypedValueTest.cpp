// References to types and owned values: who keeps whom alive.

#include <memory>
#include <utility>

#include <gtest/gtest.h>

#include "core/Ending.h"
#include "types/CustomType.h"
#include "types/StringType.h"
#include "types/TypeRef.h"
#include "types/TypedValue.h"

namespace {

using namespace Kor;

/// A type that tells of its end.
template <class Base> class Mortal : public Base {
public:
    template <class... Arguments>
    explicit Mortal(bool& alive, const Arguments&... arguments)
        : Base(arguments...), alive_(alive) {
        alive_ = true;
    }
    ~Mortal() override { alive_ = false; }

private:
    bool& alive_;
};

Type* NewMortal(bool& alive) {
    return new Mortal<CustomType>(alive, "Mortal", 1);
}

TEST(TypeRef, CountsTheUsersOfAType) {
    CustomType type("Type", 1);
    EXPECT_FALSE(type.IsInUse());
    {
        TypeRef first(&type);
        TypeRef copy(first);
        EXPECT_EQ(type.GetUseCount(), 2);
        TypeRef moved(std::move(copy));
        EXPECT_EQ(type.GetUseCount(), 2);
        TypeRef assigned;
        assigned = first;
        EXPECT_EQ(type.GetUseCount(), 3);
        assigned = std::move(moved);
        EXPECT_EQ(assigned.Get(), &type);
    }
    EXPECT_EQ(type.GetUseCount(), 0);
}

TEST(TypeRef, MayBeSetToWhatItHolds) {
    bool alive = false;
    TypeRef reference(NewMortal(alive));
    reference->LeaveToUsers();
    reference.Reset(reference.Get());
    const TypeRef& same = reference;
    reference = same;
    EXPECT_TRUE(alive);
    EXPECT_EQ(reference->GetUseCount(), 1);
    reference.Reset(nullptr);
    EXPECT_FALSE(alive);
}

TEST(TypeRef, TheLastUserFreesATypeThatWasLeftToUsers) {
    bool alive = false;
    TypeRef first(NewMortal(alive));
    first->LeaveToUsers();
    {
        TypeRef second(first);
        first.Reset(nullptr);
        EXPECT_TRUE(alive);
    }
    EXPECT_FALSE(alive);
}

TEST(TypeRef, OtherTypesAreNeverFreed) {
    bool alive = false;
    auto* type = NewMortal(alive);
    TypeRef(type).Reset(nullptr);
    EXPECT_TRUE(alive);
    type->LeaveToUsers();
    type->TakeFromUsers();
    TypeRef(type).Reset(nullptr);
    EXPECT_TRUE(alive);
    delete type;
}

TEST(TypeRef, ARegisteredTypeIsNotLeftToUsers) {
    bool alive = false;
    auto* type = NewMortal(alive);
    type->SetOwner(Owner::kRegistry);
    type->LeaveToUsers();
    EXPECT_NE(type->GetOwner(), Owner::kUsers);
    TypeRef(type).Reset(nullptr);
    EXPECT_TRUE(alive);
    type->SetOwner(Owner::kHost);
    delete type;
}

TEST(TypeRef, ALongChainOfBasesIsFreedWithoutRecursion) {
    Type* base = nullptr;
    for (int i = 0; i < 300000; ++i) {
        auto* type = new CustomType("Link", 1);
        type->SetBaseType(base);
        type->LeaveToUsers();
        base = type;
    }
    TypeRef(base).Reset(nullptr);
}

TEST(TypeRef, ATypeThatEndsStaysForItsUsersAlone) {
    bool alive = false;
    auto* type = NewMortal(alive);
    TypeRef user(type);
    Ending::End(type);
    EXPECT_TRUE(alive);
    user.Reset(nullptr);
    EXPECT_FALSE(alive);
    Ending::End(NewMortal(alive));
    EXPECT_FALSE(alive);
}

TEST(TypeRef, ACircleOfBasesIsNoUse) {
    bool alive = false;
    auto* type = NewMortal(alive);
    type->SetBaseType(type);
    Ending::End(type);
    EXPECT_FALSE(alive);
}

// -- values ---------------------------------------------------------------------------------------

TEST(TypedValue, FreesItsBlockWithItsType) {
    StringType text("Text", 1, 4);
    TypedValue value;
    EXPECT_FALSE(value);
    const char* words[] = {"one", "two"};
    value.Adopt(&text, text.NewValue(words, 2), 2);
    EXPECT_TRUE(value);
    EXPECT_EQ(value.GetType(), &text);
    EXPECT_EQ(value.GetCount(), 2);
    EXPECT_TRUE(text.IsInUse());
    value.Adopt(&text, text.NewValue(words, 1), 1);
    EXPECT_EQ(value.GetCount(), 1);
    value.Clear();
    EXPECT_EQ(value.Get(), nullptr);
    EXPECT_FALSE(text.IsInUse());
}

TEST(TypedValue, MayAdoptTheBlockItHolds) {
    StringType text("Text", 1, 4);
    const char* word = "kept";
    TypedValue value;
    void* block = text.NewValue(&word, 1);
    value.Adopt(&text, block, 1);
    value.Adopt(&text, block, 1);
    EXPECT_STREQ(*static_cast<char**>(value.Get()), "kept");
}

TEST(TypedValue, ANullBlockEmptiesIt) {
    StringType text("Text", 1, 4);
    TypedValue value;
    value.Adopt(&text, text.NewValue(nullptr, 1), 1);
    value.Adopt(&text, nullptr, 1);
    EXPECT_FALSE(value);
    EXPECT_FALSE(text.IsInUse());
}

TEST(TypedValue, KeepsTheTypeThatHoldsItsElementsUntilTheBlockIsFreed) {
    bool alive = false;
    bool aliasAlive = false;
    auto* text = new Mortal<StringType>(alive, "Text", 1, 4);
    auto* alias = new Mortal<CustomType>(aliasAlive, "Alias", 1);
    alias->SetBaseType(text);
    text->LeaveToUsers();
    const char* word = "word";
    {
        TypedValue value;
        value.Adopt(alias, alias->NewValue(&word, 1), 1);
        EXPECT_EQ(value.GetType(), text);
        EXPECT_FALSE(alias->IsInUse());
        alias->SetBaseType(nullptr); // the block is freed as it was made all the same
        EXPECT_STREQ(*static_cast<char**>(value.Get()), "word");
        delete alias;
        EXPECT_FALSE(aliasAlive);
        EXPECT_TRUE(alive);
    }
    EXPECT_FALSE(alive);
}

TEST(TypedValue, ABlockOfTypesInACircleIsNobodysToFree) {
    CustomType alias("Alias", 1);
    alias.SetBaseType(&alias);
    int block = 0;
    TypedValue value;
    value.Adopt(&alias, &block, 1);
    EXPECT_EQ(value.Get(), &block);
    value.Clear();
    EXPECT_FALSE(value);
    alias.SetBaseType(nullptr);
}

} // namespace
