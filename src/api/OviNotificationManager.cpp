#include "ovi/notification_manager.h"

#include "api/Barrier.h"
#include "notify/NotificationManager.h"

using namespace Kor;
using namespace Kor::Api;

int OviNotificationManager_GetDCC(void) {
    return WithManager<NotificationManager>(
        0, [](NotificationManager& manager) { return manager.GetDCC(); });
}

void OviNotificationManager_SetDCC(int dcc) {
    WithManager<NotificationManager>([dcc](NotificationManager& manager) { manager.SetDCC(dcc); });
}

// A callback that could not be registered gives the same result as one that was there already.
bool OviNotificationManager_RegisterInstanceCallback(OviCallback callback, void* userData) {
    return WithManager<NotificationManager>(true, [=](NotificationManager& manager) {
        return !callback || manager.RegisterInstanceCallback(callback, userData);
    });
}

bool OviNotificationManager_UnregisterInstanceCallback(void* userData) {
    return WithManager<NotificationManager>(false, [userData](NotificationManager& manager) {
        return manager.UnregisterInstanceCallback(userData);
    });
}

bool OviNotificationManager_RegisterPropertyInstanceCallback(OviCallback callback, void* userData) {
    return WithManager<NotificationManager>(true, [=](NotificationManager& manager) {
        return !callback || manager.RegisterPropertyInstanceCallback(callback, userData);
    });
}

bool OviNotificationManager_UnregisterPropertyInstanceCallback(void* userData) {
    return WithManager<NotificationManager>(false, [userData](NotificationManager& manager) {
        return manager.UnregisterPropertyInstanceCallback(userData);
    });
}
