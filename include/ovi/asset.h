/* Assets and the scene. */
#ifndef OVI_ASSET_H
#define OVI_ASSET_H

#include "ovi/types.h"

/** A place for a pointer of the host's own; null, since nothing sets it yet. */
OVI_API void* OviAsset_GetAssetNode(OviAsset* asset);

/** The file that the asset refers to; "" when none. */
OVI_API const char* OviAsset_GetReference(OviAsset* asset);

/** Sets the reference. Sends OVI_EVENT_REFERENCE_CHANGED first, then OVI_EVENT_UNREFERENCE_FILE
 *  when this was the last reference to the old file, and OVI_EVENT_REFERENCE_FILE when the new file
 *  was never referenced before. What a callback of OVI_EVENT_UNREFERENCE_FILE sets for the same
 *  asset does not stay and counts as no reference to a file. True. */
OVI_API bool OviAsset_SetReference(OviAsset* asset, const char* reference);

/** Number of assets in the scene. */
OVI_API int OviAssetManager_GetAssetCount(void);

/** An asset of the scene, in name order. */
OVI_API OviAsset* OviAssetManager_GetAssetAt(int index);

/** The asset of exactly that name, or null. */
OVI_API OviAsset* OviAssetManager_GetAsset(const char* name);

/** A new asset in the scene, which owns it; null when the name is in use or invalid. A null name
 *  takes the first free one of Asset1, Asset2, ... Sends OVI_EVENT_ASSET_ADDED. */
OVI_API OviAsset* OviAssetManager_NewAsset(const char* name);

/** Hands an asset to the scene. The index, or the complement of the index of the asset of that name
 *  that was overwritten (and then belongs to the caller). Sends OVI_EVENT_ASSET_ADDED. */
OVI_API int OviAssetManager_AddAsset(OviAsset* asset);

/** Takes an asset out of the scene; it then belongs to the caller. The index it had, or a number
 *  below 0. Sends OVI_EVENT_ASSET_REMOVED. */
OVI_API int OviAssetManager_RemoveAsset(OviAsset* asset);

/** Deletes all assets, without events, and clears the dirty flag. True. */
OVI_API bool OviAssetManager_NewScene(void);

/**
 * Reads a scene file into the scene; what is there stays, and an asset whose name exists is taken
 * as it is. The path's extension is replaced by "asset". Faults go to the error manager with file
 * and line; a file that cannot be opened is only reported on the standard error stream. False when
 * it could not be opened or read to its end. Sends the events of all that it makes and sets.
 */
OVI_API bool OviAssetManager_LoadScene(const char* path);

/** Writes the scene to a file whose extension is replaced by "asset". The old file is replaced only
 *  when the new one is complete; failures go to the error manager and give false. */
OVI_API bool OviAssetManager_SaveScene(const char* path);

/** Whether an asset was added or removed since the last OviAssetManager_NewScene. Loading counts as
 *  adding; saving does not clear it. Editing values and OviObject_Delete do not count. */
OVI_API bool OviAssetManager_IsDirty(void);

#endif
