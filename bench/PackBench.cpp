// Packing the values of a long attribute, beside copying the same bytes.

#include "Session.h"

#include "ovi/ovi.h"

#include <cstdint>
#include <cstring>
#include <numeric>
#include <vector>

namespace {

constexpr int kCount = 1000000;

template <class Element> std::vector<Element> MakeValues() {
    std::vector<Element> values(kCount);
    std::iota(values.begin(), values.end(), Element(1));
    return values;
}

constexpr const char* GetTypeName(std::int32_t) {
    return "INT32";
}
constexpr const char* GetTypeName(float) {
    return "FLOAT";
}
constexpr const char* GetTypeName(double) {
    return "DOUBLE";
}

template <class Element> void Pack(benchmark::State& state) {
    const Session session;
    OviType* type = OviTemplateManager_GetType(GetTypeName(Element()));
    const auto values = MakeValues<Element>();
    std::vector<Element> packed(kCount);
    const auto size = static_cast<int>(kCount * sizeof(Element));
    bool wholeEachTime = true;
    for (auto _ : state) {
        const int used =
            OviType_WriteValueToBinary(type, values.data(), kCount, packed.data(), size);
        benchmark::ClobberMemory();
        wholeEachTime = wholeEachTime && used == size;
    }
    if (!wholeEachTime || packed != values)
        state.SkipWithError("the values were not packed");
    ReportPeakMemory(state);
}
BENCHMARK_TEMPLATE(Pack, std::int32_t)->Name("pack_int32/ovi");
BENCHMARK_TEMPLATE(Pack, float)->Name("pack_float/ovi");
BENCHMARK_TEMPLATE(Pack, double)->Name("pack_double/ovi");

template <class Element> void Copy(benchmark::State& state) {
    const auto values = MakeValues<Element>();
    std::vector<Element> copied(kCount);
    for (auto _ : state) {
        std::memcpy(copied.data(), values.data(), kCount * sizeof(Element));
        benchmark::ClobberMemory();
    }
    if (copied != values)
        state.SkipWithError("the values were not copied");
    ReportPeakMemory(state);
}
BENCHMARK_TEMPLATE(Copy, std::int32_t)->Name("pack_int32/memcpy");
BENCHMARK_TEMPLATE(Copy, float)->Name("pack_float/memcpy");
BENCHMARK_TEMPLATE(Copy, double)->Name("pack_double/memcpy");

} // namespace
