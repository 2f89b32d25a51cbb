// The part of the template manager that knows search paths and the packages below them.

#include <algorithm>

#include "core/Names.h"
#include "manager/PackageSearch.h"
#include "manager/TemplateManager.h"
#include "manager/TemplateReading.h"
#include "platform/PathFinder.h"

namespace Kor {

namespace {

constexpr std::string_view kExtension = ".template";

std::string ToPath(std::string_view name) {
    std::string path(name);
    std::replace(path.begin(), path.end(), '.', '\\');
    return path;
}

/// Brings names into a list from the front to the back, so that none has to make room for another.
void Insert(std::vector<std::string> names, SortedStringList& list) {
    std::sort(names.begin(), names.end());
    for (const std::string& name : names)
        list.Insert(name);
}

} // namespace

const char* TemplateManager::GetSearchPathAt(int index) const {
    return index >= 0 && index < GetSearchPathCount() ? searchPaths_.GetAt(index).c_str() : "";
}

int TemplateManager::AddSearchPath(std::string_view path, bool load) {
    const int result = searchPaths_.Add(path);
    if (result >= 0 || !load)
        return result;
    PackageSearch search;
    search.LookBelow(searchPaths_.GetAt(~result));
    SortedStringList packages;
    Insert(search.GetPackages(), packages);
    TemplateReading reading(*this);
    for (const std::string& package : packages)
        reading.LoadPackage(package);
    return result;
}

int TemplateManager::RemoveSearchPath(std::string_view path) {
    return searchPaths_.Remove(path);
}

bool TemplateManager::EnumeratePackages(bool loadedOnly, SortedStringList& packages) const {
    if (loadedOnly) {
        for (const std::string& package : packages_)
            packages.Insert(package);
        return false;
    }
    PackageSearch search;
    bool listed = false;
    for (const std::string& path : searchPaths_.GetAll())
        listed = search.LookBelow(path) || listed;
    Insert(search.GetPackages(), packages);
    return listed;
}

bool TemplateManager::LoadPackage(std::string_view name) {
    return IsPackageLoaded(name) || TemplateReading(*this).LoadPackage(name);
}

void TemplateManager::SetPackageLoaded(std::string_view name, bool loaded) {
    const auto found = packages_.find(name);
    if (loaded && found == packages_.end())
        packages_.emplace(name);
    else if (!loaded && found != packages_.end())
        packages_.erase(found);
}

bool TemplateManager::LoadTemplate(std::string_view name, const SortedStringList* prefixes) {
    const std::string file = ToPath(name) + std::string(kExtension);
    PathFinder finder;
    const auto load = [this, &finder](const std::string& path) {
        const std::string found = finder.Find(path);
        return !found.empty() && LoadFile(path.c_str(), found.c_str());
    };
    for (const std::string& path : searchPaths_.GetAll()) {
        if (load(path + file))
            return true;
        for (int i = 0; prefixes && i < prefixes->GetCount(); ++i) {
            const std::string& prefix = prefixes->GetAt(i);
            std::string prefixed(path);
            if (!prefix.empty())
                prefixed.append(ToPath(prefix)).append(1, '\\');
            if (load(prefixed.append(file)))
                return true;
        }
    }
    return false;
}

} // namespace Kor
