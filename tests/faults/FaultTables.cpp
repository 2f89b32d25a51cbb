#include "faults/FaultTables.h"

#include <map>
#include <utility>

#include <gtest/gtest.h>

namespace {

struct Row {
    long tried = 0;
    const char* outcome = "";
    bool holds = true;
};

using Rows = std::map<std::pair<FaultTables::Table, std::string>, Row>;

Rows& AllRows() {
    static Rows rows;
    return rows;
}

} // namespace

void FaultTables::Note(Table table, const std::string& row, long tried, const char* outcome) {
    Row& noted = AllRows()[{table, row}];
    const bool holds = noted.holds && !::testing::Test::HasFailure();
    noted = {noted.tried + tried, holds ? outcome : "FAILED", holds};
}

std::string FaultTables::GetText() {
    std::string text;
    for (const auto& [place, row] : AllRows())
        text += std::string(place.first == kAllocations ? "allocations" : "writes") + " | " +
                place.second + " | " + std::to_string(row.tried) + " | " + row.outcome + " |\n";
    return text;
}
