#include "CheckCommand.h"

#include "Findings.h"
#include "InputFiles.h"
#include "Loader.h"
#include "Options.h"
#include "Session.h"

#include <iostream>

namespace OviTool {

const char* CheckCommand::GetDescription() const {
    return "Load template and scene files and print every fault with file and line";
}

void CheckCommand::Declare(CLI::App& app) {
    DeclareSchemaOption(app, schema_);
    app.add_option("--format", format_, "How to print the findings: text (the default) or json")
        ->check(CLI::IsMember({"text", "json"}))
        ->type_name("FORMAT");
    app.add_option("FILE", files_, "Template (.template) and scene (.asset) files, in load order")
        ->required();
}

int CheckCommand::Run() {
    const Session session;
    Findings findings;
    InputFiles inputs(findings);
    for (const std::string& path : schema_)
        inputs.AddSchema(path);
    for (const std::string& path : files_)
        inputs.Add(path);
    LoadFiles(inputs.GetAll(), findings);

    if (format_ == "json")
        findings.PrintJson(std::cout);
    else
        findings.PrintText(std::cout);
    std::cout.flush();
    findings.PrintUnreadable(std::cerr);
    findings.PrintSummary(std::cerr);
    return findings.GetExitCode();
}

} // namespace OviTool
