// The benchmarks: ovi_bench [--scene=FILE] [--assets=N] [--schema=DIRECTORY] [--files=N] [options
// of Google Benchmark]
//
// A name is that of the work and of who does it, "load/ovi" for instance. For figures that count,
// give each benchmark a process of its own, as scripts/bench.sh does.

#include "Session.h"

#include <algorithm>
#include <cstdlib>
#include <string>

namespace {

/// Whether the argument was one of ours.
bool TakeArgument(const std::string& argument) {
    const size_t equals = argument.find('=');
    const std::string name = argument.substr(0, equals);
    const std::string value = equals == std::string::npos ? "" : argument.substr(equals + 1);
    if (name == "--scene")
        GetSettings().scene = value;
    else if (name == "--assets")
        GetSettings().assets = std::max(std::atoi(value.c_str()), 1);
    else if (name == "--schema")
        GetSettings().schema = value;
    else if (name == "--files")
        GetSettings().files = std::max(std::atoi(value.c_str()), 1);
    else
        return false;
    return true;
}

} // namespace

int main(int argumentCount, char** arguments) {
    char** end = std::remove_if(arguments + 1, arguments + argumentCount, TakeArgument);
    argumentCount = static_cast<int>(end - arguments);
    benchmark::Initialize(&argumentCount, arguments);
    if (benchmark::ReportUnrecognizedArguments(argumentCount, arguments))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
