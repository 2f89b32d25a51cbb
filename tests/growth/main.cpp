// Makes lists long, changes them in every order and asks about what they hold, each at two sizes of
// which one is ten times the other: ovi_growth [--scale PERCENT] [--only PART-OF-NAME] DIRECTORY
//
// The exit code is 0 when every step gave what it should and none grew like the square. What is
// missed is measured again, up to three times: other programs may have had the processor's cache.

#include <algorithm>
#include <cstdio>
#include <exception>
#include <vector>

#include "Cases.h"

namespace {

constexpr int kFactor = 10;
constexpr double kMostGrowth = 50; // n log n gives 13, a smaller cache some more; the square 100

/// Milliseconds; less is taken for that much. The clock of Windows counts whole ones, and those in
/// which other programs run, too.
#ifdef _WIN32
constexpr double kMeasurable = 5;
#else
constexpr double kMeasurable = 1;
#endif
constexpr int kMeasurements = 3;

const std::vector<Case>& GetGrowthCases() {
    static const std::vector<Case> cases = {
        {"Packages used and types not found", "of each", 5000, RunUsing},
        {"Templates of an asset", "templates", 5000, RunTemplatesOfAnAsset},
        {"Labels", "languages", 10000, RunLabels},
        {"Assets of one name", "assets", 10000, RunAssetsOfOneName},
        {"Values of an enumeration", "items", 5000, RunEnumerationValues},
        {"Items of an enumeration", "items", 10000, RunEnumerationItems},
        {"Properties", "properties", 10000, RunDeclarations},
        {"Items of a group", "items", 10000, RunGroupItems},
        {"Callbacks", "callbacks", 10000, RunCallbacks},
        {"Commands", "commands", 10000, RunCommands},
        {"Views", "views", 10000, RunViews},
        {"Levels of detail", "levels", 10000, RunLevels},
        {"Alternates", "alternates", 10000, RunAlternates},
        {"Children", "templates", 10000, RunChildren},
        {"Parents", "templates", 10000, RunParents},
        {"Versions", "versions", 1000, RunVersions},
    };
    return cases;
}

std::vector<Figure> Measure(const Case& measured, const std::filesystem::path& directory,
                            int size) {
    Run run(directory / measured.name, size);
    measured.run(run);
    return run.GetFigures();
}

double GrowthOf(const Figure& single, const Figure& tenfold) {
    return tenfold.value / std::max(single.value, kMeasurable);
}

bool GrowsTooMuch(const std::vector<Figure>& single, const std::vector<Figure>& tenfold) {
    for (size_t i = 0; i < single.size(); ++i) {
        if (GrowthOf(single[i], tenfold[i]) > kMostGrowth)
            return true;
    }
    return false;
}

void TakeLower(std::vector<Figure>& figures, const std::vector<Figure>& others) {
    for (size_t i = 0; i < figures.size(); ++i)
        figures[i].value = std::min(figures[i].value, others[i].value);
}

void PrintRow(const char* name, const Figure& single, const Figure& tenfold) {
    const bool tooMuch = GrowthOf(single, tenfold) > kMostGrowth;
    if (tenfold.value < 2 * kMeasurable)
        return;
    std::printf("| %s | %s | %.1f ms | %.1f ms | %.1f%s |\n", name, single.name.c_str(),
                single.value, tenfold.value, GrowthOf(single, tenfold), tooMuch ? " (!)" : "");
    std::fflush(stdout);
}

bool RunCase(const Case& measured, const std::filesystem::path& directory, int percent) {
    const int size = std::max(measured.size * percent / 100, 2);
    try {
        auto single = Measure(measured, directory, size);
        auto tenfold = Measure(measured, directory, kFactor * size);
        for (int i = 1; i < kMeasurements && GrowsTooMuch(single, tenfold); ++i)
            TakeLower(tenfold, Measure(measured, directory, kFactor * size));
        std::printf("| **%s** | | %d %s | %d %s | |\n", measured.name, size, measured.unit,
                    kFactor * size, measured.unit);
        for (size_t i = 0; i < single.size(); ++i)
            PrintRow(measured.name, single[i], tenfold[i]);
        return !GrowsTooMuch(single, tenfold);
    } catch (const std::exception& problem) {
        std::printf("| **%s** | %s | | | |\n", measured.name, problem.what());
        return false;
    }
}

} // namespace

int main(int argumentCount, char** arguments) {
    return RunCases(argumentCount, arguments,
                    "| Case | Step | Size | Ten times the size | Growth |\n|---|---|--:|--:|--:|",
                    GetGrowthCases(), &RunCase);
}
