#pragma once

#include <cstdint>
#include <unordered_set>
#include <vector>

#include "types/Type.h"

namespace Kor {

class Template;
class TemplateManager;

/// Which definitions of a file are referred to from outside of it: by what is registered, or by
/// types and templates that this contains. A reference property refers to nothing.
class OuterReferences {
public:
    /// The definitions must be all that are registered of the file.
    OuterReferences(const TemplateManager& manager, const std::vector<Type*>& definitions);

    bool Contains(const Type* definition) const { return found_.count(definition) > 0; }

private:
    void Meet(const Type* type);
    void MeetContents(const Template& definition);

    std::unordered_set<const Type*> definitions_;
    std::unordered_set<const Type*> found_;
    std::unordered_set<const Type*> met_;
    std::vector<const Type*> pending_;
    std::uint64_t walk_; // no other starts meanwhile
};

} // namespace Kor
