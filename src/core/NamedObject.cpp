#include "core/NamedObject.h"

#include "core/Kept.h"

#include "core/Names.h"
// An object writes its own texts: the writer knows only core, so the way back is here alone.
#include "xml/XMLWriter.h"

namespace Kor {

namespace {

/// What stands for texts that there are none of.
NeverDestroyed<LocalizedTextTable> noTexts;

void WriteTexts(const LocalizedTextTable& table, const char* element, XMLWriter& writer) {
    for (int i = 0; i < table.GetCount(); ++i) {
        const LocalizedTextTable::Entry& entry = table.GetAt(i);
        writer.StartElement(element);
        if (!entry.language.empty())
            writer.WriteAttribute("language", entry.language);
        if (entry.language.compare(0, 1, "-") == 0) // which would stand for the default one
            writer.WriteAttribute("exact", "true");
        writer.WriteText(entry.text);
        writer.EndElement();
    }
}

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

void NamedObject::WriteToXML(XMLWriter& writer) const {
    WriteTexts(GetLabels(), "label", writer);
    WriteTexts(GetDescriptions(), "description", writer);
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
