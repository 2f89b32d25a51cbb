#include "core/NameAndTexts.h"

#include <memory>
#include <new>
#include <utility>

namespace Kor {

namespace {

/// Not part of the destructor, which mostly has no texts to end and should not get ready for it.
template <class Both> [[gnu::noinline]] void DeleteApart(Both* both) noexcept {
    delete both;
}

} // namespace

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
        DeleteApart(GetBoth());
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
