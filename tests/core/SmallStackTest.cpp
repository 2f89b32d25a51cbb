// The stack for graph walks.

#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "core/SmallStack.h"

namespace {

using namespace Kor;

TEST(SmallStack, GivesBackInReverseOrderBeyondItsRoom) {
    SmallStack<int, 4> stack;
    for (int i = 0; i < 100; ++i)
        stack.Push(i);
    for (int i = 99; i >= 0; --i) {
        EXPECT_FALSE(stack.IsEmpty());
        EXPECT_EQ(stack.Pop(), i);
    }
    EXPECT_TRUE(stack.IsEmpty());
}

TEST(SmallStack, AgreesWithAVectorAroundTheEdgeOfItsRoom) {
    SmallStack<int, 4> stack;
    std::vector<int> model;
    std::mt19937 random(5);
    for (int i = 0; i < 10000; ++i) {
        const bool push = model.empty() || (model.size() < 8 && random() % 2 == 0);
        if (push) {
            stack.Push(i);
            model.push_back(i);
        } else {
            ASSERT_EQ(stack.Pop(), model.back());
            model.pop_back();
        }
        ASSERT_EQ(stack.IsEmpty(), model.empty());
    }
}

} // namespace
