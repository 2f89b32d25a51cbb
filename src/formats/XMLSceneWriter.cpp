#include "formats/XMLSceneWriter.h"

#include <string>
#include <unordered_set>
#include <vector>

#include "instances/AnchorInstance.h"
#include "instances/Asset.h"
#include "instances/AssetManager.h"
#include "instances/AttributeInstance.h"
#include "instances/GeometryInstance.h"
#include "instances/NodeInstance.h"
#include "schema/GeometryAlternate.h"
#include "schema/GeometryProperty.h"
#include "schema/LOD.h"
#include "xml/XMLWriter.h"

namespace Kor {

/// An instance whose element is open, and the place reached in it.
struct XMLSceneWriter::OpenInstance {
    const Instance* instance;
    int nextPropertyInstance = 0;
    const AttributeInstance* attribute = nullptr; ///< The attribute whose element is open, if any.
    int nextElement = 0;

    /// Goes on to the next nested instance of the open attribute; null after the last.
    const Instance* NextNested() {
        while (nextElement < attribute->GetDimension()) {
            if (const Instance* nested = attribute->GetNestedInstance(nextElement++))
                return nested;
        }
        return nullptr;
    }
};

void XMLSceneWriter::WriteScene(AssetManager& scene) {
    for (const Asset* asset : scene.GetAssets().Snapshot())
        WriteInstance(*asset);
}

// -- instances ------------------------------------------------------------------------------------

void XMLSceneWriter::StartInstance(const Instance& instance) {
    writer_.StartElement("asset");
    writer_.WriteAttribute("name", instance.GetNameView());
    for (int i = 0; i < instance.GetTemplateCount(); ++i) {
        const Template* implemented = instance.GetTemplateAt(i);
        writer_.StartElement("implements");
        writer_.WriteAttribute("template", implemented->GetFullName());
        writer_.WriteAttribute("version", implemented->GetVersion());
        writer_.EndElement();
    }
}

/// Writes the next property instance; one with nested instances is only opened.
void XMLSceneWriter::WriteNextPropertyInstance(OpenInstance& open) {
    const PropertyInstance* next =
        open.instance->GetPropertyInstances().GetAt(open.nextPropertyInstance++);
    if (next->GetClass() != AttributeInstance::kClassId) {
        WritePropertyInstance(*next);
        return;
    }
    const auto& attribute = static_cast<const AttributeInstance&>(*next);
    if (!attribute.GetStoredValue() || !attribute.HoldsInstances()) {
        WriteAttribute(attribute);
        return;
    }
    StartAttribute(attribute);
    open.attribute = &attribute;
    open.nextElement = 0;
}

/// Values nest instances in instances to any depth, so the writing keeps a stack of its own.
void XMLSceneWriter::WriteInstance(const Instance& instance) {
    std::vector<OpenInstance> path{{&instance}};
    StartInstance(instance);
    while (!path.empty()) {
        OpenInstance& open = path.back();
        if (open.attribute) {
            if (const Instance* nested = open.NextNested()) {
                StartInstance(*nested);
                path.push_back({nested});
            } else {
                open.attribute = nullptr;
                writer_.EndElement();
            }
        } else if (open.nextPropertyInstance < open.instance->GetPropertyInstances().GetCount()) {
            WriteNextPropertyInstance(open);
        } else {
            writer_.EndElement();
            path.pop_back();
        }
    }
}

// -- property instances ---------------------------------------------------------------------------

void XMLSceneWriter::WritePropertyInstance(const PropertyInstance& propertyInstance) {
    switch (propertyInstance.GetClass()) {
    case AnchorInstance::kClassId:
        return WriteAnchor(static_cast<const AnchorInstance&>(propertyInstance));
    case NodeInstance::kClassId:
        return WriteNode(static_cast<const NodeInstance&>(propertyInstance));
    case GeometryInstance::kClassId:
        return WriteGeometry(static_cast<const GeometryInstance&>(propertyInstance));
    default:
        return WriteAttribute(static_cast<const AttributeInstance&>(propertyInstance));
    }
}

void XMLSceneWriter::StartAttribute(const AttributeInstance& attribute) {
    writer_.StartElement("attribute");
    writer_.WriteAttribute("property", attribute.GetKey());
    writer_.WriteAttribute("binding", attribute.GetBindingView());
}

void XMLSceneWriter::WriteAttribute(const AttributeInstance& attribute) {
    StartAttribute(attribute);
    if (const Type* stored = attribute.GetStoredType())
        WriteValue(*stored, attribute.GetStoredValue(), attribute.GetDimension());
    writer_.EndElement();
}

void XMLSceneWriter::WriteValue(const Type& type, const void* value, int count) {
    const Type* storage = type.GetStorageType();
    if (!storage || !value || count < 1)
        return;
    if (storage->GetInlineSize(1) > 0) // neither instances nor of a type that was made from none
        WriteElements(*storage, value, count);
    else if (ObjectCast<Template>(storage))
        WriteElements(static_cast<Instance* const*>(value), count);
}

void XMLSceneWriter::WriteElements(Instance* const* instances, int count) {
    for (int i = 0; i < count; ++i) {
        if (instances[i])
            WriteInstance(*instances[i]);
    }
}

/// The text of an 8-bit integer is its character, which need not read back.
void XMLSceneWriter::WriteElements(const Type& storage, const void* value, int count) {
    std::string text;
    if (count == 1) {
        storage.GetValueAsString(value, text, 0);
        writer_.WriteAttribute("value", text);
        return;
    }
    for (int i = 0; i < count; ++i) {
        text.clear(); // text types append
        storage.GetValueAsString(value, text, i);
        writer_.StartElement("value");
        writer_.WriteText(text);
        writer_.EndElement();
    }
}

void XMLSceneWriter::WriteAnchor(const AnchorInstance& anchor) {
    writer_.StartElement("anchor");
    writer_.WriteAttribute("property", anchor.GetKey());
    writer_.WriteAttribute("binding", anchor.GetBindingView());
    writer_.WriteAttribute("attachedAnchor", std::string_view(anchor.GetAttachedAnchor()));
    writer_.EndElement();
}

/// Without its binding: of a node alone, a scene says only that it is there.
void XMLSceneWriter::WriteNode(const NodeInstance& node) {
    writer_.StartElement("node");
    writer_.WriteAttribute("property", node.GetKey());
    writer_.EndElement();
}

namespace {

/// What nearly all are: as they were made.
bool EachGoesByItsPlace(const GeometryInstance& geometry, const GeometryProperty& property) {
    for (int i = 0; i < geometry.GetNodeInstanceCount(); ++i) {
        const NodeInstance* node = geometry.GetNodeInstanceAt(i);
        if (!node || node->GetProperty() != property.GetAlternateAt(i))
            return false;
    }
    return true;
}

/// Nodes stand for the level of their own alternate, wherever a renaming of levels has moved that
/// since. Where the host has put in a node of something else, or two of one alternate, not all of
/// them can: then the place decides, as it does in reading.
bool DoNodesGoByPlace(const GeometryInstance& geometry, const GeometryProperty& property) {
    if (property.GetAlternateCount() != geometry.GetNodeInstanceCount() ||
        EachGoesByItsPlace(geometry, property))
        return false;
    std::unordered_set<const Property*> free;
    for (int i = 0; i < property.GetAlternateCount(); ++i)
        free.insert(property.GetAlternateAt(i));
    for (int i = 0; i < geometry.GetNodeInstanceCount(); ++i) {
        const NodeInstance* node = geometry.GetNodeInstanceAt(i);
        if (node && free.erase(node->GetProperty()) == 0)
            return true;
    }
    return false;
}

} // namespace

void XMLSceneWriter::WriteGeometry(const GeometryInstance& geometry) {
    const GeometryProperty& property = geometry.GetGeometryProperty();
    writer_.StartElement("geometry");
    writer_.WriteAttribute("property", geometry.GetKey());
    const bool byPlace = DoNodesGoByPlace(geometry, property);
    for (int i = 0; i < geometry.GetNodeInstanceCount(); ++i) {
        const NodeInstance* node = geometry.GetNodeInstanceAt(i);
        const auto* alternate = byPlace ? property.GetAlternateAt(i)
                                : node  ? ObjectCast<GeometryAlternate>(node->GetProperty())
                                        : nullptr;
        if (!node || !alternate || !alternate->GetLOD())
            continue;
        writer_.StartElement("alternate");
        writer_.WriteAttribute("lod", alternate->GetLOD()->GetNameView());
        writer_.WriteAttribute("binding", node->GetBindingView());
        writer_.EndElement();
    }
    writer_.EndElement();
}

} // namespace Kor
