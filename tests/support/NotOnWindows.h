#pragma once

#include <gtest/gtest.h>

/// Stands on Windows for a test of what only POSIX systems have, and says why it is not there.
#define OVI_NOT_ON_WINDOWS(Suite, Name, reason)                                                    \
    TEST_F(Suite, Name) {                                                                          \
        GTEST_SKIP() << reason;                                                                    \
    }
