#include "SchemaGraph.h"

#include "PropertyPrinter.h"

#include <algorithm>

namespace OviTool {

namespace {

GraphProperty Describe(OviProperty* property, int version) {
    GraphProperty result{
        GetPropertyKindName(property), OviNamedObject_GetName(property), {}, {}, false, version};
    if (OviObject_GetClass(property) == OVI_CLASS_ATTRIBUTE_PROPERTY) {
        auto* const attribute = static_cast<OviAttributeProperty*>(property);
        OviType* const type = OviAttributeProperty_GetType(attribute);
        result.type = ValueText::DescribeType(type);
        result.isReference = OviAttributeProperty_IsReference(attribute);
        if (OviObject_ImplementsClass(type, OVI_CLASS_TEMPLATE))
            result.usedTemplate = result.type;
    } else if (OviObject_GetClass(property) == OVI_CLASS_ANCHOR_PROPERTY) {
        result.type =
            OviAnchorProperty_IsChild(static_cast<OviAnchorProperty*>(property)) ? "child" : "";
    }
    return result;
}

bool DeclareTheSame(const GraphProperty& a, const GraphProperty& b) {
    return a.kind == b.kind && a.type == b.type && a.isReference == b.isReference;
}

bool IsRoot(OviTemplate* definition) {
    return definition == OviTemplateManager_GetRoot();
}

} // namespace

SchemaGraph::SchemaGraph() {
    for (int i = 0; i < OviTemplateManager_GetTemplateCount(); ++i) {
        OviTemplate* const version = OviTemplateManager_GetTemplateAt(i);
        if (!IsRoot(version))
            AddVersion(version);
    }
    for (auto& [fullName, entry] : templates_) {
        // Keys do not sort version 10 behind version 9.
        std::sort(entry.versions.begin(), entry.versions.end(), [](OviTemplate* a, OviTemplate* b) {
            return OviTemplate_GetVersion(a) < OviTemplate_GetVersion(b);
        });
        for (OviTemplate* version : entry.versions)
            AddProperties(entry, version);
        AddLinks(fullName, entry);
    }
}

void SchemaGraph::AddVersion(OviTemplate* version) {
    GraphTemplate& entry = templates_[OviType_GetFullName(version)];
    entry.package = OviType_GetPackageName(version);
    entry.name = OviNamedObject_GetName(version);
    entry.versions.push_back(version);
}

/// Versions copy what was there before; only what they change is worth a line.
void SchemaGraph::AddProperties(GraphTemplate& entry, OviTemplate* version) {
    for (OviProperty* property : GetOwnProperties(version)) {
        GraphProperty next = Describe(property, OviTemplate_GetVersion(version));
        const auto last = std::find_if(
            entry.properties.rbegin(), entry.properties.rend(),
            [&next](const GraphProperty& earlier) { return earlier.name == next.name; });
        if (last == entry.properties.rend() || !DeclareTheSame(*last, next))
            entry.properties.push_back(std::move(next));
    }
}

void SchemaGraph::AddLinks(const std::string& child, const GraphTemplate& entry) {
    for (OviTemplate* version : entry.versions) {
        const int number = OviTemplate_GetVersion(version);
        for (int i = 0; i < OviTemplate_GetParentCount(version); ++i)
            AddLink(child, OviTemplate_GetParentAt(version, i), number, false);
        OviType* const base = OviType_GetBaseType(version);
        if (OviObject_ImplementsClass(base, OVI_CLASS_TEMPLATE))
            AddLink(child, static_cast<OviTemplate*>(base), number, true);
    }
}

void SchemaGraph::AddLink(const std::string& child, OviTemplate* parent, int version,
                          bool isMadeFrom) {
    if (IsRoot(parent))
        return;
    const std::string name = OviType_GetFullName(parent);
    const int parentVersion = OviTemplate_GetVersion(parent);
    for (auto link = links_.rbegin(); link != links_.rend() && link->child == child; ++link) {
        if (link->parent == name && link->parentVersion == parentVersion &&
            link->isMadeFrom == isMadeFrom) {
            link->lastVersion = version;
            return;
        }
    }
    links_.push_back({child, name, parentVersion, version, version, isMadeFrom});
}

bool SchemaGraph::Restrict(const std::string& fullName) {
    if (templates_.count(fullName) == 0)
        return false;
    std::set<std::string> kept = FindRelatives(fullName, true);
    kept.merge(FindRelatives(fullName, false));
    for (auto entry = templates_.begin(); entry != templates_.end();)
        entry = kept.count(entry->first) > 0 ? std::next(entry) : templates_.erase(entry);
    links_.erase(std::remove_if(links_.begin(), links_.end(),
                                [&kept](const GraphLink& link) {
                                    return kept.count(link.child) == 0 ||
                                           kept.count(link.parent) == 0;
                                }),
                 links_.end());
    return true;
}

/// The template and all that is reached from it by links to parents, or to children.
std::set<std::string> SchemaGraph::FindRelatives(const std::string& fullName, bool upwards) const {
    std::multimap<std::string, std::string> steps;
    for (const GraphLink& link : links_)
        steps.emplace(upwards ? link.child : link.parent, upwards ? link.parent : link.child);
    std::set<std::string> found{fullName};
    std::vector<std::string> pending{fullName};
    while (!pending.empty()) {
        const std::string current = std::move(pending.back());
        pending.pop_back();
        const auto [first, last] = steps.equal_range(current);
        for (auto step = first; step != last; ++step) {
            if (found.insert(step->second).second)
                pending.push_back(step->second);
        }
    }
    return found;
}

} // namespace OviTool
