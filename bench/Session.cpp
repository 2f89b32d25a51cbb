#include "Session.h"

#include "AllocationCounter.h"

#include "ovi/ovi.h"

#include <fstream>

namespace {

/// The process's own peak: that of getrusage would include what the shell before it needed.
double GetPeakKilobytes() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.compare(0, 6, "VmHWM:") == 0)
            return std::stod(line.substr(6));
    }
    return 0;
}

bool HasDiagnostics() {
    return OviErrorManager_GetErrorItemCount(OVI_LEVEL_ERROR | OVI_LEVEL_WARNING) != 0;
}

} // namespace

Settings& GetSettings() {
    static Settings settings;
    return settings;
}

Session::Session() {
    Ovi_Initialize();
    OviTemplateManager_LoadTemplateFile(OVI_SOURCE_DIR "/bench/schema/Bench.template");
}

Session::~Session() {
    OviAssetManager_NewScene();
    Ovi_Terminate();
}

bool Session::LoadScene(benchmark::State& state) const {
    if (OviAssetManager_LoadScene(GetSettings().scene.c_str()) && !HasDiagnostics() &&
        OviAssetManager_GetAssetCount() > 0)
        return true;
    state.SkipWithError("the scene did not load cleanly");
    return false;
}

bool HasScene(benchmark::State& state) {
    if (!GetSettings().scene.empty())
        return true;
    state.SkipWithError("needs a scene: --scene=FILE, made with ovi_make_scene");
    return false;
}

void ReportPeakMemory(benchmark::State& state) {
    state.counters["peak_kB"] = GetPeakKilobytes();
}

AllocationsPerIteration::AllocationsPerIteration(benchmark::State& state)
    : state_(state), before_(CountAllocations()) {}

AllocationsPerIteration::~AllocationsPerIteration() {
    const auto count = static_cast<double>(CountAllocations() - before_);
    state_.counters["allocations"] = count / static_cast<double>(state_.iterations());
}
