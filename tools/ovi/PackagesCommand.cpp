#include "PackagesCommand.h"

#include "Findings.h"
#include "InputFiles.h"
#include "PackageList.h"
#include "Session.h"

#include <ovi/ovi.h>

#include <iostream>
#include <stdexcept>

namespace OviTool {

const char* PackagesCommand::GetDescription() const {
    return "List the packages below the search paths, without loading them";
}

void PackagesCommand::Declare(CLI::App& app) {
    schema_.DeclareDirectories(app);
    DeclareFormat(app, format_, {"text", "json"}, "How to print the list");
}

int PackagesCommand::Run() {
    const Session session;
    Findings findings;
    InputFiles inputs(findings);
    schema_.AddTo(inputs);
    findings.Report();
    if (OviTemplateManager_GetSearchPathCount() == 0) {
        if (findings.GetExitCode() == 0)
            throw std::runtime_error("no search path was given, by --path DIR or --schema DIR");
        return findings.GetExitCode();
    }
    const PackageList packages;
    if (format_ == "json")
        packages.PrintJson(std::cout);
    else
        packages.PrintText(std::cout);
    std::cout.flush();
    packages.PrintSummary(std::cerr);
    return findings.GetExitCode();
}

} // namespace OviTool
