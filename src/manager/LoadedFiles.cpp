#include "manager/LoadedFiles.h"

#include <algorithm>

namespace Kor {

bool LoadedFiles::Contains(std::string_view path) const {
    const auto found = spellings_.find(path);
    return found != spellings_.end() && found->second.count(path) > 0;
}

void LoadedFiles::Add(std::string_view path) {
    const auto found = spellings_.find(path);
    if (found == spellings_.end())
        spellings_.emplace(path, Spellings{std::string(path)});
    else if (found->second.count(path) == 0)
        found->second.emplace(path);
}

void LoadedFiles::Remove(std::string_view path) {
    const auto found = spellings_.find(path);
    if (found == spellings_.end())
        return;
    Spellings& spellings = found->second;
    const auto spelling = spellings.find(path);
    if (spelling != spellings.end())
        spellings.erase(spelling);
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
