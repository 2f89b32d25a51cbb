#include "support/SampleSchema.h"

#include "ovi/ovi.h"
#include "support/Finding.h"

void LoadSampleSchema() {
    for (const char* library : {"core", "show", "modeling"}) {
        const std::string path = std::string(OVI_SOURCE_DIR "/examples/schema/") + library;
        OviTemplateManager_AddSearchPath(path.c_str(), true);
    }
    Expect(OviErrorManager_GetErrorItemAt(0) == nullptr, "the sample schema does not load");
    OviTemplateManager_LoadTemplateFile(OVI_SOURCE_DIR "/fuzz/Kinds.template");
    Expect(OviErrorManager_GetErrorItemCount(OVI_LEVEL_ERROR) == 0 &&
               OviErrorManager_GetErrorItemCount(OVI_LEVEL_WARNING) == 1,
           "Kinds.template does not load");
    OviErrorManager_Clear();
}
