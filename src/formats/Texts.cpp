#include "formats/Texts.h"

#include "core/NamedObject.h"
#include "xml/XMLWriter.h"

namespace Kor {

namespace {

void WriteTable(const LocalizedTextTable& table, const char* element, XMLWriter& writer) {
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

void WriteTexts(const NamedObject& object, XMLWriter& writer) {
    WriteTable(object.GetLabels(), "label", writer);
    WriteTable(object.GetDescriptions(), "description", writer);
}

} // namespace Kor
