// Loads, saves, looks up and unloads what a file may make as deep as it likes, each at two sizes,
// and prints how the times grow: ovi_depth [--scale PERCENT] [--only PART-OF-NAME] DIRECTORY
//
// Run it with a small stack ("ulimit -s 1024"): no depth of the input may exhaust it. The exit code
// is 0 when every step gave what it should.

#include <algorithm>
#include <cstdio>
#include <exception>

#include "Case.h"

namespace {

/// The figures of one case at one size.
std::vector<Figure> Measure(const Case& measured, const std::filesystem::path& directory,
                            int size) {
    Run run(directory / measured.name, size);
    measured.run(run);
    return run.GetFigures();
}

/// Figures too small to matter are left out.
void PrintRow(const char* name, const Figure& single, const Figure& twofold) {
    constexpr double kMeasurable = 2; // below it a ratio is noise
    if (twofold.value < kMeasurable)
        return;
    char growth[16] = "-";
    if (single.value >= kMeasurable)
        std::snprintf(growth, sizeof growth, "%.1f", twofold.value / single.value);
    std::printf("| %s | %s | %.1f %s | %.1f %s | %s |\n", name, single.name.c_str(), single.value,
                single.unit, twofold.value, single.unit, growth);
    std::fflush(stdout);
}

bool RunCase(const Case& measured, const std::filesystem::path& directory, int percent) {
    const int size = std::max(measured.size * percent / 100, 2);
    try {
        const auto single = Measure(measured, directory, size);
        const auto twofold = Measure(measured, directory, 2 * size);
        std::printf("| **%s** | | %d %s | %d %s | |\n", measured.name, size, measured.unit,
                    2 * size, measured.unit);
        for (size_t i = 0; i < single.size(); ++i)
            PrintRow(measured.name, single[i], twofold[i]);
        return true;
    } catch (const std::exception& problem) {
        std::printf("| **%s** | %s | | | |\n", measured.name, problem.what());
        return false;
    }
}

} // namespace

int main(int argumentCount, char** arguments) {
    return RunCases(argumentCount, arguments,
                    "| Case | Step | Size | Twice the size | Growth |\n|---|---|--:|--:|--:|",
                    GetCases(), &RunCase);
}
