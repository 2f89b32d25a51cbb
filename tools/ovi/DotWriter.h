#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>

namespace OviTool {

class SchemaGraph;
struct GraphLink;
struct GraphProperty;
struct GraphTemplate;

/// Writes the graph of a schema in Graphviz' DOT language: a cluster for each package, a table for
/// each template, arrows to parents and to templates that are the type of a property.
class DotWriter {
public:
    DotWriter(std::ostream& out, const SchemaGraph& graph) : out_(out), graph_(graph) {}

    void Write();

private:
    void WriteLegend();
    void WriteTemplates();
    void WriteTemplate(const std::string& fullName, const GraphTemplate& entry);
    void WriteProperty(const GraphTemplate& entry, std::size_t index);
    void WriteLink(const GraphLink& link);
    void WriteUses(const std::string& fullName, const GraphTemplate& entry);

    std::ostream& out_;
    const SchemaGraph& graph_;
};

} // namespace OviTool
