#include "core/Ending.h"

#include <gtest/gtest.h>

#include "core/NamedObject.h"

using namespace Kor;

namespace {

/// Counts how many of its kind were destroyed.
class Counted : public NamedObject {
public:
    explicit Counted(int& ends) : ends_(ends) {}
    ~Counted() override { ++ends_; }

private:
    int& ends_;
};

/// Ends an object as a callback does, which the call at hand goes on after.
void EndInCallback(NamedObject* object) {
    const Ending::Deferral deferral;
    Ending::End(object);
}

} // namespace

TEST(EndingTest, WhatACallbackEndsIsFreedWhenTheCallReturns) {
    int ends = 0;
    {
        const Ending::Call call;
        EndInCallback(new Counted(ends));
        EXPECT_EQ(ends, 0);
    }
    EXPECT_EQ(ends, 1);
}

TEST(EndingTest, TheLastUserOfSomethingElseDoesNotFreeWhatACallbackEndedInTheSameCall) {
    int ends = 0;
    {
        const Ending::Call call;
        EndInCallback(new Counted(ends));
        Ending::EndUnused(new Counted(ends));
        EXPECT_EQ(ends, 0);
    }
    EXPECT_EQ(ends, 2);
}

TEST(EndingTest, WhatNobodyUsesAnyMoreIsFreedAtOnceWhereNothingWaits) {
    int ends = 0;
    Ending::EndUnused(new Counted(ends));
    EXPECT_EQ(ends, 1);
}
