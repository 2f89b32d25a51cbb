#pragma once

#include <string>

/// What the tests tried, for the tables of docs/robustness.md.
class FaultTables {
public:
    enum Table {
        kAllocations, ///< that failed
        kWrites       ///< that failed
    };

    /// Adds faults that were tried to a row. Once a test has failed in it, the row says so.
    static void Note(Table table, const std::string& row, long tried, const char* outcome);

    /// The rows of all tables, each behind the name of its table: "allocations" or "writes".
    static std::string GetText();
};
