#include "InputFiles.h"

#include "Findings.h"

#include <ovi/ovi.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>
#include <system_error>

namespace fs = std::filesystem;

namespace OviTool {

namespace {

char Fold(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
}

std::string Folded(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), Fold);
    return text;
}

bool HasExtension(const fs::path& path, const char* extension) {
    return Folded(path.extension().u8string()) == Folded(extension);
}

/// Why a file cannot be read; empty when it can.
std::string FindObstacle(const fs::path& path) {
    std::error_code error;
    if (fs::is_directory(path, error))
        return "is a directory";
    errno = 0;
    if (std::ifstream(path, std::ios::binary))
        return {};
    return errno != 0 ? std::strerror(errno) : "cannot be opened";
}

/// The names of a directory without those that begin with a dot, ascending without regard to case.
std::vector<std::string> ListNames(const fs::path& directory, std::error_code& error) {
    std::vector<std::string> names;
    for (fs::directory_iterator at(directory, error), end; !error && at != end;
         at.increment(error)) {
        std::string name = at->path().filename().u8string();
        if (name.front() != '.')
            names.push_back(std::move(name));
    }
    std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
        const std::string x = Folded(a);
        const std::string y = Folded(b);
        return x != y ? x < y : a < b;
    });
    return names;
}

fs::path ToDirectory(const std::string& root, std::string relative) {
    std::replace(relative.begin(), relative.end(), '\\', '/');
    return fs::u8path(root) / fs::u8path(relative);
}

/// Joined as the library does it.
std::string Join(const std::string& directory, const std::string& name) {
    std::string path = directory;
    if (!path.empty())
        path += '\\';
    return path += name;
}

std::string WithoutTrailingSeparators(std::string path) {
    while (path.size() > 1 && (path.back() == '/' || path.back() == '\\'))
        path.pop_back();
    return path;
}

} // namespace

bool IsTemplateFile(const std::string& path) {
    return HasExtension(fs::u8path(path), ".template");
}

void InputFiles::AddSearchPath(const std::string& path) {
    const std::string root = WithoutTrailingSeparators(path);
    std::error_code error;
    const fs::path canonical = fs::canonical(fs::u8path(root), error);
    if (error || !fs::is_directory(canonical, error)) {
        findings_.AddUnreadable(path, error ? error.message() : "is no directory");
        return;
    }
    OviTemplateManager_AddSearchPath(root.c_str(), false);
    searchPaths_.push_back({root, (canonical / "").u8string()});
}

void InputFiles::AddPackage(const std::string& name) {
    files_.push_back({name, InputFile::Kind::kPackage});
}

void InputFiles::AddSchema(const std::string& path) {
    const fs::path native = fs::u8path(path);
    std::error_code error;
    if (fs::is_directory(native, error))
        AddDirectory(WithoutTrailingSeparators(path));
    else if (HasExtension(native, ".template") || !fs::exists(native, error))
        Add(path);
    else
        findings_.AddUnreadable(path, "is neither a directory nor a .template file");
}

void InputFiles::AddDirectory(const std::string& root) {
    AddSearchPath(root);
    std::set<std::string> visited; // links may lead back
    std::vector<std::string> pending{std::string()};
    while (!pending.empty()) {
        const std::string relative = std::move(pending.back());
        pending.pop_back();
        std::error_code error;
        const fs::path directory = fs::canonical(ToDirectory(root, relative), error);
        if (!error && !visited.insert(directory.u8string()).second)
            continue;
        const std::vector<std::string> below = AddFilesOf(root, relative);
        pending.insert(pending.end(), below.rbegin(), below.rend());
    }
}

std::vector<std::string> InputFiles::AddFilesOf(const std::string& root,
                                                const std::string& relative) {
    const fs::path directory = ToDirectory(root, relative);
    std::vector<std::string> directories;
    std::error_code error;
    for (const std::string& name : ListNames(directory, error)) {
        const fs::path path = directory / fs::u8path(name);
        std::string below = Join(relative, name);
        std::error_code ignored;
        if (fs::is_directory(path, ignored))
            directories.push_back(std::move(below));
        else if (HasExtension(path, ".template"))
            AddAs(path.u8string(), Join(root, below));
    }
    if (error)
        findings_.AddUnreadable(directory.u8string(), error.message());
    return directories;
}

std::size_t InputFiles::Add(const std::string& path) {
    return AddAs(path, path);
}

std::size_t InputFiles::AddAs(const std::string& path, const std::string& libraryPath) {
    const fs::path native = fs::u8path(path);
    const bool isScene = HasExtension(native, ".asset");
    std::string obstacle = FindObstacle(native);
    if (obstacle.empty() && !isScene && !HasExtension(native, ".template"))
        obstacle = "is neither a .template nor a .asset file";
    if (!obstacle.empty()) {
        findings_.AddUnreadable(path, obstacle);
        return kNone;
    }
    std::error_code error;
    const std::string identity = fs::canonical(native, error).u8string();
    const auto [entry, added] = indices_.emplace(error ? path : identity, files_.size());
    if (!added)
        return entry->second;
    const std::string found = isScene || error ? std::string() : FindLibraryPath(identity);
    files_.push_back({found.empty() ? libraryPath : found,
                      isScene ? InputFile::Kind::kScene : InputFile::Kind::kTemplates});
    return entry->second;
}

/// A file that a package asked for early is recognised by this name when its own turn comes.
std::string InputFiles::FindLibraryPath(const std::string& canonicalPath) const {
    for (const SearchPath& root : searchPaths_) {
        if (canonicalPath.compare(0, root.canonical.size(), root.canonical) != 0)
            continue;
        std::string relative = canonicalPath.substr(root.canonical.size());
        std::replace(relative.begin(), relative.end(), '/', '\\');
        return Join(root.path, relative);
    }
    return {};
}

} // namespace OviTool
