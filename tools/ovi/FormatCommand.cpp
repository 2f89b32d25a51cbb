#include "FormatCommand.h"

#include "ExitCode.h"
#include "Findings.h"
#include "FormatLosses.h"
#include "InputFiles.h"
#include "Loader.h"
#include "OutputFile.h"
#include "Session.h"
#include "TemporaryDirectory.h"
#include "XmlScanner.h"

#include <ovi/ovi.h>

#include <iostream>
#include <set>
#include <stdexcept>

namespace OviTool {

namespace {

std::vector<InputFile> SelectTemplates(const std::vector<InputFile>& files) {
    std::vector<InputFile> selected;
    for (const InputFile& file : files) {
        if (file.kind != InputFile::Kind::kScene)
            selected.push_back(file);
    }
    return selected;
}

/// The text that the library writes for a file that is loaded.
std::string WriteAnew(const InputFile& file) {
    const TemporaryDirectory directory;
    const bool isScene = file.kind == InputFile::Kind::kScene;
    const std::string path = directory.GetFile(isScene ? "new.asset" : "new.template");
    std::string text;
    const bool saved = isScene
                           ? OviAssetManager_SaveScene(path.c_str())
                           : OviTemplateManager_SaveTemplateFile(file.path.c_str(), path.c_str());
    if (!saved || !ReadFile(path, text))
        throw std::runtime_error("cannot write '" + path + "'");
    return text;
}

} // namespace

const char* FormatCommand::GetDescription() const {
    return "Write template and scene files anew in the library's own layout";
}

void FormatCommand::Declare(CLI::App& app) {
    schema_.Declare(app);
    app.add_flag("--check", check_, "Write nothing; name the files that would change");
    app.add_flag("--force", force_, "Also write files that lose something by it");
    app.add_option("FILE", files_, "Template (.template) and scene (.asset) files, in load order")
        ->required();
}

int FormatCommand::Run() {
    const Session session;
    Findings findings;
    InputFiles inputs(findings);
    schema_.AddTo(inputs);
    std::vector<std::size_t> indices;
    for (const std::string& path : files_)
        indices.push_back(inputs.Add(path));
    LoadFiles(SelectTemplates(inputs.GetAll()), findings);
    std::set<std::size_t> done{InputFiles::kNone};
    for (std::size_t i = 0; i < files_.size(); ++i) {
        if (done.insert(indices[i]).second)
            Format(files_[i], inputs.GetAll()[indices[i]], findings);
    }
    findings.Report();
    const int code = findings.GetExitCode();
    return code == kClean && check_ && changed_ > 0 ? kHasFindings : code;
}

void FormatCommand::Format(const std::string& path, const InputFile& file, Findings& findings) {
    const bool isScene = file.kind == InputFile::Kind::kScene;
    if (isScene)
        LoadFiles({file}, findings);
    FormattedFile formatted{path, isScene, {}, {}};
    if (findings.HasErrorsIn(file.path) || !ReadFile(path, formatted.before))
        return;
    formatted.after = WriteAnew(file);
    if (formatted.after == formatted.before)
        return;
    if (ReportLosses(formatted, force_, findings) > 0 && !force_)
        return;
    ++changed_;
    if (!check_)
        WriteFile(path, formatted.after);
    std::cout << (check_ ? "would change " : "changed ") << path << '\n';
}

} // namespace OviTool
