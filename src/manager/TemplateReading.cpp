#include "manager/TemplateReading.h"

#include <algorithm>
#include <optional>

// A file is read by the listener that registers what it finds.
#include "xml/XMLTemplateListener.h"

#include "core/ErrorManager.h"
#include "core/Names.h"
#include "manager/LoadingMark.h"
#include "manager/TemplateManager.h"
#include "platform/File.h"
#include "xml/XMLParser.h"

namespace Kor {

namespace {

constexpr std::string_view kExtension = ".template";

/// Packages may wait for each other in great number, so each reads with little room.
constexpr size_t kBlockSize = 16 * 1024;

bool IsTemplateFile(std::string_view name) {
    return name.size() > kExtension.size() &&
           EqualsIgnoreCase(name.substr(name.size() - kExtension.size()), kExtension);
}

/// The bytes of a file; false when it cannot be opened. Read whole, so that waiting files do not
/// hold the system's file handles.
bool ReadWhole(const std::string& path, std::string& text) {
    const auto file = InputFile::Open(path.c_str());
    if (!file)
        return false;
    char block[kBlockSize];
    while (const size_t size = file->Read(block, sizeof block))
        text.append(block, size);
    return true;
}

} // namespace

/// A file that is being read, or waits for a package.
struct TemplateReading::OpenFile {
    OpenFile(TemplateManager& manager, std::string filePath, std::string fileText,
             ByteSource* given)
        : path(std::move(filePath)), mark([&manager, this] { manager.RemoveLoadedFile(path); }),
          text(std::move(fileText)), memory(text), source(given ? given : &memory),
          parser(given ? Parser::kDefaultBlockSize : kBlockSize),
          listener(std::make_unique<XMLTemplateListener>(parser)) {
        parser.SetErrorListener(ErrorManager::Get());
        parser.SetXMLListener(listener.get());
    }

    std::string path;
    LoadingMark mark; // a template that names the file as its own enters it
    std::string text;
    MemorySource memory;
    ByteSource* source;
    XMLParser parser;
    std::unique_ptr<XMLTemplateListener> listener;
    bool started = false;
};

/// A package whose files are read one after the other.
struct TemplateReading::OpenPackage {
    std::string name;
    std::optional<LoadingMark> mark;
    std::vector<std::string> searchPaths;
    size_t nextSearchPath = 0;
    std::vector<std::string> files;
    size_t nextFile = 0;
};

TemplateReading::TemplateReading(TemplateManager& manager) : manager_(manager) {}

TemplateReading::~TemplateReading() = default;

bool TemplateReading::ReadFile(const char* path, ByteSource& source) {
    open_.push_back({std::make_unique<OpenFile>(manager_, path, std::string(), &source), nullptr});
    manager_.AddLoadedFile(path);
    return Run();
}

bool TemplateReading::LoadPackage(std::string_view name) {
    StartPackage(name);
    return Run();
}

/// Works on what was opened last until everything is closed.
bool TemplateReading::Run() {
    while (!open_.empty()) {
        if (open_.back().file)
            AdvanceFile();
        else
            AdvancePackage();
    }
    return result_;
}

// -- files ----------------------------------------------------------------------------------------

void TemplateReading::AdvanceFile() {
    OpenFile& file = *open_.back().file;
    if (file.started)
        file.listener->AnswerWantedPackage(result_);
    const bool read =
        file.started ? file.parser.Resume() : file.parser.Parse(file.path.c_str(), *file.source);
    file.started = true;
    if (read && file.parser.IsPaused())
        StartPackage(file.listener->GetWantedPackage());
    else
        FinishFile(read);
}

void TemplateReading::FinishFile(bool read) {
    open_.back().file->listener.reset(); // reports what is still open
    if (read)
        open_.back().file->mark.Keep();
    open_.pop_back();
    result_ = read;
}

// -- packages -------------------------------------------------------------------------------------

void TemplateReading::StartPackage(std::string_view name) {
    result_ = manager_.IsPackageLoaded(name);
    if (result_)
        return;
    auto package = std::make_unique<OpenPackage>();
    package->name = name;
    for (int i = 0; i < manager_.GetSearchPathCount(); ++i)
        package->searchPaths.emplace_back(manager_.GetSearchPathAt(i));
    open_.push_back({nullptr, std::move(package)});
    if (!TryNextSearchPath(*open_.back().package))
        FinishPackage(false);
}

/// Goes on to the next search path that has the package's directory; subdirectories are packages
/// of their own.
bool TemplateReading::TryNextSearchPath(OpenPackage& package) {
    std::string relative = package.name;
    std::replace(relative.begin(), relative.end(), '.', '\\');
    while (package.nextSearchPath < package.searchPaths.size()) {
        const std::string directory = package.searchPaths[package.nextSearchPath++] + relative;
        std::vector<std::string> names;
        if (!ListDirectory(directory, true, false, names))
            continue;
        package.files.clear();
        package.nextFile = 0;
        for (const std::string& name : names) {
            if (IsTemplateFile(name))
                package.files.emplace_back(directory).append(1, '\\').append(name);
        }
        // Entered first, so that packages may use each other in a circle.
        manager_.SetPackageLoaded(package.name, true);
        package.mark.emplace([this, &package] { manager_.SetPackageLoaded(package.name, false); });
        result_ = true;
        return true;
    }
    return false;
}

/// The first file that fails ends the package; what was read before stays.
void TemplateReading::AdvancePackage() {
    OpenPackage& package = *open_.back().package;
    if (!result_) {
        package.mark.reset();
        if (!TryNextSearchPath(package))
            FinishPackage(false);
        return;
    }
    if (package.nextFile == package.files.size()) {
        package.mark->Keep();
        FinishPackage(true);
        return;
    }
    const std::string path = package.files[package.nextFile++];
    std::string text;
    result_ = ReadWhole(path, text);
    if (result_ && !manager_.GetLoadedFiles().Contains(path))
        open_.push_back(
            {std::make_unique<OpenFile>(manager_, path, std::move(text), nullptr), nullptr});
}

void TemplateReading::FinishPackage(bool loaded) {
    open_.pop_back();
    result_ = loaded;
}

} // namespace Kor
