#include "Loader.h"

#include "Findings.h"
#include "InputFiles.h"
#include "Progress.h"

#include <ovi/ovi.h>

namespace OviTool {

namespace {

bool Load(const InputFile& file) {
    if (!file.isScene)
        return OviTemplateManager_LoadTemplateFile(file.path.c_str());
    OviAssetManager_NewScene();
    return OviAssetManager_LoadScene(file.path.c_str());
}

} // namespace

void LoadFiles(const std::vector<InputFile>& files, Findings& findings) {
    Progress progress(files.size());
    findings.Collect();
    for (const InputFile& file : files) {
        progress.StartFile(file.path);
        const bool loaded = Load(file);
        const bool reported = findings.Collect() > 0;
        // A load that fails without a word never came as far as reading.
        if (loaded || reported)
            findings.CountFile();
        else
            findings.AddUnreadable(file.path, "the library could not load it");
    }
}

} // namespace OviTool
