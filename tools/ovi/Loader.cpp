#include "Loader.h"

#include "Findings.h"
#include "InputFiles.h"
#include "Progress.h"

#include <ovi/ovi.h>

namespace OviTool {

namespace {

bool Load(const InputFile& file) {
    switch (file.kind) {
    case InputFile::Kind::kPackage:
        return OviTemplateManager_LoadPackage(file.path.c_str());
    case InputFile::Kind::kTemplates:
        return OviTemplateManager_LoadTemplateFile(file.path.c_str());
    default:
        OviAssetManager_NewScene();
        return OviAssetManager_LoadScene(file.path.c_str());
    }
}

/// The library says nothing of a package that it does not find, and nothing of a file in a package
/// that it cannot open.
void LoadPackage(const InputFile& package, Findings& findings) {
    const bool loaded = Load(package);
    if (findings.Collect() == 0 && !loaded)
        findings.Add({OVI_LEVEL_ERROR, package.path, -1, "Package not found: " + package.path});
}

void LoadFile(const InputFile& file, Findings& findings) {
    const bool loaded = Load(file);
    const bool reported = findings.Collect() > 0;
    // A load that fails without a word never came as far as reading.
    if (loaded || reported)
        findings.CountFile();
    else
        findings.AddUnreadable(file.path, "the library could not load it");
}

} // namespace

void LoadFiles(const std::vector<InputFile>& files, Findings& findings) {
    Progress progress(files.size());
    findings.Collect();
    for (const InputFile& file : files) {
        progress.StartFile(file.path);
        if (file.kind == InputFile::Kind::kPackage)
            LoadPackage(file, findings);
        else
            LoadFile(file, findings);
    }
}

} // namespace OviTool
