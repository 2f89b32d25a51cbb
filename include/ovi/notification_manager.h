/* Callbacks of the host. The events are listed in ovi/types.h. */
#ifndef OVI_NOTIFICATION_MANAGER_H
#define OVI_NOTIFICATION_MANAGER_H

#include "ovi/types.h"

/** The current host ("digital content creation program"), OVI_HOST_...; OVI_HOST_NONE until it is
 *  set. */
OVI_API int OviNotificationManager_GetDCC(void);

/** Sets the current host; commands fire only in hosts they name. */
OVI_API void OviNotificationManager_SetDCC(int dcc);

/** Registers a callback for events about instances, called in ascending order of the user data's
 *  addresses. Mind the sense: false when it was added, true when this user data was registered
 *  already (then nothing changes) or the callback is null. */
OVI_API bool OviNotificationManager_RegisterInstanceCallback(OviCallback callback, void* userData);

/** Removes the callback with that user data; true when there was one. */
OVI_API bool OviNotificationManager_UnregisterInstanceCallback(void* userData);

/** As OviNotificationManager_RegisterInstanceCallback, for events about property instances. */
OVI_API bool OviNotificationManager_RegisterPropertyInstanceCallback(OviCallback callback,
                                                                     void* userData);

/** Removes the callback with that user data; true when there was one. */
OVI_API bool OviNotificationManager_UnregisterPropertyInstanceCallback(void* userData);

#endif
