#include "manager/TemplateReading.h"

#include <algorithm>
#include <new>
#include <optional>

// A file is read by the listener that registers what it finds.
#include "formats/XMLTemplateListener.h"

#include "core/ErrorManager.h"
#include "core/Names.h"
#include "manager/LoadingMark.h"
#include "manager/PackageFinder.h"
#include "manager/TemplateManager.h"
#include "platform/File.h"
#include "xml/XMLParser.h"

namespace Kor {

namespace {

constexpr std::string_view kExtension = ".template";

/// Packages may wait for each other in great number, so each reads with little room.
constexpr size_t kBlockSize = 16 * 1024;

std::string ToPath(std::string_view package) {
    std::string path(package);
    std::replace(path.begin(), path.end(), '.', '\\');
    return path;
}

bool IsTemplateFile(std::string_view name) {
    return name.size() > kExtension.size() &&
           EqualsIgnoreCase(name.substr(name.size() - kExtension.size()), kExtension);
}

/// The bytes of a file, read whole, so that waiting files do not hold the system's file handles.
struct FileText {
    std::string text;
    bool opened = false;
    bool failed = false; ///< before its end
};

FileText ReadWhole(const std::string& path) {
    FileText whole;
    const auto file = InputFile::Open(path.c_str());
    if (!file)
        return whole;
    whole.opened = true;
    char block[kBlockSize];
    while (const size_t size = file->Read(block, sizeof block))
        whole.text.append(block, size);
    whole.failed = file->HasFailed();
    return whole;
}

/// The same as a source.
class TextSource : public MemorySource {
public:
    TextSource(std::string_view text, bool failed) : MemorySource(text), failed_(failed) {}
    bool HasFailed() const override { return failed_; }

private:
    bool failed_;
};

} // namespace

/// A file that is being read, or waits for a package.
struct TemplateReading::OpenFile {
    OpenFile(TemplateManager& manager, std::string filePath, FileText fileText, ByteSource* given)
        : path(std::move(filePath)), mark([&manager, this] { manager.RemoveLoadedFile(path); }),
          text(std::move(fileText.text)), memory(text, fileText.failed),
          source(given ? given : &memory), parser(given ? Parser::kDefaultBlockSize : kBlockSize),
          listener(std::make_unique<XMLTemplateListener>(parser)) {
        parser.SetErrorListener(ErrorManager::Get());
        parser.SetXMLListener(listener.get());
    }

    std::string path;
    LoadingMark mark; // a template that names the file as its own enters it
    std::string text;
    TextSource memory;
    ByteSource* source;
    XMLParser parser;
    std::unique_ptr<XMLTemplateListener> listener;
    bool started = false;
};

/// A package whose files are read one after the other.
struct TemplateReading::OpenPackage {
    std::string name;
    std::optional<LoadingMark> mark;
    std::shared_ptr<PackageFinder> finder;
    size_t nextPlace = 0;
    std::string directory;          // as messages name it
    std::string found;              // as the system has it
    std::vector<std::string> files; // their names
    size_t nextFile = 0;
    std::string path; // of the file that was opened last
};

TemplateReading::TemplateReading(TemplateManager& manager) : manager_(manager) {}

TemplateReading::~TemplateReading() = default;

bool TemplateReading::ReadFile(const char* path, ByteSource& source) try {
    open_.push_back({std::make_unique<OpenFile>(manager_, path, FileText(), &source), nullptr});
    manager_.AddLoadedFile(path);
    return Run();
} catch (const std::bad_alloc&) {
    ReportOutOfMemory(path);
    throw;
}

bool TemplateReading::LoadPackage(std::string_view name) try {
    StartPackage(name);
    return Run();
} catch (const std::bad_alloc&) {
    ReportOutOfMemory(name);
    throw;
}

/// What was begun is named where no file is being read yet.
void TemplateReading::ReportOutOfMemory(std::string_view begun) const {
    ErrorManager* errors = ErrorManager::Get();
    const auto pathOf = [](const Step& step) -> const std::string& {
        return step.file ? step.file->path : step.package->path;
    };
    const auto reading = std::find_if(open_.rbegin(), open_.rend(),
                                      [&](const Step& step) { return !pathOf(step).empty(); });
    if (errors)
        errors->ReportOutOfMemory(reading == open_.rend() ? begun : pathOf(*reading));
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
    package->finder = GetFinder();
    open_.push_back({nullptr, std::move(package)});
    if (!TryNextSearchPath(*open_.back().package))
        FinishPackage(false);
}

/// The finder for all packages, unless a callback has changed the search paths meanwhile.
std::shared_ptr<PackageFinder> TemplateReading::GetFinder() {
    const SearchPaths& paths = manager_.GetSearchPaths();
    if (!finder_ || finderRevision_ != paths.GetRevision())
        finder_ = std::make_shared<PackageFinder>(paths.GetAll());
    finderRevision_ = paths.GetRevision();
    return finder_;
}

/// Goes on to the next search path that has the package's directory; subdirectories are packages
/// of their own.
bool TemplateReading::TryNextSearchPath(OpenPackage& package) {
    while (const auto* place = package.finder->Find(package.name, package.nextPlace)) {
        ++package.nextPlace;
        if (!ListDirectory(place->directory, true, false, package.files))
            continue;
        const auto isOther = [](const std::string& name) { return !IsTemplateFile(name); };
        auto& files = package.files;
        files.erase(std::remove_if(files.begin(), files.end(), isOther), files.end());
        package.nextFile = 0;
        package.found = place->directory;
        package.directory = package.finder->GetSearchPath(*place) + ToPath(package.name);
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
    const std::string& name = package.files[package.nextFile++];
    package.path = package.directory + '\\' + name;
    FileText text = ReadWhole(package.found + name);
    result_ = text.opened;
    if (result_ && !manager_.GetLoadedFiles().Contains(package.path))
        open_.push_back(
            {std::make_unique<OpenFile>(manager_, package.path, std::move(text), nullptr),
             nullptr});
}

void TemplateReading::FinishPackage(bool loaded) {
    open_.pop_back();
    result_ = loaded;
}

} // namespace Kor
