#pragma once

#include <ovi/ovi.h>

#include <map>
#include <set>
#include <string>
#include <vector>

namespace OviTool {

/// A property as the graph shows it.
struct GraphProperty {
    std::string kind; ///< As GetPropertyKindName gives it.
    std::string name;
    std::string type;         ///< What stands behind the name; may be empty.
    std::string usedTemplate; ///< The full name of the template that is the type; or empty.
    bool isReference;
    int sinceVersion; ///< The first version that declares it so.
};

/// All versions of a template.
struct GraphTemplate {
    std::string package;
    std::string name;
    std::vector<OviTemplate*> versions; ///< Ascending.
    std::vector<GraphProperty> properties;
};

/// That a template has a parent, or is made from another template.
struct GraphLink {
    std::string child;
    std::string parent;
    int parentVersion;
    int firstVersion; ///< Of the child.
    int lastVersion;  ///< Of the child.
    bool isMadeFrom;
};

/// The templates of the loaded schema and how they are linked; the root is left out.
class SchemaGraph {
public:
    SchemaGraph();

    /// Keeps a template, its ancestors and its descendants. False when it is unknown.
    bool Restrict(const std::string& fullName);

    /// By full name.
    const std::map<std::string, GraphTemplate>& GetTemplates() const { return templates_; }
    const std::vector<GraphLink>& GetLinks() const { return links_; }

private:
    void AddVersion(OviTemplate* version);
    void AddProperties(GraphTemplate& entry, OviTemplate* version);
    void AddLinks(const std::string& child, const GraphTemplate& entry);
    void AddLink(const std::string& child, OviTemplate* parent, int version, bool isMadeFrom);
    std::set<std::string> FindRelatives(const std::string& fullName, bool upwards) const;

    std::map<std::string, GraphTemplate> templates_;
    std::vector<GraphLink> links_;
};

} // namespace OviTool
