// The part of the template manager that knows search paths and the packages below them.

#include <algorithm>

#include "core/Names.h"
#include "manager/TemplateManager.h"
#include "manager/TemplateReading.h"
#include "platform/File.h"

namespace Kor {

namespace {

constexpr std::string_view kExtension = ".template";

std::string WithBackslash(std::string_view path) {
    std::string result(path);
    if (!result.empty() && result.back() != '\\')
        result += '\\';
    return result;
}

std::string Replaced(std::string_view text, char from, char to) {
    std::string result(text);
    std::replace(result.begin(), result.end(), from, to);
    return result;
}

} // namespace

const char* TemplateManager::GetSearchPathAt(int index) const {
    return index >= 0 && index < GetSearchPathCount()
               ? searchPaths_[static_cast<size_t>(index)].c_str()
               : "";
}

int TemplateManager::AddSearchPath(std::string_view path, bool load) {
    const std::string added = WithBackslash(path);
    const auto same = [&added](const std::string& other) { return EqualsIgnoreCase(other, added); };
    const auto found = std::find_if(searchPaths_.begin(), searchPaths_.end(), same);
    const auto index = static_cast<int>(found - searchPaths_.begin());
    if (found != searchPaths_.end())
        return index;
    searchPaths_.push_back(added);
    if (load) {
        SortedStringList packages;
        FindPackages(added, packages);
        for (const std::string& package : packages)
            LoadPackage(package);
    }
    return ~index;
}

int TemplateManager::RemoveSearchPath(std::string_view path) {
    const std::string removed = WithBackslash(path);
    const auto same = [&removed](const std::string& other) {
        return EqualsIgnoreCase(other, removed);
    };
    const auto found = std::find_if(searchPaths_.begin(), searchPaths_.end(), same);
    const auto index = static_cast<int>(found - searchPaths_.begin());
    if (found == searchPaths_.end())
        return ~index;
    searchPaths_.erase(found);
    return index;
}

/// Every directory at every depth is a package. One that cannot be listed ends the search.
bool TemplateManager::FindPackages(const std::string& root, SortedStringList& packages) const {
    std::vector<std::string> pending{std::string()};
    while (!pending.empty()) {
        const std::string relative = std::move(pending.back());
        pending.pop_back();
        if (!relative.empty())
            packages.Insert(Replaced(relative, '\\', '.'));
        std::vector<std::string> names;
        if (!ListDirectory(root + relative, false, true, names))
            return false;
        for (auto name = names.rbegin(); name != names.rend(); ++name) {
            std::string directory = relative.empty() ? *name : relative + '\\' + *name;
            pending.push_back(std::move(directory));
        }
    }
    return true;
}

bool TemplateManager::EnumeratePackages(bool loadedOnly, SortedStringList& packages) const {
    if (loadedOnly) {
        packages = packages_;
        return false;
    }
    bool listed = false;
    for (const std::string& path : searchPaths_)
        listed = FindPackages(path, packages) || listed;
    return listed;
}

bool TemplateManager::LoadPackage(std::string_view name) {
    return IsPackageLoaded(name) || TemplateReading(*this).LoadPackage(name);
}

void TemplateManager::SetPackageLoaded(std::string_view name, bool loaded) {
    if (loaded)
        packages_.Insert(name);
    else
        packages_.Remove(name);
}

bool TemplateManager::LoadTemplate(std::string_view name, const SortedStringList* prefixes) {
    const std::string file = Replaced(name, '.', '\\') + std::string(kExtension);
    const std::vector<std::string> paths = searchPaths_;
    for (const std::string& path : paths) {
        if (LoadTemplateFile((path + file).c_str()))
            return true;
        for (int i = 0; prefixes && i < prefixes->GetCount(); ++i) {
            std::string prefixed = path;
            prefixed += WithBackslash(Replaced(prefixes->GetAt(i), '.', '\\'));
            prefixed += file;
            if (LoadTemplateFile(prefixed.c_str()))
                return true;
        }
    }
    return false;
}

} // namespace Kor
