// Schemas of many files: loading them beside pugixml, and unloading them one by one.

#include "Session.h"

#include "make_schema/SchemaMaker.h"

#include "ovi/ovi.h"

#include <pugixml.hpp>

#include <algorithm>
#include <string>
#include <vector>

namespace {

constexpr int kVersions = 3;

std::vector<std::string> GetPaths() {
    std::vector<std::string> paths;
    for (int i = 0; i < GetSettings().files; ++i)
        paths.push_back(GetSettings().schema + '/' + SchemaMaker::GetFileName(i));
    return paths;
}

bool HasSchema(benchmark::State& state) {
    if (!GetSettings().schema.empty())
        return true;
    state.SkipWithError("needs a schema: --schema=DIRECTORY, filled by ovi_make_schema");
    return false;
}

void LoadAll(const std::vector<std::string>& paths) {
    for (const std::string& path : paths)
        OviTemplateManager_LoadTemplateFile(path.c_str());
}

/// Looks for every version of every template, behind the benchmark's time.
void ExpectTemplates(benchmark::State& state, int before, int files) {
    const int expected = before + files * SchemaMaker::kTemplatesPerFile * kVersions;
    if (OviTemplateManager_GetTemplateCount() != expected)
        state.SkipWithError("wrong number of templates");
    if (OviErrorManager_GetErrorItemCount(OVI_LEVEL_ERROR | OVI_LEVEL_WARNING) != 0)
        state.SkipWithError("the schema did not load cleanly");
}

void SchemaLoadOvi(benchmark::State& state) {
    if (!HasSchema(state))
        return;
    const Session session;
    const auto paths = GetPaths();
    const int before = OviTemplateManager_GetTemplateCount();
    for (auto _ : state)
        LoadAll(paths);
    ExpectTemplates(state, before, GetSettings().files);
    ReportPeakMemory(state);
}
BENCHMARK(SchemaLoadOvi)->Name("schema_load/ovi")->Iterations(1);

/// Keeps every document, as we keep every template.
void SchemaLoadPugixml(benchmark::State& state) {
    if (!HasSchema(state))
        return;
    const auto paths = GetPaths();
    std::vector<pugi::xml_document> documents(paths.size());
    for (auto _ : state) {
        for (size_t i = 0; i < paths.size(); ++i) {
            if (!documents[i].load_file(paths[i].c_str()))
                state.SkipWithError("pugixml failed");
        }
    }
    ReportPeakMemory(state);
}
BENCHMARK(SchemaLoadPugixml)->Name("schema_load/pugixml")->Iterations(1);

/// From the last file to the first, since templates that others extend are kept.
void SchemaUnloadOvi(benchmark::State& state) {
    if (!HasSchema(state))
        return;
    const Session session;
    auto paths = GetPaths();
    const int before = OviTemplateManager_GetTemplateCount();
    LoadAll(paths);
    ExpectTemplates(state, before, GetSettings().files);
    std::reverse(paths.begin(), paths.end());
    for (auto _ : state) {
        for (const std::string& path : paths)
            OviTemplateManager_UnloadTemplateFile(path.c_str());
    }
    ExpectTemplates(state, before, 0);
    ReportPeakMemory(state);
}
BENCHMARK(SchemaUnloadOvi)->Name("schema_unload/ovi")->Iterations(1);

} // namespace
