#include "ovi/library.h"

#include "api/Barrier.h"
#include "core/BlockPool.h"
#include "core/ErrorManager.h"
#include "instances/AssetManager.h"
#include "manager/TemplateManager.h"
#include "notify/NotificationManager.h"

using namespace Kor;
using namespace Kor::Api;

void Ovi_Initialize(void) {
    Checks::Begin();
    WithManager<ErrorManager>([](ErrorManager& manager) { manager.Initialize(); });
    WithManager<NotificationManager>([](NotificationManager& manager) { manager.Initialize(); });
    WithManager<TemplateManager>([](TemplateManager& manager) { manager.Initialize(); });
    WithManager<AssetManager>([](AssetManager& manager) { manager.Initialize(); });
}

void Ovi_Terminate(void) {
    WithManager<AssetManager>([](AssetManager& manager) { manager.Terminate(); });
    WithManager<TemplateManager>([](TemplateManager& manager) { manager.Terminate(); });
    WithManager<NotificationManager>([](NotificationManager& manager) { manager.Terminate(); });
    WithManager<ErrorManager>([](ErrorManager& manager) { manager.Terminate(); });
    BlockPool::GiveSpareBack();
}

const char* Ovi_GetVersion(void) {
    return OVI_VERSION_STRING;
}

void Ovi_SetChecks(bool on) {
    Checks::Set(on);
}

bool Ovi_GetChecks(void) {
    return Checks::AreOn();
}
