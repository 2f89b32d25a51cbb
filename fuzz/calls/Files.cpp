#include "calls/Files.h"

#include <random>
#include <system_error>

namespace fs = std::filesystem;

namespace {

fs::path FindPlace() {
    std::error_code ignored;
    const fs::path memory = "/dev/shm";
    return fs::is_directory(memory, ignored) ? memory : fs::temp_directory_path();
}

} // namespace

Files& Files::Get() {
    static Files files;
    return files;
}

Files::Files() {
    std::random_device random;
    directory_ = FindPlace() / ("ovi-fuzz-" + std::to_string(random()));
    fs::create_directories(directory_);
    for (const char* name : {"F.template", "G.template", "scene.asset", "none/H.template"})
        outputPaths_.push_back((directory_ / name).string());
    templatePaths_ = outputPaths_;
    templatePaths_.emplace_back(OVI_SOURCE_DIR "/fuzz/Kinds.template");
    templatePaths_.emplace_back(OVI_SOURCE_DIR "\\fuzz\\packages\\LIB\\lib.template");
    templatePaths_.emplace_back("");
    templatePaths_.push_back(directory_.string());
    templatePaths_.push_back(std::string(5000, 'p'));
    templatePaths_.emplace_back("\xff\xfe");
}

Files::~Files() {
    std::error_code ignored;
    fs::remove_all(directory_, ignored);
}

void Files::Clear() const {
    std::error_code ignored;
    for (const std::string& path : outputPaths_)
        fs::remove(path, ignored);
}
