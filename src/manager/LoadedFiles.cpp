#include "manager/LoadedFiles.h"

#include <algorithm>

namespace Kor {

namespace {

bool IsAmong(const std::vector<std::string>& paths, std::string_view path) {
    return std::find(paths.begin(), paths.end(), path) != paths.end();
}

} // namespace

bool LoadedFiles::Contains(std::string_view path) const {
    const auto found = spellings_.find(path);
    return found != spellings_.end() && IsAmong(found->second, path);
}

void LoadedFiles::Add(std::string_view path) {
    const auto found = spellings_.find(path);
    if (found == spellings_.end())
        spellings_.emplace(path, Spellings{std::string(path)});
    else if (!IsAmong(found->second, path))
        found->second.emplace_back(path);
}

void LoadedFiles::Remove(std::string_view path) {
    const auto found = spellings_.find(path);
    if (found == spellings_.end())
        return;
    Spellings& spellings = found->second;
    spellings.erase(std::remove(spellings.begin(), spellings.end(), path), spellings.end());
    if (spellings.empty())
        spellings_.erase(found);
}

void LoadedFiles::RemoveInAnyCase(std::string_view path) {
    const auto found = spellings_.find(path);
    if (found != spellings_.end())
        spellings_.erase(found);
}

std::vector<std::string> LoadedFiles::GetAll() const {
    std::vector<std::string> all;
    for (const auto& [path, spellings] : spellings_)
        all.insert(all.end(), spellings.begin(), spellings.end());
    std::sort(all.begin(), all.end());
    return all;
}

} // namespace Kor
