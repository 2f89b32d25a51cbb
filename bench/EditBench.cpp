// Single edits: setting a value, and making an asset without naming it.

#include "Session.h"

#include "ovi/ovi.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

namespace {

/// A height that differs each time and has several digits.
float GetHeight(int i) {
    return 1.0f + static_cast<float>(i & 1023) * 0.137f;
}

// -- values ---------------------------------------------------------------------------------------

void CountCall(void* userData, void*, int, void*) {
    ++*static_cast<int*>(userData);
}

void SetValueOvi(benchmark::State& state) {
    const Session session;
    OviAsset* asset = OviAssetManager_NewAsset("prop");
    OviInstance_AddTemplate(asset, OviTemplateManager_GetTemplate("bench.Prop"));
    auto* height = static_cast<OviAttributeInstance*>(
        OviInstance_GetPropertyInstance(asset, "Prop.height", false));
    int calls = 0;
    OviNotificationManager_RegisterPropertyInstanceCallback(CountCall, &calls);
    int done = 0;
    {
        const AllocationsPerIteration allocations(state);
        for (auto _ : state) {
            const float value = GetHeight(done++);
            OviAttributeInstance_SetValue(height, &value);
        }
    }
    OviNotificationManager_UnregisterPropertyInstanceCallback(&calls);
    if (calls != done)
        state.SkipWithError("the callback was not called each time");
    ReportPeakMemory(state);
}
BENCHMARK(SetValueOvi)->Name("set_value/ovi");

/// What setting a value cannot do without: a new block, the text for the callback, the old block.
void SetValueLibc(benchmark::State& state) {
    void* block = std::malloc(sizeof(float));
    int done = 0;
    {
        const AllocationsPerIteration allocations(state);
        for (auto _ : state) {
            const float value = GetHeight(done++);
            char text[32];
            std::snprintf(text, sizeof text, "%g", static_cast<double>(value));
            benchmark::DoNotOptimize(text);
            void* fresh = std::malloc(sizeof(float));
            *static_cast<float*>(fresh) = value;
            benchmark::DoNotOptimize(fresh);
            std::free(block);
            block = fresh;
        }
    }
    std::free(block);
    ReportPeakMemory(state);
}
BENCHMARK(SetValueLibc)->Name("set_value/libc");

// -- assets in no order ---------------------------------------------------------------------------

void MakeShuffled(benchmark::State& state) {
    const Session session;
    std::vector<std::string> names(static_cast<size_t>(GetSettings().assets));
    for (size_t i = 0; i < names.size(); ++i)
        names[i] = "prop_" + std::to_string(i);
    std::shuffle(names.begin(), names.end(), std::mt19937(1));
    for (auto _ : state) {
        for (const std::string& name : names)
            OviAssetManager_NewAsset(name.c_str());
        benchmark::DoNotOptimize(OviAssetManager_GetAssetAt(0)); // now they must be in order
    }
    if (OviAssetManager_GetAssetCount() != GetSettings().assets)
        state.SkipWithError("wrong number of assets");
    ReportPeakMemory(state);
}
BENCHMARK(MakeShuffled)->Name("make_shuffled/ovi")->Iterations(1);

// -- assets without a name ------------------------------------------------------------------------

/// Makes so many assets in a row that reading the clock does not count, then takes them out again.
void MakeAssets(benchmark::State& state, int present) {
    constexpr int kBatch = 100;
    const Session session;
    for (int i = 0; i < present; ++i)
        OviAssetManager_NewAsset(nullptr);
    std::vector<OviAsset*> made(kBatch);
    for (auto _ : state) {
        for (OviAsset*& asset : made)
            asset = OviAssetManager_NewAsset(nullptr);
        state.PauseTiming();
        for (OviAsset* asset : made)
            OviObject_Delete(asset);
        state.ResumeTiming();
    }
    if (OviAssetManager_GetAssetCount() != present)
        state.SkipWithError("wrong number of assets");
    ReportPeakMemory(state);
}

void NewAssetFirst(benchmark::State& state) {
    MakeAssets(state, 0);
}
BENCHMARK(NewAssetFirst)->Name("new_asset/first");

void NewAssetNth(benchmark::State& state) {
    MakeAssets(state, GetSettings().assets);
}
BENCHMARK(NewAssetNth)->Name("new_asset/nth");

} // namespace
