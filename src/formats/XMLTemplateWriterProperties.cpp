// The part of the template writer that writes properties of every kind, their values and commands.

#include <string>

#include "formats/Texts.h"
#include "formats/ValueTemplate.h"
#include "formats/XMLTemplateWriter.h"
#include "instances/Asset.h"
#include "schema/AnchorProperty.h"
#include "schema/Command.h"
#include "schema/GeometryProperty.h"
#include "schema/Template.h"
#include "xml/XMLWriter.h"

namespace Kor {

namespace {

/// The instance that a default value of a template type begins with, or null.
const Instance* GetDefaultInstance(const AttributeProperty& attribute) {
    const Type* type = attribute.GetType();
    if (!type || type->GetDimension() < 1 || !ObjectCast<Template>(type->GetStorageType()))
        return nullptr;
    const void* value = attribute.GetReadableDefault(type->GetDimension());
    return value ? *static_cast<Instance* const*>(value) : nullptr;
}

/// Whether a reader makes the value again from its text: of a template type it always makes an
/// instance.
bool HasText(const Type& type, const void* value) {
    return value &&
           (!ObjectCast<Template>(type.GetStorageType()) || *static_cast<Instance* const*>(value));
}

/// The text of a value, or of the type's zero where a reader would otherwise stop too early.
std::string TextOfValue(const Type& type, const void* value) {
    if (const Template* named = GetValueTemplate(type, value))
        return std::string(named->GetFullName());
    if (value)
        return type.GetReadableText(value, 0);
    if (ObjectCast<Template>(type.GetStorageType()))
        return {};
    void* zero = type.NewValue(nullptr, type.GetDimension());
    std::string text = zero ? type.GetReadableText(zero, 0) : std::string();
    type.DeleteValue(zero, type.GetDimension());
    return text;
}

} // namespace

/// The version is that of the template that has the property, although a host may have given it
/// another one: what a template has matters more than what the property says.
void XMLTemplateWriter::WriteProperty(const Property& property, int version) {
    version_ = version;
    switch (property.GetClass()) {
    case kNodePropertyClass:
        WriteNode(static_cast<const NodeProperty&>(property));
        break;
    case kAnchorPropertyClass:
        WriteAnchor(static_cast<const AnchorProperty&>(property));
        break;
    case kGeometryPropertyClass:
        WriteGeometry(static_cast<const GeometryProperty&>(property));
        break;
    case kGeometryAlternateClass: // one that a host listed among the properties of a template
        WriteNode(static_cast<const NodeProperty&>(property));
        break;
    case kAttributePropertyClass:
        WriteAttribute(static_cast<const AttributeProperty&>(property));
        break;
    default: // a kind without an element of its own could not be read again
        break;
    }
    version_ = 0;
}

void XMLTemplateWriter::WriteCopyOf(const Property& property) {
    asCopy_ = true;
    WriteProperty(property, 0);
    asCopy_ = false;
}

void XMLTemplateWriter::WriteVersion(const Property& property) {
    const int version = version_ > 0 ? version_ : property.GetVersion();
    if (version != 1)
        writer_.WriteAttribute("version", version);
}

void XMLTemplateWriter::StartMember(const Property& property, const char* element) {
    StartObject(property, element);
    writer_.WriteAttribute("name", property.GetKey());
}

void XMLTemplateWriter::EndMember(const Property& property) {
    WriteTexts(property, writer_);
    for (int i = 0; i < property.GetCommandCount(); ++i)
        WriteCommand(*property.GetCommandAt(i));
    EndObject(false);
}

void XMLTemplateWriter::WriteAttribute(const AttributeProperty& attribute) {
    StartMember(attribute, "attribute");
    // An attribute without a type still needs one to be read at all.
    writer_.WriteAttribute("type", attribute.GetType() ? attribute.GetType()->GetFullName() : "");
    WriteVersion(attribute);
    if (attribute.IsReference() && !asCopy_)
        writer_.WriteAttribute("reference", "true");
    WriteValues(attribute);
    if (*attribute.GetAutoBind())
        writer_.WriteAttribute("autoBind", attribute.GetAutoBind());
    WriteDefaultAsset(attribute);
    EndMember(attribute);
}

void XMLTemplateWriter::WriteNode(const NodeProperty& node) {
    StartMember(node, "node");
    WriteVersion(node);
    WriteAncestor(node);
    EndMember(node);
}

void XMLTemplateWriter::WriteAnchor(const AnchorProperty& anchor) {
    StartMember(anchor, "anchor");
    WriteVersion(anchor);
    if (anchor.IsChild())
        writer_.WriteAttribute("child", "true");
    WriteAncestor(anchor);
    EndMember(anchor);
}

void XMLTemplateWriter::WriteAncestor(const NodeProperty& node) {
    if (*node.GetAncestor())
        writer_.WriteAttribute("ancestor", node.GetAncestor());
    if (node.GetAncestorDistance() != -1)
        writer_.WriteAttribute("distance", node.GetAncestorDistance());
    if (*node.GetAutoBind())
        writer_.WriteAttribute("autoBind", node.GetAutoBind());
}

void XMLTemplateWriter::WriteGeometry(const GeometryProperty& geometry) {
    StartMember(geometry, "geometry");
    WriteVersion(geometry);
    WriteTexts(geometry, writer_);
    for (int i = 0; i < geometry.GetAlternateCount(); ++i)
        WriteAlternate(*geometry.GetAlternateAt(i));
    for (int i = 0; i < geometry.GetCommandCount(); ++i)
        WriteCommand(*geometry.GetCommandAt(i));
    EndObject(false);
}

void XMLTemplateWriter::WriteAlternate(const GeometryAlternate& alternate) {
    StartObject(alternate, "alternate");
    writer_.WriteAttribute("lod", alternate.GetKey());
    if (alternate.GetVersion() != 1)
        writer_.WriteAttribute("version", alternate.GetVersion());
    EndObject(true);
}

/// A reader takes a minimum only behind a default, and a maximum only behind a minimum.
void XMLTemplateWriter::WriteValues(const AttributeProperty& attribute) {
    const Type* type = attribute.GetType();
    if (!type || type->GetDimension() < 1)
        return;
    if (asCopy_)
        return WriteFreshValues(*type);
    const void* value = attribute.GetReadableDefault(type->GetDimension());
    const void* minimum = attribute.GetReadableMin();
    const void* maximum = attribute.GetReadableMax();
    const bool hasMaximum = HasText(*type, maximum);
    const bool hasMinimum = hasMaximum || HasText(*type, minimum);
    // A default asset has an element of its own.
    const bool hasDefault =
        HasText(*type, value) && !ObjectCast<Asset>(GetDefaultInstance(attribute));
    if (hasMinimum || hasDefault)
        writer_.WriteAttribute("default", TextOfValue(*type, value));
    if (hasMinimum)
        writer_.WriteAttribute("min", TextOfValue(*type, minimum));
    if (hasMaximum)
        writer_.WriteAttribute("max", TextOfValue(*type, maximum));
}

/// A type that borrows its values from none has no values.
void XMLTemplateWriter::WriteFreshValues(const Type& type) {
    const Type* storage = type.GetStorageType();
    const bool hasValues =
        storage && (ObjectCast<Template>(storage) || storage->GetInlineSize(1) > 0);
    for (const char* value : {"default", "min", "max"}) {
        if (hasValues)
            writer_.WriteAttribute(value, TextOfValue(type, nullptr));
    }
}

void XMLTemplateWriter::WriteDefaultAsset(const AttributeProperty& attribute) {
    const auto* asset = ObjectCast<Asset>(GetDefaultInstance(attribute));
    if (!asset || asCopy_)
        return;
    StartObject(*asset, "asset");
    writer_.WriteAttribute("name", asset->GetNameView());
    if (*asset->GetReference())
        writer_.WriteAttribute("reference", asset->GetReference());
    EndObject(true);
}

void XMLTemplateWriter::WriteCommand(const Command& command) {
    StartObject(command, "command");
    writer_.WriteAttribute("execute", command.GetNameView());
    writer_.WriteAttribute("notification", command.GetNotification());
    EndObject(true);
}

} // namespace Kor
