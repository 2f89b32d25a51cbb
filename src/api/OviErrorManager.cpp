#include "ovi/error_manager.h"

#include "api/Barrier.h"
#include "core/ErrorManager.h"

using namespace Kor;
using namespace Kor::Api;

void OviErrorManager_AddErrorItem(int level, const char* sourceName, int lineNumber,
                                  const char* message) {
    WithManager<ErrorManager>([=](ErrorManager& errors) {
        errors.AddErrorItem(level, Text(sourceName), lineNumber, Text(message));
    });
}

int OviErrorManager_GetErrorItemCount(int levelMask) {
    return WithManager<ErrorManager>(
        0, [levelMask](ErrorManager& errors) { return errors.GetErrorItemCount(levelMask); });
}

OviErrorItem* OviErrorManager_GetErrorItemAt(int index) {
    return WithManager<ErrorManager>(
        static_cast<OviErrorItem*>(nullptr),
        [index](ErrorManager& errors) { return To<OviErrorItem>(errors.GetErrorItemAt(index)); });
}

void OviErrorManager_Clear(void) {
    WithManager<ErrorManager>([](ErrorManager& errors) { errors.Clear(); });
}

int OviErrorItem_GetErrorLevel(OviErrorItem* item) {
    return With<ErrorItem>(item, 0, [](ErrorItem& error) { return error.GetLevel(); });
}

const char* OviErrorItem_GetSourceName(OviErrorItem* item) {
    return With<ErrorItem>(item, "", [](ErrorItem& error) { return error.GetSourceName(); });
}

int OviErrorItem_GetLineNumber(OviErrorItem* item) {
    return With<ErrorItem>(item, 0, [](ErrorItem& error) { return error.GetLineNumber(); });
}

const char* OviErrorItem_GetMessage(OviErrorItem* item) {
    return With<ErrorItem>(item, "", [](ErrorItem& error) { return error.GetMessage(); });
}
