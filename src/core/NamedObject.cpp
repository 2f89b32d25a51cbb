#include "core/NamedObject.h"

#include "core/Names.h"
// An object writes its own texts: the writer knows only core, so the way back is here alone.
#include "xml/XMLWriter.h"

namespace Kor {

namespace {

const LocalizedTextTable& NoTexts() {
    static const auto& none = *new LocalizedTextTable(); // outlives all users at process exit
    return none;
}

void WriteTexts(const LocalizedTextTable& table, const char* element, XMLWriter& writer) {
    for (int i = 0; i < table.GetCount(); ++i) {
        const LocalizedTextTable::Entry& entry = table.GetAt(i);
        writer.StartElement(element);
        if (!entry.language.empty())
            writer.WriteAttribute("language", entry.language);
        writer.WriteText(entry.text);
        writer.EndElement();
    }
}

} // namespace

NamedObject::NamedObject(std::string_view name) {
    if (IsValidName(name))
        StoreName(name);
}

NamedObject::NamedObject(const NamedObject& other) : Object(other), name_(other.name_) {
    CopyTexts(other);
}

bool NamedObject::SetName(const char* name) {
    if (!IsValidName(TextOf(name)))
        return false;
    StoreName(name);
    return true;
}

void NamedObject::WriteToXML(XMLWriter& writer) const {
    WriteTexts(GetLabels(), "label", writer);
    WriteTexts(GetDescriptions(), "description", writer);
}

const char* NamedObject::GetComment() const {
    return texts_ ? texts_->comment.CStr() : "";
}

void NamedObject::SetComment(std::string_view comment) {
    if (texts_ || !comment.empty())
        EditTexts().comment.Assign(comment);
}

const LocalizedTextTable& NamedObject::GetLabels() const {
    return texts_ ? texts_->labels : NoTexts();
}

const LocalizedTextTable& NamedObject::GetDescriptions() const {
    return texts_ ? texts_->descriptions : NoTexts();
}

void NamedObject::CopyTexts(const NamedObject& other) {
    texts_ = other.texts_ ? std::make_unique<Texts>(*other.texts_) : nullptr;
}

NamedObject::Texts& NamedObject::EditTexts() {
    if (!texts_)
        texts_ = std::make_unique<Texts>();
    return *texts_;
}

} // namespace Kor
