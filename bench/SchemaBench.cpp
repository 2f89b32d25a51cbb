// Schemas of many files: loading them, beside parsing the same files, and unloading them one by
// one.

#include "Session.h"

#include "ovi/ovi.h"

#include <pugixml.hpp>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace {

std::vector<std::string> ListSchema(benchmark::State& state) {
    std::vector<std::string> files;
    if (GetSettings().schema.empty()) {
        state.SkipWithError("needs a schema: --schema=DIRECTORY, made with ovi_make_schema");
        return files;
    }
    for (const auto& entry : std::filesystem::directory_iterator(GetSettings().schema))
        files.push_back(entry.path().string());
    std::sort(files.begin(), files.end());
    return files;
}

bool LoadAll(const std::vector<std::string>& files) {
    return std::all_of(files.begin(), files.end(), [](const std::string& file) {
        return OviTemplateManager_LoadTemplateFile(file.c_str());
    });
}

void LoadSchema(benchmark::State& state) {
    const std::vector<std::string> files = ListSchema(state);
    const Session session;
    for (auto _ : state) {
        if (!LoadAll(files) || OviErrorManager_GetErrorItemCount(OVI_LEVEL_ERROR) > 0)
            state.SkipWithError("the schema did not load");
    }
    ReportPeakMemory(state);
}
BENCHMARK(LoadSchema)->Name("schema/ovi")->Iterations(1);

void ParseSchema(benchmark::State& state) {
    const std::vector<std::string> files = ListSchema(state);
    for (auto _ : state) {
        for (const std::string& file : files) {
            pugi::xml_document document;
            if (!document.load_file(file.c_str()))
                state.SkipWithError("pugixml failed");
        }
    }
    ReportPeakMemory(state);
}
BENCHMARK(ParseSchema)->Name("schema/pugixml")->Iterations(1);

void UnloadSchema(benchmark::State& state) {
    const std::vector<std::string> files = ListSchema(state);
    const Session session;
    const int before = OviTemplateManager_GetTemplateCount();
    LoadAll(files);
    for (auto _ : state) {
        for (const std::string& file : files)
            OviTemplateManager_UnloadTemplateFile(file.c_str());
    }
    if (OviTemplateManager_GetTemplateCount() != before)
        state.SkipWithError("templates were left");
    ReportPeakMemory(state);
}
BENCHMARK(UnloadSchema)->Name("unload/ovi")->Iterations(1);

} // namespace
