#include "formats/Texts.h"
#include "formats/XMLTemplateWriter.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "formats/TypeElement.h"
#include "formats/VersionOrder.h"
#include "manager/TemplateManager.h"
#include "schema/Template.h"
#include "types/Enumeration.h"
#include "xml/XMLWriter.h"

namespace Kor {

namespace {

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

void XMLTemplateWriter::WriteAny(const Type& type) {
    if (const auto* item = ObjectCast<EnumerationItem>(&type))
        WriteItem(*item);
    else if (const auto* enumeration = ObjectCast<Enumeration>(&type))
        WriteEnumeration(*enumeration);
    else if (const auto* definition = ObjectCast<Template>(&type))
        WriteTemplate(*definition);
    else
        WriteType(type);
}

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
    if (IsToldByTypeElement(enumeration)) {
        WriteType(enumeration);
        return;
    }
    // The element takes plain types alone: items of its own matter more than where they are from.
    const Type* base = enumeration.GetBaseType();
    if (ObjectCast<Enumeration>(base))
        base = base->GetStorageType();
    StartObject(enumeration, "enum");
    writer_.WriteAttribute("name", enumeration.GetNameView());
    if (base)
        writer_.WriteAttribute("type", base->GetFullName());
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
    const Template& first = *versions.front();
    const Template* origin =
        IsToldByTypeElement(first) ? ObjectCast<Template>(first.GetBaseType()) : nullptr;
    const std::vector<VersionStep> steps = OrderVersionSteps(versions, origin);
    if (origin) { // made by a type element, perhaps continued
        WriteType(first);
        if (steps.empty() && HaveSameTexts(first, *origin)) {
            WriteViews(versions);
            return;
        }
    } else if (first.GetDimension() != 1) {
        WriteDimension(first);
    }
    if (FitInOneElement(versions))
        WriteInOneElement(steps, versions);
    else
        WriteVersionByVersion(steps, versions);
}

/// Only a type element tells a dimension: one over the root, of which it takes nothing else.
void XMLTemplateWriter::WriteDimension(const Template& type) {
    const TemplateManager* manager = TemplateManager::Get();
    if (!manager)
        return;
    StartObject(type, "type");
    writer_.WriteAttribute("name", type.GetNameView());
    writer_.WriteAttribute("type", manager->GetRoot()->GetFullName());
    writer_.WriteAttribute("dim", type.GetDimension());
    EndObject(true);
}

void XMLTemplateWriter::WriteInOneElement(const std::vector<VersionStep>& steps,
                                          const std::vector<const Template*>& versions) {
    const Template& first = *versions.front();
    const Template& latest = *versions.back();
    // Later versions have the texts that were there when they were copied.
    const bool copiedTexts = HaveSameTexts(first, latest);
    StartTemplate(latest);
    if (copiedTexts)
        WriteTexts(first, writer_);
    for (const VersionStep& step : steps)
        WriteStep(step);
    if (!copiedTexts)
        WriteTexts(first, writer_);
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
        WriteTexts(*highest, writer_);
        EndObject(false);
        highest = step.version;
        StartTemplate(*highest);
    }
    WriteTexts(*highest, writer_);
    WriteViews(versions);
    EndObject(false);
}

void XMLTemplateWriter::WriteStep(const VersionStep& step) {
    const int version = step.version->GetVersion();
    if (step.property)
        WriteProperty(*step.property, version);
    else if (step.parent)
        WriteParent(*step.parent, version);
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

} // namespace Kor
