// The tests of failing allocations: ovi_fault_tests [gtest's options] [--table]
// With --table the numbers of failed allocations go to the standard error stream, as rows of a
// table.

#include <gtest/gtest.h>

#include "faults/FailureRuns.h"
#include "faults/Model.h"

#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <string>

int main(int argumentCount, char** arguments) {
    ::testing::InitGoogleTest(&argumentCount, arguments);
    const bool wantsTable = argumentCount == 2 && std::string(arguments[1]) == "--table";
    // A directory for each process, as several may run at once.
    const std::string directory = OVI_TEST_OUTPUT_DIR "/faults" + std::to_string(getpid());
    Model::WriteFiles(directory);
    const int result = RUN_ALL_TESTS();
    std::filesystem::remove_all(directory);
    if (wantsTable)
        std::fputs(GetFailureTable().c_str(), stderr);
    return result;
}
