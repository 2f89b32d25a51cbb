#include "core/NameAndTexts.h"

#include <memory>
#include <new>
#include <utility>

namespace Kor {

NameAndTexts::NameAndTexts(const NameAndTexts& other) : name_(other.GetName()) {
    try {
        CopyTexts(other);
    } catch (...) {
        name_.~CompactString(); // a constructor that throws has no destructor run
        throw;
    }
}

NameAndTexts::~NameAndTexts() {
    if (HasTexts())
        delete GetBoth();
    else
        name_.~CompactString();
}

NameAndTexts::Texts& NameAndTexts::EditTexts() {
    if (!HasTexts()) {
        auto both = std::make_unique<Both>();
        both->name = std::move(name_);
        name_.~CompactString();
        HoldBoth(both.release());
    }
    return GetBoth()->texts;
}

void NameAndTexts::CopyTexts(const NameAndTexts& other) {
    const Texts* source = other.GetTexts();
    if (source) {
        Texts copy(*source);
        EditTexts() = std::move(copy);
    } else if (HasTexts()) {
        const std::unique_ptr<Both> both(GetBoth());
        new (&name_) CompactString(std::move(both->name));
    }
}

} // namespace Kor
