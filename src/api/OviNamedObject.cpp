#include "ovi/named_object.h"

#include "api/Barrier.h"
#include "core/NamedObject.h"
#include "core/Names.h"

using namespace Kor;
using namespace Kor::Api;

namespace {

const char* const kNoText = nullptr;

bool IsEntry(const LocalizedTextTable& table, int index) {
    return index >= 0 && index < table.GetCount();
}

/// The language of an entry; null for the default one, whose language is empty.
const char* LanguageAt(const LocalizedTextTable& table, int index) {
    if (!IsEntry(table, index) || table.GetAt(index).language.empty())
        return nullptr;
    return table.GetAt(index).language.c_str();
}

const char* TextAt(const LocalizedTextTable& table, int index) {
    return IsEntry(table, index) ? table.GetAt(index).text.c_str() : "";
}

} // namespace

const char* OviNamedObject_GetName(OviNamedObject* object) {
    return With<NamedObject>(object, "", [](NamedObject& named) { return named.GetName(); });
}

bool OviNamedObject_SetName(OviNamedObject* object, const char* name) {
    return With<NamedObject>(object, false,
                             [name](NamedObject& named) { return named.SetName(Text(name)); });
}

bool OviNamedObject_IsValidName(const char* name) {
    return IsValidName(Text(name));
}

const char* OviNamedObject_GetComment(OviNamedObject* object) {
    return With<NamedObject>(object, "", [](NamedObject& named) { return named.GetComment(); });
}

void OviNamedObject_SetComment(OviNamedObject* object, const char* comment) {
    With<NamedObject>(object, [comment](NamedObject& named) { named.SetComment(Text(comment)); });
}

const char* OviNamedObject_GetLabel(OviNamedObject* object, const char* language) {
    return With<NamedObject>(object, kNoText, [language](NamedObject& named) {
        return named.GetLabels().Find(language);
    });
}

void OviNamedObject_SetLabel(OviNamedObject* object, const char* language, const char* text) {
    With<NamedObject>(object, [=](NamedObject& named) { named.EditLabels().Set(language, text); });
}

int OviNamedObject_GetLabelCount(OviNamedObject* object) {
    return With<NamedObject>(object, 0,
                             [](NamedObject& named) { return named.GetLabels().GetCount(); });
}

const char* OviNamedObject_GetLabelLanguageAt(OviNamedObject* object, int index) {
    return With<NamedObject>(object, kNoText, [index](NamedObject& named) {
        return LanguageAt(named.GetLabels(), index);
    });
}

const char* OviNamedObject_GetLabelTextAt(OviNamedObject* object, int index) {
    return With<NamedObject>(
        object, "", [index](NamedObject& named) { return TextAt(named.GetLabels(), index); });
}

const char* OviNamedObject_GetDescription(OviNamedObject* object, const char* language) {
    return With<NamedObject>(object, kNoText, [language](NamedObject& named) {
        return named.GetDescriptions().Find(language);
    });
}

void OviNamedObject_SetDescription(OviNamedObject* object, const char* language, const char* text) {
    With<NamedObject>(object,
                      [=](NamedObject& named) { named.EditDescriptions().Set(language, text); });
}

int OviNamedObject_GetDescriptionCount(OviNamedObject* object) {
    return With<NamedObject>(object, 0,
                             [](NamedObject& named) { return named.GetDescriptions().GetCount(); });
}

const char* OviNamedObject_GetDescriptionLanguageAt(OviNamedObject* object, int index) {
    return With<NamedObject>(object, kNoText, [index](NamedObject& named) {
        return LanguageAt(named.GetDescriptions(), index);
    });
}

const char* OviNamedObject_GetDescriptionTextAt(OviNamedObject* object, int index) {
    return With<NamedObject>(
        object, "", [index](NamedObject& named) { return TextAt(named.GetDescriptions(), index); });
}
