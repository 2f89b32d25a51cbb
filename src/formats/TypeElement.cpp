#include "formats/TypeElement.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "core/ByteStreams.h"
#include "formats/XMLTemplateWriter.h"
#include "manager/TemplateManager.h"
#include "schema/AttributeProperty.h"
#include "xml/XMLWriter.h"

namespace Kor {

namespace {

template <class Body> std::string Write(const Body& body) {
    StringSink sink;
    XMLWriter writer;
    writer.Open(sink, false);
    XMLTemplateWriter elements(writer);
    body(elements);
    writer.Close();
    return sink.GetText();
}

bool HasAll(const LocalizedTextTable& texts, const LocalizedTextTable& wanted) {
    for (int i = 0; i < wanted.GetCount(); ++i) {
        const std::string& language = wanted.GetAt(i).language;
        if (!texts.Contains(language))
            return false;
    }
    return true;
}

/// Whether values of the property are instances, which live with the copy that has them.
bool HasInstances(const Property& property) {
    const auto* attribute = ObjectCast<AttributeProperty>(&property);
    const Type* type = attribute ? attribute->GetType() : nullptr;
    return type && ObjectCast<Template>(type->GetStorageType());
}

/// Whether a template has the property as its making copied it, and nobody changed it since.
bool HasCopyOf(const Template& type, const Property& source) {
    const Property* copy = type.PeekProperty(source.GetKey(), false);
    if (!copy || copy->GetVersion() != source.GetVersion() ||
        (copy->GetKeeper() != &type && !copy->IsPrototype()))
        return false;
    if (HasInstances(*copy))
        copy = type.GetPeeked(*copy);
    return Write([copy](XMLTemplateWriter& writer) {
               if (copy->IsPrototype()) // nobody has asked for the copy yet
                   writer.WriteCopyOf(*copy);
               else
                   writer.WriteWholeProperty(*copy);
           }) == Write([&source](XMLTemplateWriter& writer) { writer.WriteCopyOf(source); });
}

bool HasCopiesOfAll(const Template& type, const Template& origin) {
    for (int i = 0; const Property* property = origin.PeekByName(i); ++i) {
        if (HasInstances(*property))
            property = origin.GetPeeked(*property);
        if (!HasCopyOf(type, *property))
            return false;
    }
    return true;
}

bool AreSameItems(const EnumerationItem& a, const EnumerationItem& b) {
    return a.GetKey() == b.GetKey() && a.GetValueText() == b.GetValueText() &&
           std::strcmp(a.GetComment(), b.GetComment()) == 0;
}

} // namespace

bool IsToldByTypeElement(const Template& type) {
    const TemplateManager* manager = TemplateManager::Get();
    const auto* origin = ObjectCast<Template>(type.GetBaseType());
    if (!origin || !manager || manager->GetTemplate(origin->GetFullName()) != origin ||
        origin->IsRecycled() || !HasAll(type.GetLabels(), origin->GetLabels()) ||
        !HasAll(type.GetDescriptions(), origin->GetDescriptions()))
        return false;
    const auto& parents = origin->GetParents();
    return std::all_of(parents.begin(), parents.end(),
                       [&](const Template* parent) {
                           return parent == manager->GetRoot() || type.GetParent(parent->GetKey());
                       }) &&
           HasCopiesOfAll(type, *origin);
}

bool IsToldByTypeElement(const Enumeration& type) {
    const TemplateManager* manager = TemplateManager::Get();
    const auto* origin = ObjectCast<Enumeration>(type.GetBaseType());
    if (!origin || !manager || manager->GetEnumeration(origin->GetFullName()) != origin ||
        origin->IsRecycled() || origin->GetItemCount() != type.GetItemCount())
        return false;
    bool same = true;
    for (int i = 0; same && i < type.GetItemCount(); ++i)
        same = AreSameItems(*type.GetItemAt(i), *origin->GetItemAt(i));
    return same;
}

} // namespace Kor
