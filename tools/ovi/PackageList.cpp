#include "PackageList.h"

#include "Findings.h"
#include "InputFiles.h"
#include "Json.h"

#include <nlohmann/json.hpp>
#include <ovi/ovi.h>

#include <algorithm>
#include <filesystem>
#include <iomanip>
#include <ostream>
#include <system_error>

namespace fs = std::filesystem;

namespace OviTool {

namespace {

std::vector<std::string> FindPackageNames() {
    int size = 0;
    OviTemplateManager_EnumeratePackages(false, &size, nullptr);
    std::string buffer(static_cast<std::size_t>(size), '\0');
    OviTemplateManager_EnumeratePackages(false, &size, buffer.data());
    std::vector<std::string> names;
    for (std::size_t at = 0; at < buffer.size() && buffer[at] != '\0';) {
        names.emplace_back(buffer.c_str() + at);
        at += names.back().size() + 1;
    }
    return names;
}

std::string GetSearchPath(int index) {
    std::string path = OviTemplateManager_GetSearchPathAt(index);
    if (!path.empty() && path.back() == '\\')
        path.pop_back(); // the library's own
    return path;
}

std::size_t CountTemplateFiles(const fs::path& directory) {
    std::size_t count = 0;
    std::error_code error;
    for (fs::directory_iterator at(directory, error), end; !error && at != end;
         at.increment(error)) {
        std::error_code ignored;
        const fs::path& path = at->path();
        if (path.filename().u8string().front() != '.' && IsTemplateFile(path.u8string()) &&
            !fs::is_directory(path, ignored))
            ++count;
    }
    return count;
}

} // namespace

PackageList::PackageList() {
    for (const std::string& name : FindPackageNames())
        AddPackage(name);
}

void PackageList::AddPackage(const std::string& name) {
    std::string relative = name;
    std::replace(relative.begin(), relative.end(), '.', '/');
    bool isHidden = false;
    for (int i = 0; i < OviTemplateManager_GetSearchPathCount(); ++i) {
        const fs::path directory = fs::u8path(GetSearchPath(i)) / fs::u8path(relative);
        std::error_code error;
        if (!fs::is_directory(directory, error))
            continue;
        entries_.push_back(
            {name, directory.generic_u8string(), CountTemplateFiles(directory), isHidden});
        isHidden = true;
    }
}

void PackageList::PrintText(std::ostream& out) const {
    std::size_t width = 0;
    for (const PackageEntry& entry : entries_)
        width = std::max(width, entry.name.size());
    for (const PackageEntry& entry : entries_)
        out << std::left << std::setw(static_cast<int>(width)) << entry.name << std::right << ' '
            << std::setw(4) << entry.fileCount << "  " << entry.directory
            << (entry.isHidden ? "  (hidden by the first)" : "") << '\n';
}

void PackageList::PrintJson(std::ostream& out) const {
    nlohmann::ordered_json document;
    document["packages"] = nlohmann::ordered_json::array();
    for (const PackageEntry& entry : entries_) {
        nlohmann::ordered_json package;
        package["name"] = entry.name;
        package["directory"] = entry.directory;
        package["files"] = entry.fileCount;
        package["hidden"] = entry.isHidden;
        document["packages"].push_back(std::move(package));
    }
    OviTool::PrintJson(out, document);
}

void PackageList::PrintSummary(std::ostream& out) const {
    std::size_t files = 0;
    for (const PackageEntry& entry : entries_)
        files += entry.fileCount;
    out << Counted(entries_.size(), "package") << ", " << Counted(files, "template file") << '\n';
}

} // namespace OviTool
