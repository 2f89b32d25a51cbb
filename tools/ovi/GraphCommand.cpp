#include "GraphCommand.h"

#include "DotWriter.h"
#include "Findings.h"
#include "Graphviz.h"
#include "InputFiles.h"
#include "Loader.h"
#include "OutputFile.h"
#include "SchemaGraph.h"
#include "Session.h"

#include <sstream>

namespace OviTool {

const char* GraphCommand::GetDescription() const {
    return "Draw the inheritance of the templates of a schema";
}

void GraphCommand::Declare(CLI::App& app) {
    schema_.Declare(app);
    DeclareFormat(app, format_, {"dot", "svg"}, "What to write; svg needs Graphviz");
    app.add_option("--template", template_,
                   "Only this template (studio.props.Prop), its ancestors and its descendants")
        ->type_name("NAME");
    app.add_option("-o,--output", output_, "Write to this file, not to the standard output")
        ->type_name("FILE");
}

int GraphCommand::Run() {
    const Session session;
    Findings findings;
    InputFiles inputs(findings);
    schema_.AddTo(inputs);
    LoadFiles(inputs.GetAll(), findings);
    SchemaGraph graph;
    const bool found = template_.empty() || graph.Restrict(template_);
    if (!found)
        findings.Add({OVI_LEVEL_ERROR, template_, -1, "Template not found: '" + template_ + "'"});
    findings.Report();
    if (found) {
        std::ostringstream dot;
        DotWriter(dot, graph).Write();
        WriteOutput(output_, format_ == "svg" ? DrawAsSvg(dot.str()) : dot.str());
    }
    return findings.GetExitCode();
}

} // namespace OviTool
