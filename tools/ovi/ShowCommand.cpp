#include "ShowCommand.h"

#include "ChangeRecorder.h"
#include "Findings.h"
#include "InputFiles.h"
#include "Loader.h"
#include "ScenePrinter.h"
#include "SchemaPrinter.h"
#include "Session.h"

#include <iostream>

namespace OviTool {

const char* ShowCommand::GetDescription() const {
    return "Print a scene, or what a template file defines, as a tree";
}

void ShowCommand::Declare(CLI::App& app) {
    schema_.Declare(app);
    app.add_flag("--all", all_,
                 "Also print the properties of a scene that the file says nothing about");
    app.add_option("FILE", file_, "The template (.template) or scene (.asset) file")->required();
}

int ShowCommand::Run() {
    const Session session;
    Findings findings;
    InputFiles inputs(findings);
    schema_.AddTo(inputs);
    const std::size_t index = inputs.Add(file_);
    ChangeRecorder recorder;
    LoadFiles(inputs.GetAll(), findings);
    if (index != InputFiles::kNone)
        Print(inputs.GetAll()[index], recorder);
    findings.Report();
    return findings.GetExitCode();
}

void ShowCommand::Print(const InputFile& file, const ChangeRecorder& recorder) const {
    TreePrinter tree(std::cout);
    if (file.kind == InputFile::Kind::kScene)
        ScenePrinter(tree, recorder, all_).Print(file_);
    else
        SchemaPrinter(tree).Print(file_, file.path);
}

} // namespace OviTool
