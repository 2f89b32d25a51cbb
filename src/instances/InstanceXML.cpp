// Instances as XML. Values nest instances in instances, so the writing keeps a stack of its own.

#include <vector>

#include "instances/AttributeInstance.h"
#include "instances/Instance.h"
#include "xml/XMLWriter.h"

namespace Kor {

namespace {

/// An instance whose element is open, and the place reached in it.
struct OpenInstance {
    const Instance* instance;
    int nextPropertyInstance = 0;
    const AttributeInstance* attribute = nullptr; ///< The attribute whose element is open, if any.
    int nextElement = 0;
};

void StartInstance(const Instance& instance, XMLWriter& writer) {
    writer.StartElement("asset");
    writer.WriteAttribute("name", instance.GetNameView());
    for (int i = 0; i < instance.GetTemplateCount(); ++i) {
        const Template* implemented = instance.GetTemplateAt(i);
        writer.StartElement("implements");
        writer.WriteAttribute("template", implemented->GetFullName());
        writer.WriteAttribute("version", implemented->GetVersion());
        writer.EndElement();
    }
}

/// Goes on to the next nested instance of the open attribute; null after the last.
const Instance* NextNested(OpenInstance& open) {
    while (open.nextElement < open.attribute->GetDimension()) {
        if (const Instance* nested = open.attribute->GetNestedInstance(open.nextElement++))
            return nested;
    }
    return nullptr;
}

/// Writes the next property instance; one with nested instances is only opened.
void WriteNextPropertyInstance(OpenInstance& open, XMLWriter& writer) {
    const PropertyInstance* next =
        open.instance->GetPropertyInstances().GetAt(open.nextPropertyInstance++);
    const auto* attribute = ObjectCast<AttributeInstance>(next);
    if (!attribute || attribute->GetClass() != AttributeInstance::kClassId ||
        !attribute->GetStoredValue() || !attribute->HoldsInstances()) {
        next->WriteToXML(writer);
        return;
    }
    attribute->OpenInXML(writer);
    open.attribute = attribute;
    open.nextElement = 0;
}

} // namespace

void Instance::WriteToXML(XMLWriter& writer) const {
    std::vector<OpenInstance> path{{this}};
    StartInstance(*this, writer);
    while (!path.empty()) {
        OpenInstance& open = path.back();
        if (open.attribute) {
            const Instance* nested = NextNested(open);
            if (nested) {
                StartInstance(*nested, writer);
                path.push_back({nested});
            } else {
                open.attribute = nullptr;
                writer.EndElement();
            }
        } else if (open.nextPropertyInstance < open.instance->GetPropertyInstances().GetCount()) {
            WriteNextPropertyInstance(open, writer);
        } else {
            writer.EndElement();
            path.pop_back();
        }
    }
}

} // namespace Kor
