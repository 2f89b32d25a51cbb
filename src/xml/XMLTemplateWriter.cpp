#include "xml/XMLTemplateWriter.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "instances/Asset.h"
#include "manager/TemplateManager.h"
#include "schema/AnchorProperty.h"
#include "schema/GeometryProperty.h"
#include "schema/Template.h"
#include "types/Enumeration.h"
#include "xml/VersionOrder.h"
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
    if (value)
        return type.GetReadableText(value, 0);
    if (ObjectCast<Template>(type.GetStorageType()))
        return {};
    void* zero = type.NewValue(nullptr, type.GetDimension());
    std::string text = zero ? type.GetReadableText(zero, 0) : std::string();
    type.DeleteValue(zero, type.GetDimension());
    return text;
}

bool AreEqual(const LocalizedTextTable& a, const LocalizedTextTable& b) {
    bool equal = a.GetCount() == b.GetCount();
    for (int i = 0; equal && i < a.GetCount(); ++i)
        equal = a.GetAt(i).language == b.GetAt(i).language && a.GetAt(i).text == b.GetAt(i).text;
    return equal;
}

bool HaveSameTexts(const NamedObject& a, const NamedObject& b) {
    return AreEqual(a.GetLabels(), b.GetLabels()) &&
           AreEqual(a.GetDescriptions(), b.GetDescriptions());
}

/// The registered versions below the given one, and that one.
std::vector<const Template*> CollectVersions(const Template& latest) {
    std::vector<const Template*> versions;
    if (const TemplateManager* manager = TemplateManager::Get()) {
        for (const Template* version : manager->GetVersions(latest.GetFullName())) {
            if (version->GetVersion() < latest.GetVersion() && !version->IsRecycled())
                versions.push_back(version);
        }
    }
    versions.push_back(&latest);
    return versions;
}

/// Whether all versions have the comment and the texts that copies of the first one have: texts
/// that were there when they were made, or none.
bool FitInOneElement(const std::vector<const Template*>& versions) {
    const Template& first = *versions.front();
    const Template& latest = *versions.back();
    const bool copiedTexts = HaveSameTexts(first, latest);
    return std::all_of(versions.begin() + 1, versions.end(), [&](const Template* version) {
        const bool hasTexts =
            version->GetLabels().GetCount() > 0 || version->GetDescriptions().GetCount() > 0;
        return std::strcmp(version->GetComment(), first.GetComment()) == 0 &&
               (copiedTexts ? HaveSameTexts(first, *version) : !hasTexts);
    });
}

/// Whether the package of the type lies inside the given one.
bool BelongsBelow(const Type& type, std::string_view package) {
    const std::string& own = type.GetPackageName();
    return own.size() > package.size() && own[package.size()] == '.' &&
           own.compare(0, package.size(), package) == 0;
}

} // namespace

// A reader gives its last comment to every object that follows, until certain elements end. An
// object without a comment therefore sometimes needs an empty one in front.
void XMLTemplateWriter::StartObject(const NamedObject& object, const char* element) {
    if (*object.GetComment() || commentPending_)
        writer_.WriteComment(object.GetComment());
    commentPending_ = *object.GetComment() != '\0';
    writer_.StartElement(element);
}

void XMLTemplateWriter::EndObject(bool dropsComment) {
    writer_.EndElement();
    if (dropsComment)
        commentPending_ = false;
}

// -- types ----------------------------------------------------------------------------------------

void XMLTemplateWriter::WriteType(const Type& type) {
    StartObject(type, "type");
    writer_.WriteAttribute("name", type.GetNameView());
    if (type.GetBaseType())
        writer_.WriteAttribute("type", type.GetBaseType()->GetFullName());
    if (type.GetDimension() != 1)
        writer_.WriteAttribute("dim", type.GetDimension());
    EndObject(true);
}

void XMLTemplateWriter::WriteEnumeration(const Enumeration& enumeration) {
    // An enumeration made from another one has its items from there.
    if (ObjectCast<Enumeration>(enumeration.GetBaseType())) {
        WriteType(enumeration);
        return;
    }
    StartObject(enumeration, "enum");
    writer_.WriteAttribute("name", enumeration.GetNameView());
    if (enumeration.GetBaseType())
        writer_.WriteAttribute("type", enumeration.GetBaseType()->GetFullName());
    for (int i = 0; i < enumeration.GetItemCount(); ++i)
        WriteItem(*enumeration.GetItemAt(i));
    EndObject(false);
}

void XMLTemplateWriter::WriteItem(const EnumerationItem& item) {
    StartObject(item, "item");
    writer_.WriteAttribute("name", item.GetNameView());
    writer_.WriteAttribute("value", item.GetValueText());
    EndObject(true);
}

// -- templates ------------------------------------------------------------------------------------

std::string_view XMLTemplateWriter::GetNameInFile(const Template& type) const {
    const std::string_view fullName = type.GetFullName();
    if (!inFile_ || type.GetPackageName() == package_)
        return type.GetNameView();
    if (package_.empty())
        return fullName;
    return BelongsBelow(type, package_) ? fullName.substr(package_.size() + 1) : type.GetNameView();
}

void XMLTemplateWriter::SwitchPackage(const Type& type) {
    const bool isTemplate = ObjectCast<Template>(&type) && !type.GetBaseType();
    if (type.GetPackageName() == package_ ||
        (isTemplate && (package_.empty() || BelongsBelow(type, package_))))
        return;
    package_ = type.GetPackageName();
    writer_.StartElement("templates");
    writer_.WriteAttribute("package", package_);
    EndObject(true);
}

void XMLTemplateWriter::DeclareTemplate(const Template& type) {
    if (commentPending_)
        writer_.WriteComment("");
    commentPending_ = false;
    writer_.StartElement("template");
    writer_.WriteAttribute("name", GetNameInFile(type));
    EndObject(false);
}

void XMLTemplateWriter::StartTemplate(const Template& version) {
    StartObject(version, "template");
    writer_.WriteAttribute("name", GetNameInFile(version));
}

void XMLTemplateWriter::WriteTemplate(const Template& latest) {
    const std::vector<const Template*> versions = CollectVersions(latest);
    const std::vector<VersionStep> steps = OrderVersionSteps(versions);
    const Template& first = *versions.front();
    if (ObjectCast<Template>(first.GetBaseType())) { // made by a type element, perhaps continued
        WriteType(first);
        if (steps.empty() && HaveSameTexts(first, *first.GetBaseType())) {
            WriteViews(versions);
            return;
        }
    }
    if (FitInOneElement(versions))
        WriteInOneElement(steps, versions);
    else
        WriteVersionByVersion(steps, versions);
}

void XMLTemplateWriter::WriteInOneElement(const std::vector<VersionStep>& steps,
                                          const std::vector<const Template*>& versions) {
    const Template& first = *versions.front();
    const Template& latest = *versions.back();
    // Later versions have the texts that were there when they were copied.
    const bool copiedTexts = HaveSameTexts(first, latest);
    StartTemplate(latest);
    if (copiedTexts)
        first.NamedObject::WriteToXML(writer_);
    for (const VersionStep& step : steps)
        WriteStep(step);
    if (!copiedTexts)
        first.NamedObject::WriteToXML(writer_);
    WriteViews(versions);
    EndObject(false);
}

/// A template element gives its comment and texts to what is the latest version when it starts. So
/// each version gets its own element, which ends with the texts, after the next version was made.
void XMLTemplateWriter::WriteVersionByVersion(const std::vector<VersionStep>& steps,
                                              const std::vector<const Template*>& versions) {
    const Template* highest = versions.front();
    StartTemplate(*highest);
    for (const VersionStep& step : steps) {
        WriteStep(step);
        if (step.version->GetVersion() <= highest->GetVersion())
            continue;
        highest->NamedObject::WriteToXML(writer_);
        EndObject(false);
        highest = step.version;
        StartTemplate(*highest);
    }
    highest->NamedObject::WriteToXML(writer_);
    WriteViews(versions);
    EndObject(false);
}

void XMLTemplateWriter::WriteStep(const VersionStep& step) {
    if (!step.property)
        WriteParents(step);
    else
        WriteProperty(*step.property);
}

void XMLTemplateWriter::WriteParents(const VersionStep& step) {
    const int version = step.version->GetVersion();
    if (step.writesKnownParent) {
        if (const Template* known = step.lower->GetParentAt(0))
            WriteParent(*known, version);
        return;
    }
    for (const Template* parent : GetIntroducedParents(*step.version, step.lower))
        WriteParent(*parent, version);
}

void XMLTemplateWriter::WriteParent(const Template& parent, int version) {
    writer_.StartElement("extends");
    writer_.WriteAttribute("template", parent.GetFullName());
    if (parent.GetVersion() != 1)
        writer_.WriteAttribute("templateVersion", parent.GetVersion());
    if (version != 1)
        writer_.WriteAttribute("version", version);
    EndObject(true);
}

// -- properties -----------------------------------------------------------------------------------

void XMLTemplateWriter::WriteProperty(const Property& property) {
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
    case kAttributePropertyClass:
    case kGeometryAlternateClass: // one that a host listed among the properties of a template
        WriteAttribute(static_cast<const AttributeProperty&>(property));
        break;
    default: // a kind without an element of its own could not be read again
        break;
    }
}

void XMLTemplateWriter::StartMember(const Property& property, const char* element) {
    StartObject(property, element);
    writer_.WriteAttribute("name", property.GetNameView());
}

void XMLTemplateWriter::EndMember(const Property& property) {
    property.NamedObject::WriteToXML(writer_);
    for (int i = 0; i < property.GetCommandCount(); ++i)
        WriteCommand(*property.GetCommandAt(i));
    EndObject(false);
}

void XMLTemplateWriter::WriteAttribute(const AttributeProperty& attribute) {
    StartMember(attribute, "attribute");
    // An attribute without a type still needs one to be read at all.
    writer_.WriteAttribute("type", attribute.GetType() ? attribute.GetType()->GetFullName() : "");
    if (attribute.GetVersion() != 1)
        writer_.WriteAttribute("version", attribute.GetVersion());
    if (attribute.IsReference())
        writer_.WriteAttribute("reference", "true");
    WriteValues(attribute);
    if (*attribute.GetAutoBind())
        writer_.WriteAttribute("autoBind", attribute.GetAutoBind());
    WriteDefaultAsset(attribute);
    EndMember(attribute);
}

void XMLTemplateWriter::WriteNode(const NodeProperty& node) {
    StartMember(node, "node");
    if (node.GetVersion() != 1)
        writer_.WriteAttribute("version", node.GetVersion());
    WriteAncestor(node);
    EndMember(node);
}

void XMLTemplateWriter::WriteAnchor(const AnchorProperty& anchor) {
    StartMember(anchor, "anchor");
    if (anchor.GetVersion() != 1)
        writer_.WriteAttribute("version", anchor.GetVersion());
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
    if (geometry.GetVersion() != 1)
        writer_.WriteAttribute("version", geometry.GetVersion());
    geometry.NamedObject::WriteToXML(writer_);
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

void XMLTemplateWriter::WriteDefaultAsset(const AttributeProperty& attribute) {
    const auto* asset = ObjectCast<Asset>(GetDefaultInstance(attribute));
    if (!asset)
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
