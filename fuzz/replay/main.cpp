// Runs the inputs of files and directories through a fuzz target, without a fuzzer: every compiler
// and every system can replay what was once found.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size);

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> CollectInputs(int count, char** paths) {
    std::vector<fs::path> inputs;
    for (int i = 0; i < count; ++i) {
        if (!fs::is_directory(paths[i])) {
            inputs.emplace_back(paths[i]);
            continue;
        }
        for (const auto& entry : fs::directory_iterator(paths[i])) {
            if (entry.is_regular_file())
                inputs.push_back(entry.path());
        }
    }
    std::sort(inputs.begin(), inputs.end());
    return inputs;
}

/// Like a fuzzer's, the input's memory ends with its last byte, so that a look behind it is found.
void Run(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw fs::filesystem_error("cannot be read", path, std::error_code());
    std::vector<std::uint8_t> input{std::istreambuf_iterator<char>(file), {}};
    input.shrink_to_fit();
    LLVMFuzzerTestOneInput(input.data(), input.size());
}

int RunAll(int count, char** paths) {
    const std::vector<fs::path> inputs = CollectInputs(count, paths);
    for (const fs::path& input : inputs) {
        std::fprintf(stderr, "%s\n", input.string().c_str());
        Run(input);
    }
    std::printf("%zu inputs replayed\n", inputs.size());
    return inputs.empty() ? 1 : 0; // nothing replayed is no success
}

} // namespace

int main(int argc, char** argv) {
    try {
        return RunAll(argc - 1, argv + 1);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "%s\n", e.what());
        return 2;
    }
}
