#pragma once

#include <benchmark/benchmark.h>

#include <string>

/// What a run is about, from the command line.
struct Settings {
    std::string scene;   ///< The scene file to read; its neighbours may be written.
    int assets = 100000; ///< The size of the scenes made by the benchmarks themselves.
    std::string schema;  ///< The directory of the schema's files.
    int files = 1000;    ///< How many of its files to read, from the first one on.
};

/// The settings of this process.
Settings& GetSettings();

/// The library in use, with the schema of the benchmarks loaded, for the length of a benchmark.
class Session {
public:
    Session();
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Loads the scene of the settings; false, with the benchmark marked as failed, when that left
    /// no assets or diagnostics.
    bool LoadScene(benchmark::State& state) const;
};

/// Whether a scene was given; without one the benchmark is marked as failed.
bool HasScene(benchmark::State& state);

/// Adds the process's peak memory to what is reported.
void ReportPeakMemory(benchmark::State& state);

/// Reports the allocations of each iteration since the counter's construction.
class AllocationsPerIteration {
public:
    explicit AllocationsPerIteration(benchmark::State& state);
    ~AllocationsPerIteration();
    AllocationsPerIteration(const AllocationsPerIteration&) = delete;
    AllocationsPerIteration& operator=(const AllocationsPerIteration&) = delete;

private:
    benchmark::State& state_;
    long before_;
};
