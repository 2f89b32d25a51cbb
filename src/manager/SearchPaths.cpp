#include "manager/SearchPaths.h"

#include <algorithm>

#include "core/MakeRoom.h"

namespace Kor {

namespace {

std::string WithBackslash(std::string_view path) {
    std::string result(path);
    if (!result.empty() && result.back() != '\\')
        result += '\\';
    return result;
}

} // namespace

std::vector<std::string> SearchPaths::GetAll() const {
    std::vector<std::string> all;
    all.reserve(entries_.size());
    for (const Entry& entry : entries_)
        all.push_back(entry.path);
    return all;
}

int SearchPaths::Add(std::string_view path) {
    Entry added{nextNumber_, WithBackslash(path)};
    MakeRoom(entries_);
    const auto [known, isNew] = numbers_.try_emplace(added.path, added.number);
    if (!isNew)
        return FindIndex(known->second);
    entries_.push_back(std::move(added));
    ++nextNumber_;
    ++revision_;
    return ~(GetCount() - 1);
}

int SearchPaths::Remove(std::string_view path) {
    const auto known = numbers_.find(WithBackslash(path));
    if (known == numbers_.end())
        return ~GetCount();
    const int index = FindIndex(known->second);
    entries_.erase(entries_.begin() + index);
    numbers_.erase(known);
    ++revision_;
    return index;
}

int SearchPaths::FindIndex(unsigned long long number) const {
    const auto found =
        std::lower_bound(entries_.begin(), entries_.end(), number,
                         [](const Entry& a, unsigned long long b) { return a.number < b; });
    return static_cast<int>(found - entries_.begin());
}

} // namespace Kor
