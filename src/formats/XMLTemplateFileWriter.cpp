#include "formats/XMLTemplateFileWriter.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>
#include <unordered_set>

#include "core/ErrorManager.h"
#include "core/Names.h"
#include "formats/TypeElement.h"
#include "formats/ValueTemplate.h"
#include "formats/XMLTemplateWriter.h"
#include "manager/TemplateManager.h"
#include "platform/File.h"
#include "schema/AttributeProperty.h"
#include "schema/GeometryProperty.h"
#include "schema/TemplateWalk.h"
#include "types/Enumeration.h"
#include "xml/XMLWriter.h"

namespace Kor {

namespace {

/// The templates' latest versions stand for all versions, which are written together.
const Type* GetWritten(const Type* type) {
    const auto* definition = ObjectCast<Template>(type);
    const TemplateManager* manager = TemplateManager::Get();
    const Template* latest =
        definition && manager ? manager->GetTemplate(definition->GetFullName()) : nullptr;
    return latest ? latest : type;
}

/// All versions of a template; anything else alone.
std::vector<const Type*> GetVersions(const Type& type) {
    const auto* definition = ObjectCast<Template>(&type);
    const TemplateManager* manager = TemplateManager::Get();
    if (!definition || !manager)
        return {&type};
    const std::vector<Template*> versions = manager->GetVersions(definition->GetFullName());
    return {versions.begin(), versions.end()};
}

/// What must be defined before a definition is read: base types and parents.
std::vector<const Type*> GetRequired(const Type& type) {
    std::vector<const Type*> required;
    for (const Type* version : GetVersions(type)) {
        if (const auto* definition = ObjectCast<Template>(version))
            required.insert(required.end(), definition->GetParents().begin(),
                            definition->GetParents().end());
        if (version->GetBaseType())
            required.push_back(version->GetBaseType());
    }
    return required;
}

/// Adds the type of an attribute, and the templates that its values name.
void AddMentioned(const AttributeProperty& attribute, std::vector<const Type*>& mentioned) {
    const Type* type = attribute.GetType();
    if (!type)
        return;
    mentioned.push_back(type);
    if (type->GetDimension() < 1)
        return;
    attribute.VisitMadeValues([&](const void* value) {
        if (const Template* named = GetValueTemplate(*type, value))
            mentioned.push_back(named);
    });
}

/// Calls a function with the properties of all versions of a template, but not again with what a
/// version has unchanged from another one.
template <class Body> void VisitDeclared(const Type& type, const Body& body) {
    const std::uint64_t walk = NextTemplateWalk();
    for (const Type* version : GetVersions(type)) {
        if (const auto* definition = ObjectCast<Template>(version))
            definition->VisitDeclared(walk, body);
    }
}

/// The types of a template's attributes. They too must be known when it is read; but where
/// templates refer to each other in a circle, a mere declaration has to do.
std::vector<const Type*> GetMentioned(const Type& type) {
    std::vector<const Type*> mentioned;
    VisitDeclared(type, [&mentioned](const Property& property) {
        if (const auto* attribute = ObjectCast<AttributeProperty>(&property))
            AddMentioned(*attribute, mentioned);
    });
    return mentioned;
}

std::vector<const Type*> GetNeeded(const Type& type) {
    std::vector<const Type*> needed = GetRequired(type);
    const std::vector<const Type*> mentioned = GetMentioned(type);
    needed.insert(needed.end(), mentioned.begin(), mentioned.end());
    return needed;
}

/// Adds the packages of the levels of detail of other files that a template's alternates stand for.
void CollectLevelPackages(const Type& type, std::set<std::string>& packages) {
    VisitDeclared(type, [&](const Property& property) {
        const auto* geometry = ObjectCast<GeometryProperty>(&property);
        for (int i = 0; geometry && i < geometry->GetAlternateCount(); ++i) {
            const LOD* level = geometry->GetAlternateAt(i)->GetLOD();
            if (level && !EqualsIgnoreCase(level->GetFileName(), type.GetFileName()))
                packages.insert(level->GetPackageName());
        }
    });
}

/// Puts what others need in front and keeps the order otherwise.
class Sorter {
public:
    using Needs = std::vector<const Type*> (*)(const Type&);

    Sorter(const std::vector<const Type*>& types, Needs needs) : needs_(needs) {
        for (const Type* type : types)
            states_[type] = kUntouched;
        for (const Type* type : types)
            Visit(type);
    }

    std::vector<const Type*> sorted;

private:
    enum State { kUntouched, kOpen, kDone };
    struct Step {
        const Type* type;
        std::vector<const Type*> needed;
        size_t next = 0;
    };

    void Visit(const Type* start) {
        std::vector<Step> path;
        Enter(start, path);
        while (!path.empty()) {
            Step& step = path.back();
            if (step.next < step.needed.size()) {
                Enter(GetWritten(step.needed[step.next++]), path);
                continue;
            }
            states_[step.type] = kDone;
            sorted.push_back(step.type);
            path.pop_back();
        }
    }

    void Enter(const Type* type, std::vector<Step>& path) {
        const auto state = states_.find(type);
        if (state == states_.end() || state->second != kUntouched)
            return;
        state->second = kOpen;
        path.push_back({type, needs_(*type)});
    }

    Needs needs_;
    std::unordered_map<const Type*, State> states_;
};

/// The second pass changes nothing unless needs run in circles, which the first one cuts anywhere:
/// base types and parents, which never do, come first then all the same.
std::vector<const Type*> Sort(const std::vector<const Type*>& types) {
    return Sorter(Sorter(types, &GetNeeded).sorted, &GetRequired).sorted;
}

/// Puts types behind what they are based on, also where that is of a later group: plain types come
/// first, then enumerations, then templates.
class Groups {
public:
    explicit Groups(const std::vector<const std::vector<const Type*>*>& groups)
        : all_(groups.size()) {
        for (size_t i = 0; i < groups.size(); ++i) {
            for (const Type* type : *groups[i])
                own_[type] = i;
        }
        // What was moved comes behind what was in the group anyway, unless that needs it.
        for (size_t i = groups.size(); i-- > 0;) {
            for (const Type* type : *groups[i])
                all_[FindGroup(type)].push_back(type);
        }
    }

    const std::vector<const Type*>& operator[](size_t group) const { return all_[group]; }

private:
    size_t FindGroup(const Type* type) {
        std::vector<const Type*> path;
        for (; type && found_.emplace(type, 0).second; type = type->GetBaseType())
            path.push_back(type);
        size_t group = type ? found_[type] : 0;
        for (; !path.empty(); path.pop_back()) {
            const auto own = own_.find(GetWritten(path.back()));
            group = std::max(group, own == own_.end() ? 0 : own->second);
            found_[path.back()] = group;
        }
        return group;
    }

    std::unordered_map<const Type*, size_t> own_;
    std::unordered_map<const Type*, size_t> found_;
    std::vector<std::vector<const Type*>> all_;
};

} // namespace

XMLTemplateFileWriter::XMLTemplateFileWriter(const TemplateManager& manager,
                                             std::string_view fileName) {
    std::vector<Type*> types(static_cast<size_t>(manager.GetTypesByFileName(fileName, nullptr, 0)));
    manager.GetTypesByFileName(fileName, types.data(), static_cast<int>(types.size()));
    for (const Type* type : types) {
        const auto* definition = ObjectCast<Template>(type);
        if (type == manager.GetRoot() && fileName.empty())
            continue;
        if (definition && definition->GetVersion() == definition->GetLatestVersion())
            templates_.push_back(definition);
        else if (ObjectCast<Enumeration>(type))
            enumerations_.push_back(type);
        else if (!definition)
            plainTypes_.push_back(type);
    }
    for (int i = 0; i < manager.GetLODCount(); ++i) {
        const LOD* lod = manager.GetLODAt(i);
        if (!lod->GetFileName().empty() && EqualsIgnoreCase(lod->GetFileName(), fileName))
            lods_.push_back(lod);
    }
    // The package of a file is that of its templates: one that has only types is saved without.
    if (!templates_.empty())
        package_ = templates_.front()->GetPackageName();
}

std::set<std::string> XMLTemplateFileWriter::CollectUsedPackages() const {
    std::set<std::string> packages;
    // Types may build on each other in long chains: each is asked once.
    std::unordered_set<const Type*> asked;
    for (const auto* group : {&plainTypes_, &enumerations_}) {
        for (const Type* type : *group) {
            for (; type && asked.insert(type).second; type = type->GetBaseType())
                packages.insert(type->GetPackageName());
        }
    }
    Template::CollectPackages(templates_, packages);
    for (const Type* type : templates_) {
        for (const Type* needed : GetNeeded(*type))
            packages.insert(needed->GetPackageName());
        CollectLevelPackages(*type, packages);
    }
    return packages;
}

/// Without a template the file has no package: it is that of the templates.
void XMLTemplateFileWriter::WriteGroup(const std::vector<const Type*>& types,
                                       XMLTemplateWriter& elements) const {
    for (const Type* type : Sort(types)) {
        if (!templates_.empty())
            elements.SwitchPackage(*type);
        if (const auto* enumeration = ObjectCast<Enumeration>(type))
            elements.WriteEnumeration(*enumeration);
        else
            elements.WriteType(*type);
    }
}

/// Declares the templates behind a definition that it mentions.
void XMLTemplateFileWriter::DeclareMentioned(const Type& type,
                                             std::unordered_set<const Type*>& unknown,
                                             XMLTemplateWriter& elements) const {
    for (const Type* mentioned : GetMentioned(type)) {
        const Type* written = GetWritten(mentioned);
        if (unknown.erase(written) == 0)
            continue;
        const auto& declared = static_cast<const Template&>(*written);
        if (IsToldByTypeElement(static_cast<const Template&>(*GetVersions(declared).front())))
            continue;
        elements.SwitchPackage(declared);
        elements.DeclareTemplate(declared);
    }
}

/// Writes the templates, and what is based on them, each behind what it needs.
void XMLTemplateFileWriter::WriteTemplates(const std::vector<const Type*>& types,
                                           XMLTemplateWriter& elements) const {
    std::unordered_set<const Type*> unknown(templates_.begin(), templates_.end());
    for (const Type* type : Sort(types)) {
        const auto* definition = ObjectCast<Template>(type);
        if (!definition) {
            WriteGroup({type}, elements);
            continue;
        }
        unknown.erase(type);
        DeclareMentioned(*type, unknown, elements);
        elements.SwitchPackage(*type);
        elements.WriteTemplate(*definition);
    }
}

bool XMLTemplateFileWriter::Save(TemplateManager& manager, const char* fileName,
                                 const char* output) {
    const char* path = output ? output : fileName;
    const auto file = OutputFile::Create(path);
    if (file && XMLTemplateFileWriter(manager, fileName).Write(*file) && file->Commit()) {
        manager.AddLoadedFile(fileName);
        return true;
    }
    if (ErrorManager* errors = ErrorManager::Get())
        errors->AddErrorItem(kError, path, -1, "Unable to open file for writing");
    return false;
}

bool XMLTemplateFileWriter::Write(ByteSink& sink) const {
    XMLWriter writer;
    writer.Open(sink, true);
    writer.StartElement("templates");
    if (!package_.empty())
        writer.WriteAttribute("package", package_);
    for (const std::string& used : CollectUsedPackages()) {
        if (used.empty() || EqualsIgnoreCase(used, package_))
            continue;
        writer.StartElement("using");
        writer.WriteAttribute("package", used);
        writer.EndElement();
    }
    XMLTemplateWriter elements(writer);
    elements.SetPackage(package_);
    const Groups groups({&plainTypes_, &enumerations_, &templates_});
    WriteGroup(groups[0], elements);
    WriteGroup(groups[1], elements);
    for (const LOD* lod : lods_)
        elements.WriteLOD(*lod);
    WriteTemplates(groups[2], elements);
    writer.EndElement();
    return writer.Close();
}

} // namespace Kor
