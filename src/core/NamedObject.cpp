#include "core/NamedObject.h"

#include "core/Kept.h"

#include "core/Names.h"

namespace Kor {

namespace {

/// What stands for texts that there are none of.
NeverDestroyed<LocalizedTextTable> noTexts;

} // namespace

NamedObject::NamedObject(std::string_view name) {
    if (IsValidName(name))
        StoreName(name);
}

bool NamedObject::SetName(const char* name) {
    if (!IsValidName(TextOf(name)))
        return false;
    StoreName(name);
    return true;
}

const char* NamedObject::GetComment() const {
    const NameAndTexts::Texts* texts = nameAndTexts_.GetTexts();
    return texts ? texts->comment.CStr() : "";
}

void NamedObject::SetComment(std::string_view comment) {
    if (nameAndTexts_.GetTexts() || !comment.empty())
        nameAndTexts_.EditTexts().comment.Assign(comment);
}

const LocalizedTextTable& NamedObject::GetLabels() const {
    const NameAndTexts::Texts* texts = nameAndTexts_.GetTexts();
    return texts ? texts->labels : noTexts.Get();
}

const LocalizedTextTable& NamedObject::GetDescriptions() const {
    const NameAndTexts::Texts* texts = nameAndTexts_.GetTexts();
    return texts ? texts->descriptions : noTexts.Get();
}

} // namespace Kor
