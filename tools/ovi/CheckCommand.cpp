#include "CheckCommand.h"

#include "Findings.h"
#include "InputFiles.h"
#include "Loader.h"
#include "Session.h"

#include <iostream>

namespace OviTool {

const char* CheckCommand::GetDescription() const {
    return "Load template and scene files and print every fault with file and line";
}

void CheckCommand::Declare(CLI::App& app) {
    schema_.Declare(app);
    DeclareFormat(app, format_, {"text", "json"}, "How to print the findings");
    app.add_option("FILE", files_, "Template (.template) and scene (.asset) files, in load order")
        ->required();
}

int CheckCommand::Run() {
    const Session session;
    Findings findings;
    InputFiles inputs(findings);
    schema_.AddTo(inputs);
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
