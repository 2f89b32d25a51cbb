// Lookups by name, beside a std::map of the same names. The map gets its keys as std::string, so
// that its lookups need no conversion; both sides ask for the names in the same mixed order.

#include "Session.h"

#include "ovi/ovi.h"

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace {

using Names = std::vector<std::string>;

Names MakeNames(const char* prefix, int count) {
    Names names;
    for (int i = 0; i < count; ++i) {
        const std::string digits = std::to_string(i);
        names.push_back(prefix + std::string(7 - std::min<size_t>(digits.size(), 7), '0') + digits);
    }
    return names;
}

Names Mixed(Names names) {
    std::mt19937 numbers(1);
    std::shuffle(names.begin(), names.end(), numbers);
    return names;
}

/// Looks up one name after the other, each of which must be there.
template <class Find> void LookUp(benchmark::State& state, const Names& names, Find find) {
    const Names asked = Mixed(names);
    size_t next = 0;
    bool foundAll = true;
    {
        const AllocationsPerIteration allocations(state);
        for (auto _ : state) {
            auto* found = find(asked[next]);
            benchmark::DoNotOptimize(found);
            foundAll = foundAll && found;
            next = next + 1 == asked.size() ? 0 : next + 1;
        }
    }
    if (!foundAll)
        state.SkipWithError("a name was not found");
    ReportPeakMemory(state);
}

template <class T, class Make>
void LookUpInMap(benchmark::State& state, const Names& names, Make make) {
    std::map<std::string, T*> map;
    for (const std::string& name : names)
        map.emplace(name, make(name));
    LookUp(state, names, [&map](const std::string& name) -> T* {
        const auto found = map.find(name);
        return found == map.end() ? nullptr : found->second;
    });
}

// -- assets ---------------------------------------------------------------------------------------

Names GetAssetNames() {
    return MakeNames("prop_", GetSettings().assets);
}

OviAsset* MakeAsset(const std::string& name) {
    return OviAssetManager_NewAsset(name.c_str());
}

void AssetOvi(benchmark::State& state) {
    const Session session;
    const Names names = GetAssetNames();
    for (const std::string& name : names)
        MakeAsset(name);
    LookUp(state, names,
           [](const std::string& name) { return OviAssetManager_GetAsset(name.c_str()); });
}
BENCHMARK(AssetOvi)->Name("asset/ovi");

void AssetMap(benchmark::State& state) {
    const Session session;
    LookUpInMap<OviAsset>(state, GetAssetNames(), MakeAsset);
}
BENCHMARK(AssetMap)->Name("asset/map");

// -- property instances ---------------------------------------------------------------------------

const Names kPropertyNames = {"Item.identifier", "Item.label",  "Item.position", "Item.root",
                              "Item.visible",    "Prop.height", "Prop.plug",     "Prop.reviewState",
                              "Prop.revision",   "Prop.shape"};

OviAsset* MakeProp() {
    OviAsset* asset = OviAssetManager_NewAsset("prop");
    OviInstance_AddTemplate(asset, OviTemplateManager_GetTemplate("bench.Prop"));
    return asset;
}

void PropertyOvi(benchmark::State& state) {
    const Session session;
    OviAsset* asset = MakeProp();
    LookUp(state, kPropertyNames, [asset](const std::string& name) {
        return OviInstance_GetPropertyInstance(asset, name.c_str(), false);
    });
}
BENCHMARK(PropertyOvi)->Name("property/ovi");

void PropertyMap(benchmark::State& state) {
    const Session session;
    OviAsset* asset = MakeProp();
    LookUpInMap<OviPropertyInstance>(state, kPropertyNames, [asset](const std::string& name) {
        return OviInstance_GetPropertyInstance(asset, name.c_str(), false);
    });
}
BENCHMARK(PropertyMap)->Name("property/map");

// -- templates ------------------------------------------------------------------------------------

/// A tenth as many as assets.
Names GetTemplateNames() {
    return MakeNames("bench.many.Template_", std::max(GetSettings().assets / 10, 1));
}

OviTemplate* MakeTemplate(const std::string& name) {
    return OviTemplateManager_CreateTemplate(name.c_str());
}

void TemplateOvi(benchmark::State& state) {
    const Session session;
    const Names names = GetTemplateNames();
    for (const std::string& name : names)
        MakeTemplate(name);
    LookUp(state, names,
           [](const std::string& name) { return OviTemplateManager_GetTemplate(name.c_str()); });
}
BENCHMARK(TemplateOvi)->Name("template/ovi");

void TemplateMap(benchmark::State& state) {
    const Session session;
    LookUpInMap<OviTemplate>(state, GetTemplateNames(), MakeTemplate);
}
BENCHMARK(TemplateMap)->Name("template/map");

} // namespace
