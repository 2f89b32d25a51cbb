/* How the exported functions cross the boundary of the shared library. */
#ifndef OVI_EXPORT_H
#define OVI_EXPORT_H

#if defined(OVI_STATIC)
#define OVI_VISIBLE
#elif defined(_WIN32)
#if defined(OVI_BUILD)
#define OVI_VISIBLE __declspec(dllexport)
#else
#define OVI_VISIBLE __declspec(dllimport)
#endif
#else
#define OVI_VISIBLE __attribute__((visibility("default")))
#endif

#if defined(__cplusplus)
#define OVI_API extern "C" OVI_VISIBLE
#else
#define OVI_API extern OVI_VISIBLE
#endif

#endif
