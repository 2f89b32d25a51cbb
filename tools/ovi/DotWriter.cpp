#include "DotWriter.h"

#include "SchemaGraph.h"

#include <ostream>
#include <utility>

namespace OviTool {

namespace {

/// The background of a property's line, by its kind.
const std::pair<const char*, const char*> kColours[] = {
    {"property", "#ffffff"}, {"node", "#d5ecd4"}, {"anchor", "#fbe3c0"}, {"geometry", "#d3e3f5"}};

const char* GetColour(const std::string& kind) {
    for (const auto& [name, colour] : kColours) {
        if (kind == name)
            return colour;
    }
    return kColours[0].second;
}

/// A text inside of a label: the five characters that matter there.
std::string ForLabel(const std::string& text) {
    std::string result;
    for (const char c : text) {
        const char* const entity = c == '&'   ? "&amp;"
                                   : c == '<' ? "&lt;"
                                   : c == '>' ? "&gt;"
                                   : c == '"' ? "&quot;"
                                              : nullptr;
        result += entity ? std::string(entity) : std::string(1, c);
    }
    return result;
}

std::string Id(const std::string& text) {
    std::string result = "\"";
    for (const char c : text)
        result += c == '"' || c == '\\' ? std::string("\\") + c : std::string(1, c);
    return result + '"';
}

std::string ShortName(const std::string& fullName) {
    return fullName.substr(fullName.rfind('.') + 1);
}

/// "version 3", "versions 1 to 3" or "versions 1, 3".
std::string DescribeVersions(const GraphTemplate& entry) {
    const int first = OviTemplate_GetVersion(entry.versions.front());
    const int last = OviTemplate_GetVersion(entry.versions.back());
    if (first == last)
        return "version " + std::to_string(first);
    if (last - first + 1 == static_cast<int>(entry.versions.size()))
        return "versions " + std::to_string(first) + " to " + std::to_string(last);
    std::string result = "versions ";
    for (OviTemplate* version : entry.versions)
        result += (version == entry.versions.front() ? "" : ", ") +
                  std::to_string(OviTemplate_GetVersion(version));
    return result;
}

} // namespace

void DotWriter::Write() {
    out_ << "digraph schema {\n"
            "  rankdir=RL; nodesep=0.25; ranksep=0.9; fontname=\"Helvetica\"; fontsize=11;\n"
            "  node [shape=plain, fontname=\"Helvetica\", fontsize=10];\n"
            "  edge [fontname=\"Helvetica\", fontsize=9, color=\"#404040\"];\n";
    WriteLegend();
    WriteTemplates();
    for (const GraphLink& link : graph_.GetLinks())
        WriteLink(link);
    for (const auto& [fullName, entry] : graph_.GetTemplates())
        WriteUses(fullName, entry);
    out_ << "}\n";
}

/// As the label of the whole, where it does not get in the way of the layout.
void DotWriter::WriteLegend() {
    out_ << "  labelloc=b; labeljust=l;\n"
            "  label=<<table border=\"0\" cellspacing=\"4\" cellpadding=\"3\"><tr>";
    for (const auto& [kind, colour] : kColours)
        out_ << R"(<td border="1" color="#b0b0b0" bgcolor=")" << colour << "\">"
             << (kind == kColours[0].first ? "attribute" : kind) << "</td>";
    out_ << "<td align=\"left\">&#8594; extends (dashed: not in all versions)  &#183;  "
            "<font color=\"#2f6db5\">blue: holds an instance of, dotted: refers to</font></td>"
            "</tr></table>>;\n";
}

void DotWriter::WriteTemplates() {
    std::map<std::string, std::vector<std::string>> packages;
    for (const auto& [fullName, entry] : graph_.GetTemplates())
        packages[entry.package].push_back(fullName);
    for (const auto& [package, names] : packages) {
        if (!package.empty())
            out_ << "  subgraph " << Id("cluster_" + package) << " {\n"
                 << "    label=" << Id(package)
                 << "; labeljust=r; labelloc=t; style=\"rounded,filled\"; "
                 << "color=\"#c8c8c8\"; fillcolor=\"#f6f6f6\";\n";
        for (const std::string& name : names)
            WriteTemplate(name, graph_.GetTemplates().at(name));
        if (!package.empty())
            out_ << "  }\n";
    }
}

void DotWriter::WriteTemplate(const std::string& fullName, const GraphTemplate& entry) {
    out_ << "    " << Id(fullName) << " [tooltip=" << Id(fullName)
         << ", label=<<table border=\"0\" cellborder=\"1\" cellspacing=\"0\" cellpadding=\"3\" "
            "color=\"#808080\">"
         << R"(<tr><td port="head" bgcolor="#e4e0ec"><b>)" << ForLabel(entry.name)
         << R"(</b><br/><font point-size="8">)" << DescribeVersions(entry) << "</font></td></tr>";
    for (std::size_t i = 0; i < entry.properties.size(); ++i)
        WriteProperty(entry, i);
    out_ << "</table>>];\n";
}

void DotWriter::WriteProperty(const GraphTemplate& entry, std::size_t index) {
    const GraphProperty& property = entry.properties[index];
    out_ << R"(<tr><td align="left" port="p)" << index << R"(" bgcolor=")"
         << GetColour(property.kind) << "\">" << ForLabel(property.name);
    if (!property.type.empty())
        out_ << ": " << (property.isReference ? "&#8594; " : "")
             << ForLabel(ShortName(property.type));
    if (property.sinceVersion > OviTemplate_GetVersion(entry.versions.front()))
        out_ << R"(  <font point-size="8" color="#707070">from version )" << property.sinceVersion
             << "</font>";
    out_ << "</td></tr>";
}

void DotWriter::WriteLink(const GraphLink& link) {
    const GraphTemplate& child = graph_.GetTemplates().at(link.child);
    const int first = OviTemplate_GetVersion(child.versions.front());
    const int last = OviTemplate_GetVersion(child.versions.back());
    std::string label = link.isMadeFrom ? "made from" : "";
    if (link.firstVersion > first)
        label +=
            (label.empty() ? "" : "\\n") + ("from version " + std::to_string(link.firstVersion));
    if (link.lastVersion < last)
        label +=
            (label.empty() ? "" : "\\n") + ("up to version " + std::to_string(link.lastVersion));
    const bool isPartial = link.firstVersion > first || link.lastVersion < last;
    out_ << "  " << Id(link.child) << ":head:w -> " << Id(link.parent) << ":head:e"
         << " [arrowhead=" << (link.isMadeFrom ? "vee" : "onormal")
         << ", style=" << (isPartial ? "dashed" : "solid");
    if (!label.empty())
        out_ << ", label=\"" << label << '"';
    const bool isLatest = graph_.GetTemplates().at(link.parent).versions.back() ==
                          OviTemplateManager_GetTemplateVersion(
                              link.parent.c_str(), static_cast<std::uint32_t>(link.parentVersion));
    if (!isLatest)
        out_ << ", headlabel=\" v" << link.parentVersion << " \"";
    out_ << "];\n";
}

void DotWriter::WriteUses(const std::string& fullName, const GraphTemplate& entry) {
    for (std::size_t i = 0; i < entry.properties.size(); ++i) {
        const GraphProperty& property = entry.properties[i];
        if (graph_.GetTemplates().count(property.usedTemplate) == 0)
            continue;
        out_ << "  " << Id(fullName) << ":p" << i << ":e"
             << " -> " << Id(property.usedTemplate) << ":head"
             << " [constraint=false, color=\"#2f6db5\", arrowhead=vee, arrowsize=0.7, style="
             << (property.isReference ? "dotted" : "solid") << "];\n";
    }
}

} // namespace OviTool
