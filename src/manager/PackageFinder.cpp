#include "manager/PackageFinder.h"

#include <algorithm>
#include <map>
#include <utility>

#include "core/Names.h"
#include "platform/DirectoryId.h"
#include "platform/File.h"

namespace Kor {

namespace {

/// What leads from a directory to one of those in it; an empty part leads to the directory itself.
std::string_view TakePart(std::string_view& name) {
    const size_t end = std::min(name.find_first_of(".\\/"), name.size());
    const std::string_view part = name.substr(0, end);
    name.remove_prefix(std::min(end + 1, name.size()));
    return part;
}

} // namespace

/// The directories of a package, or of all that begin with it, as far as they were asked for, and
/// what is known to be in them.
struct PackageFinder::Node {
    enum class Step { kFound, kAtEnd, kNeedsParent };

    /// A directory in one of the places.
    struct Entry {
        size_t place;
        std::string name;
    };
    using Entries = std::vector<Entry>; ///< in the order of the places

    Node(Node* above, std::string_view ownPart)
        : parent(above), part(ownPart),
          isShownByListing(!part.empty() && PathFinder::IsShownByListing(part)) {}

    Step Advance();
    size_t GetCandidate() const;
    bool Spell(size_t place, std::string& name) const;
    void ListUpTo(size_t place);

    /// The first directory of a name in a place of the parent or behind it, if there is one.
    const Entry* FindListed(size_t place) const {
        const auto found = parent->directories.find(part);
        if (found == parent->directories.end())
            return nullptr;
        const Entries& entries = found->second;
        const auto entry =
            std::lower_bound(entries.begin(), entries.end(), place,
                             [](const Entry& a, size_t wanted) { return a.place < wanted; });
        return entry == entries.end() ? nullptr : &*entry;
    }

    Node* parent;
    std::string part;
    bool isShownByListing;
    std::vector<Place> places;
    size_t next = 0; ///< the place of the parent to look at
    bool atEnd = false;
    std::map<std::string, Node*, std::less<>> children;

    size_t listed = 0; ///< how many of the places the following know
    std::map<std::string, Entries, LessIgnoringCase> directories;
    std::vector<size_t> unlistable; ///< may have any name
};

/// Finds the next place by the places of the parent that are known.
PackageFinder::Node::Step PackageFinder::Node::Advance() {
    for (;;) {
        const size_t place = GetCandidate();
        if (place >= parent->places.size()) {
            atEnd = parent->atEnd;
            return atEnd ? Step::kAtEnd : Step::kNeedsParent;
        }
        next = place + 1;
        std::string name;
        if (Spell(place, name)) {
            const Place& above = parent->places[place];
            places.push_back({above.searchPath, above.directory + name + '\\'});
            return Step::kFound;
        }
    }
}

/// The next place of the parent that has the part or may have it.
size_t PackageFinder::Node::GetCandidate() const {
    if (!isShownByListing)
        return next;
    size_t candidate = std::max(next, parent->listed);
    if (const Entry* entry = FindListed(next))
        candidate = std::min(candidate, entry->place);
    const auto& others = parent->unlistable;
    const auto other = std::lower_bound(others.begin(), others.end(), next);
    return other == others.end() ? candidate : std::min(candidate, *other);
}

/// How the part is written in a place of the parent; false when it is not there.
bool PackageFinder::Node::Spell(size_t place, std::string& name) const {
    name = part;
    if (IsDirectory(parent->places[place].directory + part))
        return true;
    if (!isShownByListing)
        return false;
    parent->ListUpTo(place);
    const Entry* entry = FindListed(place);
    if (!entry || entry->place != place)
        return false;
    name = entry->name;
    return true;
}

void PackageFinder::Node::ListUpTo(size_t place) {
    for (; listed <= place; ++listed) {
        std::vector<std::string> names;
        if (!ListDirectory(places[listed].directory, false, true, names))
            unlistable.push_back(listed);
        for (const std::string& name : names)
            directories[name].push_back({listed, name});
    }
}

// -- the finder -----------------------------------------------------------------------------------

PackageFinder::PackageFinder(std::vector<std::string> searchPaths)
    : searchPaths_(std::move(searchPaths)) {
    nodes_.push_back(std::make_unique<Node>(nullptr, ""));
}

PackageFinder::~PackageFinder() = default;

const PackageFinder::Place* PackageFinder::Find(std::string_view package, size_t n) {
    Chain chain{nodes_.front().get()};
    while (!package.empty()) {
        if (!Reach(chain, 0))
            return nullptr; // nothing can be below
        chain.push_back(&GetChild(*chain.back(), TakePart(package)));
    }
    return Reach(chain, n) ? &chain.back()->places[n] : nullptr;
}

PackageFinder::Node& PackageFinder::GetChild(Node& parent, std::string_view part) {
    const auto found = parent.children.find(part);
    if (found != parent.children.end())
        return *found->second;
    nodes_.push_back(std::make_unique<Node>(&parent, part));
    parent.children.emplace(part, nodes_.back().get());
    return *nodes_.back();
}

/// Whether the last node of a chain has more than n places; looks for them, above where need be.
bool PackageFinder::Reach(const Chain& chain, size_t n) {
    const Node& wanted = *chain.back();
    size_t level = chain.size() - 1;
    while (wanted.places.size() <= n && !wanted.atEnd) {
        if (level == 0)
            TakeNextSearchPath();
        else if (chain[level]->Advance() == Node::Step::kNeedsParent) {
            --level;
            continue;
        }
        level = std::min(level + 1, chain.size() - 1);
    }
    return wanted.places.size() > n;
}

/// Goes on to the next search path that is there.
void PackageFinder::TakeNextSearchPath() {
    Node& top = *nodes_.front();
    while (nextSearchPath_ < searchPaths_.size()) {
        const size_t index = nextSearchPath_++;
        const bool isCurrent = searchPaths_[index].empty();
        std::string directory = isCurrent ? std::string() : paths_.Find(searchPaths_[index]);
        if ((isCurrent || !directory.empty()) && IsDirectory(directory)) {
            top.places.push_back({index, std::move(directory)});
            return;
        }
    }
    top.atEnd = true;
}

} // namespace Kor
