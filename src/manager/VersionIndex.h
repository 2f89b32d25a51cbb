#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/KeyHash.h"

namespace Kor {

class Template;

/// The registered versions of each template that was asked for them, from the lowest to the
/// highest. A list is made with the first question and kept up from then on.
class VersionIndex {
public:
    using Versions = std::vector<Template*>;

    /// The list of a full name; null where nobody asked for it yet.
    const Versions* Find(const std::string& name) const;

    /// Enters the list of a name, in order. Throws std::bad_alloc, and then has changed nothing.
    const Versions& Enter(const std::string& name, Versions versions);

    /// Room for one version more in a list that is there. Throws std::bad_alloc.
    void MakeRoomIn(const std::string& name);

    /// Called when a version comes to the registry and when it leaves it, with the key that it has
    /// there. Without memory the whole list goes, and is made anew when it is asked for.
    void Add(Template& version) noexcept;
    void Remove(Template& version) noexcept;
    void Clear() { lists_.clear(); }

    /// Says of all versions from 1 to this one, which is listed, that it is the latest, without
    /// touching each where these are all that there are. `number`, its version, may be kept for
    /// that.
    void RaiseLatest(Template& latest, std::shared_ptr<int> number);

private:
    struct List {
        Versions versions;
        std::shared_ptr<int> latest; ///< Shared with the versions that were told together.
    };

    static bool AreAllTold(const List& list, int latest);

    std::unordered_map<std::string, List, KeyHash> lists_;
};

} // namespace Kor
