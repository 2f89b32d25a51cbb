#include "instances/UnlistedPropertyInstance.h"

#include "instances/PropertyInstance.h"

namespace Kor {

void UnlistedPropertyInstance::Forget(const PropertyInstance& gone) {
    for (UnlistedPropertyInstance* at = innermost_; at; at = at->outer_) {
        if (at->watched_ == &gone)
            at->watched_ = nullptr;
    }
}

PropertyInstance* UnlistedPropertyInstance::Search(const Instance& instance,
                                                   std::string_view fullName) {
    for (const UnlistedPropertyInstance* at = innermost_; at; at = at->outer_) {
        PropertyInstance* found = at->fate_ == kComesBack ? at->watched_ : nullptr;
        if (found && found->GetInstance() == &instance && found->GetKey() == fullName)
            return found;
    }
    return nullptr;
}

} // namespace Kor
