#pragma once

#include <string>

/// Prints what is wrong and ends the program in the way that a fuzzer takes for a finding.
[[noreturn]] void ReportFinding(const std::string& what);

/// A finding unless the two texts are the same; shows where they begin to differ.
void ExpectSame(const std::string& what, const std::string& wanted, const std::string& got);

/// A finding unless it holds.
inline void Expect(bool holds, const char* what) {
    if (!holds)
        ReportFinding(what);
}
