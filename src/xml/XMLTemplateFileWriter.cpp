#include "xml/XMLTemplateFileWriter.h"

#include <unordered_map>

#include "core/Names.h"
#include "manager/TemplateManager.h"
#include "schema/AttributeProperty.h"
#include "types/Enumeration.h"
#include "xml/XMLTemplateWriter.h"
#include "xml/XMLWriter.h"

namespace Kor {

namespace {

/// The types that must be defined before a definition is read.
std::vector<const Type*> GetNeeded(const Type& type) {
    std::vector<Type*> used;
    type.CollectUsedTypes(used);
    std::vector<const Type*> needed(used.begin(), used.end());
    const auto* definition = ObjectCast<Template>(&type);
    if (!definition)
        return needed;
    for (const Template* parent : definition->GetParents())
        needed.push_back(parent);
    for (const Property* property : definition->GetDeclaredProperties()) {
        if (const auto* attribute = ObjectCast<AttributeProperty>(property))
            needed.push_back(attribute->GetType());
    }
    return needed;
}

/// Puts what others need in front, keeping the order otherwise. Needs may run in circles (through
/// references): the walk then leaves the order as it comes.
class Sorter {
public:
    explicit Sorter(const std::vector<const Type*>& types) {
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
                Enter(step.needed[step.next++], path);
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
        path.push_back({type, GetNeeded(*type)});
    }

    std::unordered_map<const Type*, State> states_;
};

} // namespace

XMLTemplateFileWriter::XMLTemplateFileWriter(const TemplateManager& manager,
                                             std::string_view fileName) {
    std::vector<Type*> types(static_cast<size_t>(manager.GetTypesByFileName(fileName, nullptr, 0)));
    manager.GetTypesByFileName(fileName, types.data(), static_cast<int>(types.size()));
    for (const Type* type : types) {
        const auto* definition = ObjectCast<Template>(type);
        if (type->IsRecycled() || type == manager.GetRoot())
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
    // Types and enumerations are deliberately not asked for the file's package.
    if (!templates_.empty())
        package_ = templates_.front()->GetPackageName();
}

std::set<std::string> XMLTemplateFileWriter::CollectUsedPackages() const {
    std::set<std::string> packages;
    for (const auto* group : {&plainTypes_, &enumerations_, &templates_}) {
        for (const Type* type : *group)
            type->CollectPackages(packages);
    }
    for (const Type* type : templates_) {
        for (const Type* needed : GetNeeded(*type)) {
            if (ObjectCast<Template>(needed))
                packages.insert(needed->GetPackageName());
        }
    }
    return packages;
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
    for (const Type* type : Sorter(plainTypes_).sorted)
        elements.WriteType(*type);
    for (const Type* type : Sorter(enumerations_).sorted)
        elements.WriteEnumeration(static_cast<const Enumeration&>(*type));
    for (const LOD* lod : lods_)
        elements.WriteLOD(*lod);
    for (const Type* type : Sorter(templates_).sorted)
        elements.WriteTemplate(static_cast<const Template&>(*type));
    writer.EndElement();
    return writer.Close();
}

} // namespace Kor
