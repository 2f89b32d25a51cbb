// Packing a long value, beside copying the same bytes.

#include "Session.h"

#include "ovi/ovi.h"

#include <cstring>
#include <vector>

namespace {

constexpr int kValues = 1000000;
constexpr int kBytes = kValues * static_cast<int>(sizeof(float));

std::vector<float> MakeValues() {
    std::vector<float> values(kValues);
    for (int i = 0; i < kValues; ++i)
        values[static_cast<size_t>(i)] = static_cast<float>(i) * 0.25f;
    return values;
}

void PackOvi(benchmark::State& state) {
    const Session session;
    OviType* type = OviTemplateManager_GetType("FLOAT");
    const std::vector<float> values = MakeValues();
    std::vector<char> packed(kBytes);
    for (auto _ : state) {
        const int size =
            OviType_WriteValueToBinary(type, values.data(), kValues, packed.data(), kBytes);
        benchmark::DoNotOptimize(packed.data());
        if (size != kBytes)
            state.SkipWithError("not everything was packed");
    }
    if (std::memcmp(packed.data(), values.data(), kBytes) != 0)
        state.SkipWithError("the bytes differ");
    ReportPeakMemory(state);
}
BENCHMARK(PackOvi)->Name("pack/ovi");

void PackMemcpy(benchmark::State& state) {
    const std::vector<float> values = MakeValues();
    std::vector<char> packed(kBytes);
    for (auto _ : state) {
        std::memcpy(packed.data(), values.data(), kBytes);
        benchmark::DoNotOptimize(packed.data());
        benchmark::ClobberMemory();
    }
    ReportPeakMemory(state);
}
BENCHMARK(PackMemcpy)->Name("pack/memcpy");

} // namespace
