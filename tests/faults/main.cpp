// The tests of failing allocations and writes: ovi_fault_tests [gtest's options] [--table]
// With --table what was tried goes to the standard error stream, as rows of tables.

#include <gtest/gtest.h>

#include "faults/FaultTables.h"
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
        std::fputs(FaultTables::GetText().c_str(), stderr);
    return result;
}
