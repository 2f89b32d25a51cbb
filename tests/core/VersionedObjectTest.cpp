// Versions and their links to predecessors.

#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include "core/VersionedObject.h"

namespace {

using namespace Kor;

/// A version that can be copied.
class Version : public VersionedObject {
public:
    using VersionedObject::VersionedObject;
    Version(const Version&) = default;
};

TEST(VersionedObject, StartsWithoutStatusAndPredecessor) {
    Version first(7);
    EXPECT_EQ(first.GetVersion(), 7);
    EXPECT_EQ(first.GetVersionStatus(), 0);
    EXPECT_EQ(first.GetPrevious(), nullptr);
    first.SetVersion(-1);
    EXPECT_EQ(first.GetVersion(), -1);
}

TEST(VersionedObject, ACopySucceedsItsSource) {
    Version first(1);
    first.SetVersionStatus(VersionedObject::kDeprecated);
    Version copy(first);
    EXPECT_EQ(copy.GetPrevious(), &first);
    EXPECT_EQ(copy.GetVersion(), 1);
    EXPECT_EQ(copy.GetVersionStatus(), 3);
    EXPECT_EQ(first.GetPrevious(), nullptr);
}

TEST(VersionedObject, ADyingPredecessorIsForgottenByAllItsSuccessors) {
    auto first = std::make_unique<Version>(1);
    Version second(*first);
    Version third(second);
    Version branch(*first);
    first.reset();
    EXPECT_EQ(second.GetPrevious(), nullptr);
    EXPECT_EQ(branch.GetPrevious(), nullptr);
    EXPECT_EQ(third.GetPrevious(), &second);
}

TEST(VersionedObject, SuccessorsMayGoInAnyOrder) {
    for (const size_t firstToGo : {0u, 1u, 2u, 3u}) {
        auto source = std::make_unique<Version>(1);
        std::vector<std::unique_ptr<Version>> copies;
        for (int i = 0; i < 4; ++i)
            copies.push_back(std::make_unique<Version>(*source));
        copies.erase(copies.begin() + static_cast<std::ptrdiff_t>(firstToGo));
        for (const auto& copy : copies)
            EXPECT_EQ(copy->GetPrevious(), source.get());
        source.reset();
        for (const auto& copy : copies)
            EXPECT_EQ(copy->GetPrevious(), nullptr);
    }
}

TEST(VersionedObject, TheLinkCanBeMovedAndTakenAway) {
    auto first = std::make_unique<Version>(1);
    auto other = std::make_unique<Version>(1);
    Version second(2);
    second.SetPrevious(first.get());
    second.SetPrevious(other.get());
    first.reset();
    EXPECT_EQ(second.GetPrevious(), other.get());
    second.SetPrevious(other.get());
    second.SetPrevious(nullptr);
    other.reset();
    EXPECT_EQ(second.GetPrevious(), nullptr);
}

} // namespace
