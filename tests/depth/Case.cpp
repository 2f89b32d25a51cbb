#include "Case.h"

#include <ctime>
#include <fstream>
#include <stdexcept>

#include "ovi/ovi.h"

namespace {

constexpr int kAnyLevel = 1 | 2 | 4 | 8;

double ProcessorSeconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

} // namespace

Run::Run(std::filesystem::path directory, int size)
    : directory_(std::move(directory)), size_(size) {
    std::filesystem::create_directories(directory_);
    Ovi_Initialize();
}

Run::~Run() {
    Ovi_Terminate();
    std::error_code ignored;
    std::filesystem::remove_all(directory_, ignored);
}

std::string Run::Path(const std::string& name) const {
    return (directory_ / name).string();
}

std::string Run::Write(const std::string& name, const std::string& text) const {
    const std::filesystem::path path = directory_ / name;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << "<?xml version='1.0' encoding='UTF-8'?>\n" << text;
    return path.string();
}

void Run::Step(const char* name, const std::function<bool()>& work) {
    const double start = ProcessorSeconds();
    const bool done = work();
    figures_.push_back({name, "ms", (ProcessorSeconds() - start) * 1e3});
    if (OviErrorManager_GetErrorItemCount(kAnyLevel) > 0)
        throw std::runtime_error(std::string(name) + ": " +
                                 OviErrorItem_GetMessage(OviErrorManager_GetErrorItemAt(0)));
    if (!done)
        throw std::runtime_error(std::string(name) + " did not give what it should");
}

void Run::NoteSize(const std::string& path) {
    figures_.push_back(
        {"the saved file", "MB", static_cast<double>(std::filesystem::file_size(path)) / 1e6});
}
