// Memory may run out at any allocation: no exception leaves the library, nothing breaks, and what
// was there before is still there.

#include <cctype>
#include <fstream>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "faults/CallRows.h"

namespace {

CallRows AllRows() {
    CallRows all;
    for (const CallRows& rows :
         {ObjectRows(), TypeRows(), SchemaRows(), NodeRows(), ManagerRows(), SceneRows()})
        all.insert(all.end(), rows.begin(), rows.end());
    return all;
}

/// The functions that a call's text names.
std::set<std::string> FunctionsIn(const std::string& text) {
    std::set<std::string> functions;
    for (size_t at = text.find("Ovi"); at != std::string::npos; at = text.find("Ovi", at + 1))
        functions.insert(text.substr(at, text.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                                                "abcdefghijklmnopqrstuvwxyz_"
                                                                "0123456789",
                                                                at) -
                                             at));
    return functions;
}

class ExportedCall : public ::testing::TestWithParam<CallRow> {};

TEST_P(ExportedCall, IsDoneOrNotWhereverMemoryRunsOut) {
    const CallRow row = GetParam();
    RunWithFailures(row.text, row.promise, row.step);
}

/// The call as the name of a test.
std::string NameOf(const ::testing::TestParamInfo<CallRow>& info) {
    std::string name;
    for (const char c : std::string(info.param.text)) {
        if (std::isalnum(static_cast<unsigned char>(c)))
            name += c;
    }
    return name.substr(0, 80) + std::to_string(info.index);
}

TEST(AllocationFailure, IsTriedWithEveryExportedFunction) {
    std::set<std::string> called;
    for (const CallRow& row : AllRows())
        called.merge(FunctionsIn(row.text));
    std::ifstream exported(OVI_SOURCE_DIR "/src/api/exported-symbols.txt");
    int count = 0;
    for (std::string function; exported >> function; ++count)
        EXPECT_EQ(called.count(function), 1u) << function;
    EXPECT_GT(count, 200);
}

INSTANTIATE_TEST_SUITE_P(AllocationFailure, ExportedCall, ::testing::ValuesIn(AllRows()), NameOf);

} // namespace
