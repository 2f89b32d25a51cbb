#include "manager/PackageSearch.h"

#include <algorithm>
#include <utility>

#include "core/ErrorManager.h"
#include "platform/File.h"

namespace Kor {

bool PackageSearch::LookBelow(const std::string& searchPath) {
    const std::string found = searchPath.empty() ? searchPath : paths_.Find(searchPath);
    if (found.empty() && !searchPath.empty())
        return false;
    Enter(found, 0);
    if (!List(found, {std::string(), 0}))
        return false;
    while (!pending_.empty()) {
        const Pending next = std::move(pending_.back());
        pending_.pop_back();
        Visit(searchPath, found, next);
    }
    return true;
}

void PackageSearch::Visit(const std::string& searchPath, const std::string& found,
                          const Pending& next) {
    const std::string directory = found + next.relative;
    if (!Enter(directory, next.depth))
        return;
    if (!List(directory, next)) {
        if (ErrorManager* errors = ErrorManager::Get())
            errors->AddErrorItem(kWarning, (searchPath + next.relative).c_str(), -1,
                                 "Unable to list directory");
        return;
    }
    packages_.push_back(next.relative);
    std::replace(packages_.back().begin(), packages_.back().end(), '\\', '.');
}

/// Puts what is in a directory before all that waits.
bool PackageSearch::List(const std::string& directory, const Pending& listed) {
    std::vector<std::string> names;
    if (!ListDirectory(directory, false, true, names))
        return false;
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
        std::string relative =
            listed.relative.empty() ? std::move(*name) : listed.relative + '\\' + *name;
        pending_.push_back({std::move(relative), listed.depth + 1});
    }
    return true;
}

/// Goes on to a directory at a depth; false when the way there has come through it.
bool PackageSearch::Enter(const std::string& directory, size_t depth) {
    while (way_.size() > depth) {
        if (way_.back())
            onWay_.erase(*way_.back());
        way_.pop_back();
    }
    const auto id = GetDirectoryId(directory);
    if (id && !onWay_.insert(*id).second)
        return false;
    way_.push_back(id);
    return true; // without an id it cannot be listed either, which is to be reported
}

} // namespace Kor
