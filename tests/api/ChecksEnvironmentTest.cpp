// The environment decides at the first use of the library, so each case has a process of its own.

#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

#include "ovi/ovi.h"

namespace {

void SetWish(const char* value) {
#ifdef _WIN32
    _putenv_s("OVI_CHECKS", value);
#else
    setenv("OVI_CHECKS", value, 1);
#endif
}

/// Ends the process with 10 when a dead handle was reported, or with 20 when nothing was looked at.
[[noreturn]] void UseTheLibrary() {
    OviAssetManager_NewAsset("a");
    if (!Ovi_GetChecks())
        std::exit(20);
    OviAsset* dead = OviAssetManager_GetAsset("a");
    OviObject_Delete(dead);
    OviNamedObject_GetName(dead);
    std::exit(OviErrorManager_GetErrorItemCount(OVI_LEVEL_ERROR) > 0 ? 10 : 30);
}

class ChecksEnvironmentTest : public ::testing::TestWithParam<std::pair<const char*, int>> {
protected:
    void SetUp() override {
        if (const char* before = std::getenv("OVI_CHECKS"))
            before_ = before;
        GTEST_FLAG_SET(death_test_style, "threadsafe"); // a new process, not a copy of this one
    }

    void TearDown() override { SetWish(before_.c_str()); }

private:
    std::string before_;
};

TEST_P(ChecksEnvironmentTest, OnlyTheValueOneSwitchesTheChecksOn) {
    SetWish(GetParam().first);
    EXPECT_EXIT(UseTheLibrary(), ::testing::ExitedWithCode(GetParam().second), "");
}

INSTANTIATE_TEST_SUITE_P(Values, ChecksEnvironmentTest,
                         ::testing::Values(std::pair("1", 10), std::pair("", 20),
                                           std::pair("0", 20), std::pair("11", 20),
                                           std::pair("yes", 20)));

} // namespace
