#include "Case.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
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

int RunCases(int argumentCount, char** arguments, const char* head, const std::vector<Case>& cases,
             bool (*run)(const Case&, const std::filesystem::path& directory, int percent)) {
    int percent = 100;
    const char* part = "";
    int next = 1;
    for (; next + 2 < argumentCount; next += 2) {
        if (!std::strcmp(arguments[next], "--scale"))
            percent = std::atoi(arguments[next + 1]);
        else if (!std::strcmp(arguments[next], "--only"))
            part = arguments[next + 1];
        else
            break;
    }
    if (next + 1 != argumentCount || percent < 1) {
        std::fprintf(stderr, "usage: %s [--scale PERCENT] [--only PART-OF-NAME] DIRECTORY\n",
                     arguments[0]);
        return 2;
    }
    std::puts(head);
    bool done = true;
    for (const Case& each : cases) {
        if (std::strstr(each.name, part))
            done = run(each, arguments[next], percent) && done;
    }
    return done ? 0 : 1;
}
