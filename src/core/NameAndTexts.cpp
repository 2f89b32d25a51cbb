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
    Free();
}

void NameAndTexts::Free() noexcept {
    if (!HasTexts())
        name_.~CompactString();
    else if (!IsReplaced())
        DeleteApart(reinterpret_cast<Both*>(GetBits() & ~kHasTexts));
}

void NameAndTexts::ReplaceBy(void* pointer) noexcept {
    Free();
    both_ = reinterpret_cast<std::uintptr_t>(pointer) | kReplaced;
}

/// Stands for the texts of whoever has none any more. Emptied whenever it is asked for, so that
/// nothing that is written to it is ever read.
NameAndTexts::Both* NameAndTexts::GetNothing() {
    alignas(Both) static unsigned char room[sizeof(Both)];
    static Both* nothing = new (room) Both(); // never destroyed: it outlives all users
    nothing->name = CompactString();
    nothing->texts = Texts();
    nothing->watched = false;
    return nothing;
}

NameAndTexts::Both& NameAndTexts::EditBoth() {
    if (!HasTexts()) {
        auto both = std::make_unique<Both>();
        both->name = std::move(name_);
        name_.~CompactString();
        HoldBoth(both.release());
    }
    return *GetBoth();
}

NameAndTexts::Texts& NameAndTexts::EditTexts() {
    return EditBoth().texts;
}

void NameAndTexts::CopyTexts(const NameAndTexts& other) {
    const Texts* source = other.GetTexts();
    if (source) {
        Texts copy(*source);
        EditTexts() = std::move(copy);
    } else if (IsWatched()) {
        GetBoth()->texts = Texts();
    } else if (HasTexts() && !IsReplaced()) {
        const std::unique_ptr<Both> both(GetBoth());
        new (&name_) CompactString(std::move(both->name));
    }
}

} // namespace Kor
