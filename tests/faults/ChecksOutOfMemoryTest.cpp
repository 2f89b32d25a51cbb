// What the checks of handles promise when memory runs out.

#include <string>

#include <gtest/gtest.h>

#include "faults/Allocations.h"
#include "ovi/ovi.h"

namespace {

/// Hands in a dead handle while the n-th allocation fails, and gives the message of the finding.
/// `failed` says whether there was such an allocation.
std::string MessageWithoutMemory(long n, Allocations::Mode mode, bool& failed) {
    Ovi_Initialize();
    Ovi_SetChecks(true);
    OviInstance* instance = OviInstance_New("x");
    OviObject_Delete(instance);
    OviErrorManager_GetErrorItemCount(0);
    Allocations::Arm(n, mode);
    EXPECT_FALSE(OviInstance_IsValid(instance));
    Allocations::Disarm();
    failed = Allocations::HasFailed();
    EXPECT_EQ(OviErrorManager_GetErrorItemCount(OVI_LEVEL_ERROR), 1);
    const std::string message = OviErrorItem_GetMessage(OviErrorManager_GetErrorItemAt(0));
    Ovi_Terminate();
    Ovi_SetChecks(false);
    return message;
}

TEST(ChecksOutOfMemory, ARefusalIsCountedAndItsMessageIsWholeOrShortOrMissing) {
    const std::string whole = "OviInstance_IsValid: the handle is dead (it was an Instance)";
    bool failed = true;
    for (long n = 1; failed; ++n) {
        ASSERT_LT(n, 100);
        const std::string message = MessageWithoutMemory(n, Allocations::kOnce, failed);
        EXPECT_TRUE(message == whole || message == "a bad handle was refused" || message.empty())
            << message;
        EXPECT_TRUE(failed || message == whole);
    }
}

TEST(ChecksOutOfMemory, TheFirstAllocationThatFailsLeavesAShorterMessage) {
    bool failed = false;
    EXPECT_EQ(MessageWithoutMemory(1, Allocations::kOnce, failed), "a bad handle was refused");
    EXPECT_TRUE(failed);
}

TEST(ChecksOutOfMemory, WithoutAnyMemoryTheRefusalCounts) {
    bool failed = false;
    EXPECT_EQ(MessageWithoutMemory(1, Allocations::kFromThenOn, failed), "");
    EXPECT_TRUE(failed);
}

} // namespace
